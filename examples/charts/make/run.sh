#!/bin/sh
# Rebuilds all charts of the folder above and checks them. Needs the Debian
# packages r-base-core r-cran-jsonlite gnuplot-nox python3-matplotlib
# python3-pil python3-scipy librsvg2-bin fonts-dejavu-core fonts-liberation,
# and node with npm. Other versions may move a few pixels; the JSON follows.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
out=${1:-$(dirname "$here")}
mkdir -p "$out"
out=$(cd "$out" && pwd)
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
cd "$tmp"
Rscript "$here/export_data.R" "$tmp"
Rscript "$here/base_r.R" "$out"
python3 "$here/gnuplot_charts.py" "$out" "$tmp"
python3 "$here/matplotlib_charts.py" "$out" "$tmp"
cp "$here/vega_charts.mjs" .
npm install --silent --no-audit --no-fund vega@6.4.0 vega-lite@6.4.3 vega-datasets@3.2.1 >/dev/null
node vega_charts.mjs "$out"
python3 "$here/check.py" "$out" --write
