#!/usr/bin/env python3
"""Checks each chart's truth against its image and tidies the JSON.

usage: check.py CHARTDIR [--write]

Works from the image and the JSON alone, not from the program that drew them.
Every pixel gets a coverage: how far its colour lies on the way from the
background to the series colour. From it are measured the centroids of markers,
the edges of bars and the centre lines of curves and steps, all in pixel-centre
coordinates, and compared with "pixels". Printed per series: how many true
positions could be measured alone, mean offset in x and y, largest offset.
--write adds what only the image can tell ("size", "exact_pixels", "tolerance",
"selected_pixels", "stray_pixels", "touching", "hidden", "offset") and rewrites
the JSON.
"""
import io, json, math, os, subprocess, sys
import numpy as np
from PIL import Image
from scipy import ndimage


def load(path):
    if path.endswith(".svg"):
        path = io.BytesIO(subprocess.run(["rsvg-convert", path], capture_output=True, check=True).stdout)
    return np.asarray(Image.open(path).convert("RGB")).astype(float)


def rgb(colour):
    return np.array([int(colour[i:i + 2], 16) for i in (1, 3, 5)], float)


def coverage(image, colour, background):
    d = colour - background
    a = (image - background) @ d / (d @ d)
    off = np.abs(image - background - a[..., None] * d).max(axis=2)
    a[(off > 0.2 * np.abs(d).max()) | (a > 1.12)] = 0
    return np.clip(a, 0, 1)


def polyline_distance(points, line):
    """Distance of each point from a polyline: (distance, nearest point, segment)."""
    best = np.full(len(points), np.inf)
    near = np.zeros((len(points), 2))
    which = np.zeros(len(points), int)
    for i, (a, b) in enumerate(zip(line, line[1:])):
        ab = b - a
        t = np.clip((points - a) @ ab / max(ab @ ab, 1e-9), 0, 1)
        q = a + t[:, None] * ab
        d = np.hypot(*(points - q).T)
        m = d < best
        best[m], near[m], which[m] = d[m], q[m], i
    return best, near, which


def check_markers(cov, truth, shift):
    label, n = ndimage.label(cov > 0.5, np.ones((3, 3)))
    owner = {}
    for i, (x, y) in enumerate(truth):
        c, r = int(round(x)), int(round(y))
        w = label[max(r - 1, 0):r + 2, max(c - 1, 0):c + 2]
        ids = w[w > 0]
        owner.setdefault(int(np.bincount(ids).argmax()) if len(ids) else 0, []).append(i)
    area = np.bincount(label.ravel(), minlength=n + 1)
    alone = [k for k, v in owner.items() if k and len(v) == 1]
    typical = np.median(area[alone]) if alone else 0
    offs = []
    for k in alone:
        if not 0.85 * typical <= area[k] <= 1.15 * typical:
            continue
        r = int(math.sqrt(typical)) + 3
        x, y = truth[owner[k][0]]
        c0, r0 = int(round(x)), int(round(y))
        y0, y1, x0, x1 = max(r0 - r, 0), r0 + r + 1, max(c0 - r, 0), c0 + r + 1
        mine = ndimage.binary_dilation(label[y0:y1, x0:x1] == k, np.ones((3, 3)))
        w = cov[y0:y1, x0:x1] * mine
        gy, gx = np.mgrid[y0:y0 + w.shape[0], x0:x0 + w.shape[1]]
        offs.append([(w * gx).sum() / w.sum() - x - shift[0], (w * gy).sum() / w.sum() - y - shift[1]])
    touching = sorted(v for k, v in owner.items() if k and len(v) > 1)
    return np.array(offs).reshape(-1, 2), touching, owner.get(0, []), typical


