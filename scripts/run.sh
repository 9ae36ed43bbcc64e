#!/usr/bin/env bash
# Builds everything and starts the desktop program with the bundled H2/O2 sample open.
# Without a display it says so and runs the headless pipeline on a copy of the sample:
# check and describe it, solve it, and summarise the results.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${ZARVION_BUILD_DIR:-$root/build}
bash "$root/scripts/build.sh"
bin=$build/bin
sample=$bin/Samples/h2o2.txt
if [[ ! -f $sample ]]; then
    echo "run.sh: the sample $sample is missing" >&2
    exit 1
fi

if [[ -n ${DISPLAY:-} || -n ${WAYLAND_DISPLAY:-} ]]; then
    exec "$bin/zarvion" "$sample"
fi

echo "run.sh: no display (neither DISPLAY nor WAYLAND_DISPLAY is set);"
echo "run.sh: running the headless pipeline on a copy of $(basename "$sample") instead."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$sample" "$work/h2o2.txt"
echo
echo "== zarvion-cli check (exit 1 until results exist)"
"$bin/zarvion-cli" check "$work/h2o2.txt" || true
echo
echo "== zarvion-cli info (first lines)"
"$bin/zarvion-cli" info "$work/h2o2.txt" | head -n 40
echo
echo "== zarvion-solver"
(cd "$work" && "$bin/zarvion-solver" "$work/h2o2.txt")
echo
echo "== zarvion-cli check (after the run)"
"$bin/zarvion-cli" check "$work/h2o2.txt"
echo
echo "== zarvion-cli results (first and last rows)"
"$bin/zarvion-cli" results "$work/h2o2.txt" > "$work/results.tsv"
head -n 12 "$work/results.tsv"
echo "..."
tail -n 3 "$work/results.tsv"
echo
echo "== zarvion-cli production --species H2O (the reactions that form and consume water)"
"$bin/zarvion-cli" production "$work/h2o2.txt" --species H2O | head -n 20
echo
echo "== zarvion-cli mean --item T (temperature, every 50th row)"
"$bin/zarvion-cli" mean "$work/h2o2.txt" --item T --every 50 | head -n 15
