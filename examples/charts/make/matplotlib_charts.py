#!/usr/bin/env python3
"""Charts made with matplotlib's Agg backend.

usage: matplotlib_charts.py OUTDIR DATADIR

Truth: transData gives display coordinates, y upwards, whose pixel edges are
integers; the pixel-centre position is (x - 0.5, height - 0.5 - y).
"""
import csv, json, os, sys
import numpy as np
import matplotlib
matplotlib.use("Agg")
import matplotlib.pyplot as plt

out, data = sys.argv[1:3]


def read(name):
    with open(os.path.join(data, name + ".csv")) as f:
        return list(csv.reader(f))[1:]


def numbers(name):
    return np.array(read(name), float)


def pixels(ax, points):
    ax.figure.canvas.draw()                            # settles limits and layout
    d = ax.transData.transform(np.asarray(points, float))
    h = int(ax.figure.bbox.height)
    return [[x - 0.5, h - 0.5 - y] for x, y in d]


def axis(ax, which, values, labels=None):
    i = "xy".index(which)
    at = [ax.get_xlim()[0], ax.get_ylim()[0]]
    ends = [[v if j == i else at[j] for j in (0, 1)] for v in values]
    scale = getattr(ax, f"get_{which}scale")().replace("log", "log10")
    return {"scale": "category" if labels else scale,
            "pixel": [p[i] for p in pixels(ax, ends)], "value": labels or list(values)}


def save(ax, file, source, series, x, y, **options):
    fig = ax.figure
    fig.savefig(os.path.join(out, file), facecolor=fig.get_facecolor(), **options)
    b = ax.get_window_extent()
    h = int(fig.bbox.height)
    chart = {"file": file, "made_with": f"matplotlib {matplotlib.__version__}, Agg",
             "data_source": source, "series": series, "axes": {"x": x, "y": y},
             "plot_box": [b.x0 - 0.5, h - 0.5 - b.y1, b.x1 - 0.5, h - 0.5 - b.y0]}
    with open(os.path.join(out, os.path.splitext(file)[0] + ".json"), "w") as f:
        json.dump(chart, f)
    plt.close(fig)


# thin line
d = numbers("co2")
fig, ax = plt.subplots(figsize=(8, 5), dpi=100)
ax.plot(d[:, 0], d[:, 1], color="#1f77b4", lw=1)
ax.set(title="Atmospheric CO$_2$ at Mauna Loa", xlabel="Year", ylabel="ppm")
fig.tight_layout()
save(ax, "co2-thin-line.png", "R datasets::co2",
     [{"colour": "#1f77b4", "kind": "curve", "mode": "curves-fission",
       "data": d.tolist(), "pixels": pixels(ax, d)}],
     axis(ax, "x", [1960, 1995]), axis(ax, "y", [320, 360]))

# histogram without outlines
d = numbers("faithful")
fig, ax = plt.subplots(figsize=(6.4, 4.8), dpi=100)
counts, edges, _ = ax.hist(d[:, 0], bins=np.arange(1.5, 5.26, 0.25), color="#ff7f0e")
ax.set(title="Old Faithful eruptions", xlabel="Duration (min)", ylabel="Count")
top = np.column_stack([(edges[1:] + edges[:-1]) / 2, counts])
save(ax, "faithful-histogram.png", "R datasets::faithful, column eruptions",
     [{"colour": "#ff7f0e", "kind": "histogram", "mode": "histogram",
       "data": top.tolist(), "pixels": pixels(ax, top), "bin_edges": edges.tolist(),
       "bin_edge_pixels": [p[0] for p in pixels(ax, [[e, 0] for e in edges])],
       "baseline": pixels(ax, [[0, 0]])[0][1]}],
     axis(ax, "x", [2, 5]), axis(ax, "y", [0, 30]))

# outline of a histogram as a step line, lossless WebP
d = numbers("nile")
fig, ax = plt.subplots(figsize=(7, 4.5), dpi=110)
counts, edges = np.histogram(d[:, 1], bins=np.arange(400, 1451, 150))
ax.stairs(counts, edges, color="#008080", lw=2.5)
ax.set(title="Annual flow of the Nile, 1871-1970", xlabel="Flow (10$^8$ m$^3$)",
       ylabel="Number of years", ylim=(0, 40))
ax.grid(axis="y", color="#dddddd", lw=0.8)
ax.set_axisbelow(True)
fig.tight_layout()
level = [0, *counts, 0]
vertices = [[float(e), float(v)] for i, e in enumerate(edges) for v in level[i:i + 2]]
save(ax, "nile-stairs.webp", "R datasets::Nile",
     [{"colour": "#008080", "kind": "steps", "mode": "step_size_graph",
       "data": vertices, "pixels": pixels(ax, vertices)}],
     axis(ax, "x", [400, 1400]), axis(ax, "y", [0, 25]), pil_kwargs={"lossless": True})

# horizontal bars on a dark background
rows = sorted(read("precip"), key=lambda r: -float(r[1]))[:9][::-1]
names, inches = [r[0] for r in rows], [float(r[1]) for r in rows]
with plt.style.context("dark_background"):
    fig, ax = plt.subplots(figsize=(7, 4.5), dpi=100)
    ax.barh(names, inches, height=0.65, color="#bfbbd9")
    ax.set(title="Wettest cities in a list of 70", xlabel="Annual precipitation (inches)")
    fig.tight_layout()
    tips = list(zip(inches, range(len(names))))
    save(ax, "precip-hbars-dark.png", "R datasets::precip, the nine largest",
         [{"colour": "#bfbbd9", "kind": "bars_horizontal", "mode": "bar_horizontal-fission",
           "data": [[v, n] for v, n in zip(inches, names)], "pixels": pixels(ax, tips),
           "baseline": pixels(ax, [[0, 0]])[0][0]}],
         axis(ax, "x", [0, 60]), axis(ax, "y", [0, len(names) - 1], [names[0], names[-1]]))

# markers and a fitted line of the same colour, JPEG
d = numbers("mtcars")
fit = np.polyfit(d[:, 0], d[:, 1], 1)
line = np.column_stack([[1.5, 5.5], np.polyval(fit, [1.5, 5.5])])
fig, ax = plt.subplots(figsize=(6.6, 5), dpi=120)
# one size per marker: with a single size the renderer moves each to whole pixels
ax.scatter(d[:, 0], d[:, 1], s=[34] * len(d), color="#b2182b")
ax.plot(line[:, 0], line[:, 1], color="#b2182b", lw=2)
ax.set(title="Weight and fuel economy, 32 cars", xlabel="Weight (1000 lb)",
       ylabel="Miles per US gallon")
save(ax, "mtcars-fit.jpg", "R datasets::mtcars",
     [{"colour": "#b2182b", "kind": "points_curve", "mode": "points_curves-fission",
       "data": d.tolist(), "pixels": pixels(ax, d),
       "curve_data": line.tolist(), "curve_pixels": pixels(ax, line)}],
     axis(ax, "x", [2, 5]), axis(ax, "y", [10, 35]), pil_kwargs={"quality": 85})