def check_line(cov, truth, skip=None, skip_radius=0):
    """Offset of the whole line (iterated least squares), and the largest mean
    sideways offset of a stretch of at least 30 pixels."""
    ys, xs = np.nonzero(cov > 0.12)                    # above what gridlines give
    p = np.column_stack([xs, ys]).astype(float)
    w = cov[ys, xs]
    near = polyline_distance(p, truth)[0] < 7
    if skip is not None:
        near &= np.all([np.hypot(*(p - s).T) > skip_radius for s in skip], axis=0)
    p, w = p[near], w[near]
    t = np.zeros(2)
    for _ in range(12):
        d, q, _ = polyline_distance(p - t, truth)
        n = (p - t - q) / np.maximum(d, 1e-9)[:, None]
        m = d > 1e-6
        a = (n[m] * w[m, None]).T @ n[m]
        t = t + np.linalg.lstsq(a + 1e-9 * np.eye(2), (n[m] * (w * d)[m, None]).sum(0), rcond=None)[0]
    d, q, seg = polyline_distance(p, truth)
    ab = np.diff(truth, axis=0)
    side = np.sign(ab[seg, 0] * (p - q)[:, 1] - ab[seg, 1] * (p - q)[:, 0]) * d
    run = np.concatenate([[0], np.cumsum(np.hypot(*ab.T))])
    part = (run[seg] // 30).astype(int)
    worst = [abs(np.average(side[part == k], weights=w[part == k]))
             for k in np.unique(part) if w[part == k].sum() > 15]
    return t, max(worst), w.sum() / run[-1]


def bar_ends(cov, truth, base, horizontal, outline=0):
    c = cov.T if horizontal else cov                   # bars now stand or hang
    offs = []
    for p in truth:
        along, across = (p[0], p[1]) if horizontal else (p[1], p[0])
        if abs(base - along) < 4:
            continue
        up = 1 if along < base else -1
        mid, k = int(round((along + base) / 2)), int(round(across))
        reach = min(8, int(abs(base - along)))
        rows = range(mid, int(round(along)) - up * reach, -up)
        strip = [np.mean([c[r, k + j] for j in (-1, 0, 1)]) if 0 <= r < c.shape[0] else 0 for r in rows]
        end = mid + up * 0.5 - up * (sum(strip) + outline / 2)
        lo = hi = k
        while lo > 1 and c[mid, lo] > 0.5: lo -= 1
        while hi < c.shape[1] - 2 and c[mid, hi] > 0.5: hi += 1
        centre = (lo + 0.5 - c[mid, lo] + hi - 0.5 + c[mid, hi]) / 2
        offs.append([end - along, centre - across] if horizontal else [centre - across, end - along])
    return np.array(offs)


def check_histogram(cov, s):
    line = s.get("outline_width", 0)                   # of another colour, over the edges
    tops = bar_ends(cov, s["pixels"], s["baseline"], False, line)[:, 1]
    edges, level = s["bin_edge_pixels"], [s["baseline"], *[p[1] for p in s["pixels"]], s["baseline"]]
    side = []
    for e, a, b in zip(edges, level, level[1:]):
        if abs(a - b) < 4:
            continue
        r = int(round((a + b) / 2))
        x = np.arange(int(e) - 4, int(e) + 6)
        filled = cov[r, x].sum()
        side.append((x[-1] + 0.5 - filled - line / 2 if b < a else x[0] - 0.5 + filled + line / 2) - e)
    n = max(len(tops), len(side))
    pad = lambda v: np.concatenate([v, np.full(n - len(v), np.nan)])
    return np.column_stack([pad(np.array(side)), pad(tops)])


def check_steps(cov, truth):
    offs, thick = [], []
    h, w = cov.shape
    for (x0, y0), (x1, y1) in zip(truth, truth[1:]):
        flat = abs(y1 - y0) < 0.01
        if math.hypot(x1 - x0, y1 - y0) < 9:
            continue
        cx, cy = int(round((x0 + x1) / 2)), int(round((y0 + y1) / 2))
        if flat:
            k = np.arange(max(cy - 5, 0), min(cy + 6, h)); a = cov[k, cx]
        else:
            k = np.arange(max(cx - 5, 0), min(cx + 6, w)); a = cov[cy, k]
        m = (a * k).sum() / max(a.sum(), 1e-9)
        offs.append([np.nan, m - (y0 + y1) / 2] if flat else [m - (x0 + x1) / 2, np.nan])
        thick.append(a.sum())
    return np.array(offs)[thick > 0.7 * np.median(thick)]         # leaves out what another series covers


def allowed(s, points):
    """Which selected pixels lie where the series is drawn."""
    t = np.array(s["pixels"], float)
    line = s.get("curve_pixels")
    ok = np.zeros(len(points), bool)
    if s["kind"] in ("scatter", "points_curve"):
        for q in t:
            ok |= np.hypot(*(points - q).T) < 15
    if s["kind"] in ("curve", "steps"):
        line = t
    if line is not None:
        ok |= polyline_distance(points, np.array(line, float))[0] < 8
    if s["kind"].startswith("bars") or s["kind"] == "histogram":
        i = 0 if s["kind"] == "bars_horizontal" else 1
        gap = np.min(np.abs(np.diff(np.sort(t[:, 1 - i])))) if len(t) > 1 else 1e9
        for n, q in enumerate(t):
            lo, hi = sorted([q[i], s["baseline"]])
            half = gap / 2 + 1 if "bin_edge_pixels" not in s else (s["bin_edge_pixels"][n + 1] - s["bin_edge_pixels"][n]) / 2 + 1
            ok |= (points[:, i] >= lo - 1.5) & (points[:, i] <= hi + 1.5) & (np.abs(points[:, 1 - i] - q[1 - i]) <= half)
    return ok


def axis_error(chart, s):
    """Largest distance of "pixels" from the data mapped through "axes"."""
    worst = 0
    for i, a in enumerate("xy"):
        ax = chart["axes"][a]
        if ax["scale"] == "category":
            continue
        f = math.log10 if ax["scale"] == "log10" else float
        (p0, p1), (v0, v1) = ax["pixel"], map(f, ax["value"])
        for d, p in zip(s["data"] + s.get("curve_data", []), s["pixels"] + s.get("curve_pixels", [])):
            worst = max(worst, abs(p0 + (f(d[i]) - v0) / (v1 - v0) * (p1 - p0) - p[i]))
    return worst


def tidy(v):
    if isinstance(v, float):
        v = round(v, 4)
        return int(v) if v == int(v) else v
    if isinstance(v, list):
        return [tidy(x) for x in v]
    return {k: tidy(x) for k, x in v.items()} if isinstance(v, dict) else v


def dump(chart):
    one = lambda v: json.dumps(v, ensure_ascii=False)
    rows = []
    for k, v in chart.items():
        if k == "series":
            parts = [",\n     ".join(f'"{a}": {one(b)}' for a, b in s.items()) for s in v]
            rows.append('"series": [\n    {' + "},\n    {".join(parts) + "}\n  ]")
        else:
            rows.append(f'"{k}": {one(v)}')
    return "{\n  " + ",\n  ".join(rows) + "\n}\n"


def main():
    folder, write = sys.argv[1], "--write" in sys.argv
    bad = 0
    print("| chart | series | measured | mean dx | mean dy | max | exact px | tol | selected | stray | axes |")
    print("|---|---|---|---|---|---|---|---|---|---|---|")
    for name in sorted(n for n in os.listdir(folder) if n.endswith(".json")):
        with open(os.path.join(folder, name)) as f:
            chart = json.load(f)
        image = load(os.path.join(folder, chart["file"]))
        h, w = image.shape[:2]
        chart["size"] = [w, h]
        l, t, r, b = chart["plot_box"]
        inside = np.zeros((h, w), bool)
        inside[max(int(t) - 12, 0):int(b) + 13, max(int(l) - 12, 0):int(r) + 13] = True
        gy, gx = np.mgrid[0:h, 0:w]
        region = (gx >= l) & (gx <= r) & (gy >= t) & (gy <= b)    # what a user would select
        if "legend_box" in chart:
            x0, y0, x1, y1 = chart["legend_box"]
            region &= ~((gx >= x0) & (gx <= x1) & (gy >= y0) & (gy <= y1))
        inner = image[int(t) + 2:int(b) - 1, int(l) + 2:int(r) - 1].reshape(-1, 3)
        used = [rgb(s["colour"]) for s in chart["series"]]
        far = np.all([np.abs(inner - c).max(axis=1) > 12 for c in used], axis=0)
        values, counts = np.unique(inner[far], axis=0, return_counts=True)
        background = values[counts.argmax()]
        for s in chart["series"]:
            s["colour"] = s["colour"].lower()
            colour, truth = rgb(s["colour"]), np.array(s["pixels"], float)
            cov = coverage(image, colour, background) * inside
            kind = s["kind"]
            shift = s.get("centroid_offset", [0, 0])
            if kind in ("scatter", "points_curve"):
                offs, s["touching"], hidden, area = check_markers(cov, truth, shift)
                count = f"{len(offs)}/{len(truth)}"
                if hidden:
                    s["hidden"] = hidden
                    count += f", {len(hidden)} hidden"
                if len(offs):
                    mean, worst = np.nanmean(offs, axis=0), np.nanmax(np.abs(offs))
                if kind == "points_curve":
                    m, x, width = check_line(cov, np.array(s["curve_pixels"], float), truth, math.sqrt(area / math.pi) + 2)
                    s["curve_offset"] = {"mean": m.tolist(), "max": x}
                    count += f" (curve {m[0]:+.2f} {m[1]:+.2f} {x:.2f})"
            elif kind == "curve":
                mean, worst, width = check_line(cov, truth)
                count = f"line, {width:.1f} px wide"
            else:
                if kind == "histogram":
                    offs = check_histogram(cov, s)
                elif kind == "steps":
                    offs = check_steps(cov, truth)
                else:
                    offs = bar_ends(cov, truth, s["baseline"], kind == "bars_horizontal")
                mean, worst = np.nanmean(offs, axis=0), np.nanmax(np.abs(offs))
                count = f"{len(offs)}"
            s["offset"] = {"mean": mean.tolist(), "max": worst}
            distance = np.abs(image - colour).max(axis=2)
            distance[~region] = 999
            s["exact_pixels"] = int((distance == 0).sum())
            flat = (distance == 0).sum() > 0.75 * cov.sum()
            steps = [0] if flat else range(int(5 * (np.abs(colour - background).max() * 0.5 // 5)), -1, -5)
            for s["tolerance"] in steps:                   # the widest that takes in no text or frame
                ys, xs = np.nonzero(distance <= s["tolerance"])
                s["selected_pixels"] = len(xs)
                s["stray_pixels"] = int((~allowed(s, np.column_stack([xs, ys]).astype(float))).sum())
                if not s["stray_pixels"]:
                    break
            error = axis_error(chart, s)
            bad += not (abs(mean).max() <= 0.5 and error < 0.05)
            print(f"| {chart['file']} | {kind} {s['colour']} | {count} | {mean[0]:+.2f} | {mean[1]:+.2f} "
                  f"| {worst:.2f} | {s['exact_pixels']} | {s['tolerance']} | {s['selected_pixels']} | {s['stray_pixels']} | {error:.3f} |")
        if write:
            with open(os.path.join(folder, name), "w") as f:
                f.write(dump(tidy(chart)))
    print("all mean offsets within 0.5 px" if not bad else f"{bad} series are off")
    return bad > 0


if __name__ == "__main__":
    sys.exit(main())
