#!/usr/bin/env bash
# Measures the budgets and prints them. `./run bench build` times a clean build and the whole of ./test as well.
set -euo pipefail
. "$(dirname "$0")/../cmake/workshop.sh"
. "$root/cmake/jobs.sh"

export VEK_BENCH_KERNEL="$root/build/native/bench/kernel/creokernel"
cmake --build "$root/build/native" --target benchmarks >"$root/build/benchmarks.log" 2>&1 &&
  cmake --build "$root/build/windows" --target benchmarks >>"$root/build/benchmarks.log" 2>&1 ||
  { tail -n 40 "$root/build/benchmarks.log" >&2 && exit 1; }

"$root/build/native/benchmarks/scan_benchmark"
for name in dispatch sketch_commit rebuild assembly picture_and_import; do
  "$root/cmake/wine.sh" "$root/build/windows/benchmarks/${name}_benchmark.exe" | tr -d '\r'
done

port_must_be_free
start_bench
trap stop_bench EXIT
# Wine gives the program's process its name; of several, the one that listens is meant.
bench=$(pgrep -n creobench.exe) || fail "The bench's process is not to be found."
"$root/build/native/benchmarks/http_benchmark" "$bench"
trap - EXIT
stop_bench

if [ "${1:-}" = build ]; then
  clean=$(mktemp -d)
  trap 'rm -rf "$clean"' EXIT
  git -C "$root" archive HEAD | tar -x -C "$clean"
  begin=$SECONDS
  (cd "$clean" && CCACHE_DISABLE=1 cmake --preset windows && CCACHE_DISABLE=1 cmake --build --preset windows &&
    CCACHE_DISABLE=1 cmake --preset native && CCACHE_DISABLE=1 cmake --build --preset native) >"$root/build/clean.log" 2>&1
  printf '%-62s %8.2f of a budget of 8 minutes\n' "a clean build" "$(jq -n "$((SECONDS - begin)) / 480")"
  begin=$SECONDS
  "$root/test" >"$root/build/clean_test.log" 2>&1
  printf '%-62s %8.2f of a budget of 6 minutes\n' "the whole of ./test" "$(jq -n "$((SECONDS - begin)) / 360")"
fi
