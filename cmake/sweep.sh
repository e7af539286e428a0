#!/usr/bin/env bash
# Fails every toolkit call of every operation, one at a time, and prints how many runs that were and what was found.
# Exits with 0 only when nothing was. The families run side by side; what each said is in build/sweep/.
set -euo pipefail
. "$(dirname "$0")/workshop.sh"

export VEK_SWEEP=all VEK_BENCH_KERNEL="$root/build/native/bench/kernel/creokernel"
program="$root/build/windows/tests/faults/fault_tests.exe"
said="$root/build/sweep"
rm -rf "$said"
mkdir -p "$said"

sweep_family() {
  "$root/cmake/wine.sh" "$program" "--gtest_filter=$1.*" </dev/null >"$said/$1.log" 2>&1 ||
    printf '%s\n' "$1" >>"$said/failed"
}
export -f sweep_family
export root program said
"$root/cmake/wine.sh" "$program" --gtest_list_tests </dev/null | tr -d '\r' | sed -n 's/^\([A-Za-z]*\)\.$/\1/p' |
  xargs -P "$(nproc)" -I{} bash -c 'sweep_family {}'

cat "$said"/*.log | tr -d '\r' | awk '
  $1 == "sweep" { if (!($2 in calls)) order[++count] = $2; calls[$2] += $3; runs[$2] += $4; found[$2] += $5 }
  END {
    form = "%-40s %7s %7s %9s\n"
    printf form, "operation", "calls", "runs", "findings"
    for (i = 1; i <= count; i++) {
      name = order[i]
      printf form, name, calls[name], runs[name], found[name]
      all_calls += calls[name]; all_runs += runs[name]; all_found += found[name]
    }
    printf form, count " operations", all_calls, all_runs, all_found
  }'
say "It took $SECONDS s."
[ ! -f "$said/failed" ] || fail "Look into build/sweep/ for what was found in:" $(cat "$said/failed")
