#!/usr/bin/env python3
"""Charts made with gnuplot's pngcairo terminal.

usage: gnuplot_charts.py OUTDIR DATADIR

Truth: after a plot, gnuplot holds the plot box in GPVAL_TERM_* (terminal
units, y upwards). Measured on rendered markers and frames: a terminal unit is
one pixel, x is the pixel-centre column and (height - 1 - y) the row.
"""
import csv, json, math, os, subprocess, sys

out, data = sys.argv[1:3]
version = subprocess.run(["gnuplot", "--version"], capture_output=True, text=True).stdout.strip()


def read(name):
    with open(os.path.join(data, name + ".csv")) as f:
        rows = list(csv.reader(f))[1:]
    return [[float(v) for v in r] for r in rows]


def plot(name, size, terminal, commands):
    """Run gnuplot; return functions from data to pixels, and the plot box."""
    names = ["GPVAL_TERM_XMIN", "GPVAL_TERM_XMAX", "GPVAL_TERM_YMIN", "GPVAL_TERM_YMAX",
             "GPVAL_X_MIN", "GPVAL_X_MAX", "GPVAL_Y_MIN", "GPVAL_Y_MAX"]
    script = (f"set terminal pngcairo size {size[0]},{size[1]} {terminal}\n"
              f"set output '{name}.png'\n{commands}\nunset output\n"
              + "".join(f"print {n}\n" for n in names))
    run = subprocess.run(["gnuplot"], input=script, capture_output=True, text=True, cwd=out, check=True)
    tx0, tx1, ty0, ty1, x0, x1, y0, y1 = map(float, run.stderr.split())

    def scale(log, v0, v1, p0, p1):
        f = math.log10 if log else float
        return lambda v: p0 + (f(v) - f(v0)) / (f(v1) - f(v0)) * (p1 - p0)

    bottom, top = size[1] - 1 - ty0, size[1] - 1 - ty1
    px = scale("logscale x" in commands, x0, x1, tx0, tx1)
    py = scale("logscale y" in commands, y0, y1, bottom, top)
    return px, py, [tx0, top, tx1, bottom]


def write(name, source, colour, kind, mode, values, box, px, py, x, y, scales=("linear", "linear")):
    axis = lambda f, v, s: {"scale": s, "pixel": [f(v[0]), f(v[1])], "value": v}
    chart = {"file": name + ".png", "made_with": version + ", terminal pngcairo", "data_source": source,
             "series": [{"colour": colour, "kind": kind, "mode": mode, "data": values,
                         "pixels": [[px(a), py(b)] for a, b in values]}],
             "axes": {"x": axis(px, x, scales[0]), "y": axis(py, y, scales[1])}, "plot_box": box}
    with open(os.path.join(out, name + ".json"), "w") as f:
        json.dump(chart, f)


# scatter, solid squares, log y axis
d = read("pressure")
px, py, box = plot("pressure-squares-log", (680, 520), 'font "Liberation Sans,12"', """
set logscale y
set format y "10^{%T}"
set xrange [-20:380]
set yrange [1e-4:1e4]
set title "Vapour pressure of mercury"
set xlabel "Temperature (°C)"
set ylabel "Pressure (mm Hg)"
plot '-' with points pt 5 ps 1.3 lc rgb "#d35400" notitle
""" + "".join(f"{a} {b}\n" for a, b in d) + "e")
write("pressure-squares-log", "R datasets::pressure", "#d35400", "scatter", "points-fission",
      d, box, px, py, [0, 350], [0.001, 1000], ("linear", "log10"))

# step line on a dark background
d = read("uspop")
px, py, box = plot("uspop-steps-dark", (800, 500), 'background rgb "#202124" font "DejaVu Sans,11"', """
set border lc rgb "#bdc1c6"
set tics textcolor rgb "#bdc1c6"
set grid ytics lc rgb "#3c4043" lt 1 lw 1
set xrange [1780:1980]
set yrange [0:220]
set title "United States census population" tc rgb "#e8eaed"
set xlabel "Year" tc rgb "#e8eaed"
set ylabel "Millions" tc rgb "#e8eaed"
plot '-' with steps lw 2.5 lc rgb "#8ab4f8" notitle
""" + "".join(f"{a} {b}\n" for a, b in d) + "e")
vertices = [d[0]]
for (x0, y0), (x1, y1) in zip(d, d[1:]):
    vertices += [[x1, y0], [x1, y1]]
write("uspop-steps-dark", "R datasets::uspop", "#8ab4f8", "steps", "step_size_graph",
      vertices, box, px, py, [1800, 1960], [0, 200])
