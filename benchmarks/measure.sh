#!/usr/bin/env bash
# Measures the budgets and prints them as one table. `./run bench build` times a clean build and the whole of ./test as
# well. VEK_BENCH_REPEATS lessens the repeats. Nothing is asserted: only what fails to run ends this with another status
# than 0.
set -euo pipefail
. "$(dirname "$0")/../cmake/workshop.sh"
. "$root/cmake/jobs.sh"

native="$root/build/native" windows="$root/build/windows"
export VEK_BENCH_KERNEL="$native/bench/kernel/creokernel"

build_benchmarks() {
  local log="$root/build/benchmarks.log"
  { cmake --build "$native" --target benchmarks && cmake --build "$windows" --target benchmarks; } >"$log" 2>&1 ||
    { tail -n 40 "$log" >&2 && fail "The benchmarks can't be built; the whole of it is in build/benchmarks.log."; }
}

# The benchmark's rows, or the end with its name.
measure() {
  "$@" | tr -d '\r' || fail "$(basename "${!#}") has failed."
}

measure_on_the_port() {
  local bench
  port_must_be_free
  start_bench
  trap stop_bench EXIT
  # Wine gives the program's process its name; of several, the one that listens is meant.
  bench=$(pgrep -n creobench.exe) || fail "The bench's process is not to be found."
  "$native/benchmarks/http_benchmark" "$bench" || fail "http_benchmark has failed."
  trap - EXIT
  stop_bench
}

minutes_since() { jq -n "($EPOCHREALTIME - $1) / 60"; }

clean_build() {
  local preset
  for preset in windows native; do
    CCACHE_DISABLE=1 cmake --preset "$preset"
    CCACHE_DISABLE=1 cmake --build --preset "$preset"
  done
}

# What is committed is built from nothing, without the compiler's cache; the tests are those of the tree as it stands.
measure_build() {
  local begin clean
  clean=$(mktemp -d)
  # shellcheck disable=SC2064
  trap "rm -rf '$clean'" EXIT
  git -C "$root" archive HEAD | tar -x -C "$clean"
  begin=$EPOCHREALTIME
  (cd "$clean" && clean_build) >"$root/build/clean.log" 2>&1 || fail "The clean build fails; see build/clean.log."
  "$native/benchmarks/print_figure" "a clean build" min 8 "$(minutes_since "$begin")"
  begin=$EPOCHREALTIME
  "$root/test" >"$root/build/clean_test.log" 2>&1 || fail "./test fails; see build/clean_test.log."
  "$native/benchmarks/print_figure" "the whole of ./test" min 6 "$(minutes_since "$begin")"
}

build_benchmarks
say "$(nproc) cores; the load of the last minute was $(cut -d' ' -f1 /proc/loadavg) before the start."
say
"$native/benchmarks/print_figure"
measure "$native/benchmarks/scan_benchmark"
for name in scan dispatch sketch_commit rebuild assembly picture_and_import; do
  measure "$root/cmake/wine.sh" "$windows/benchmarks/${name}_benchmark.exe"
done
measure_on_the_port
[ "${1:-}" != build ] || measure_build
