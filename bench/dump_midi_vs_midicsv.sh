#!/bin/sh
# Whole-process comparison of `tahrir-cli dump-midi` with midicsv on a 200,000-note,
# 16-track file: CPU time of each (perf stat -r RUNS), output to a file, and the ratio.
# Usage: bench/dump_midi_vs_midicsv.sh [BUILD_DIR]   (RUNS=10 by default)
set -eu
BUILD=${1:-build}
RUNS=${RUNS:-10}
for tool in perf midicsv; do
  command -v "$tool" >/dev/null || { echo "needs $tool (apt-get install linux-perf midicsv)"; exit 1; }
done
cmake --build "$BUILD" --target tahrir-cli make_big_midi >/dev/null
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
"$BUILD/bench/tools/make_big_midi" "$WORK/big.mid" 16 12500

# Milliseconds of CPU (task-clock) for one command, averaged over RUNS runs.
cpu_ms() {
  perf stat -x, -e task-clock -r "$RUNS" -o "$WORK/stat" "$@" >"$WORK/out"
  awk -F, '/task-clock/ { printf "%.1f", $1 }' "$WORK/stat"
}
tahrir=$(cpu_ms "$BUILD/src/cli/tahrir-cli" dump-midi "$WORK/big.mid")
lines=$(( $(wc -l <"$WORK/out") / RUNS ))  # every run printed its dump
midicsv=$(cpu_ms midicsv "$WORK/big.mid")
echo "tahrir-cli dump-midi: $tahrir ms CPU ($lines lines)"
echo "midicsv:              $midicsv ms CPU"
awk -v a="$tahrir" -v b="$midicsv" 'BEGIN { printf "ratio tahrir-cli / midicsv: %.2f\n", a / b }'
