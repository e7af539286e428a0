#!/usr/bin/env bash
# Fails every call of the toolkit and of Windows, one at a time: of each operation, and of the add-in's start and
# stop, its requests and its commands. Prints how many runs that were and what was found, and exits with 0 only when
# nothing was. The families of operations run side by side; what each said is in build/sweep/.
set -euo pipefail
. "$(dirname "$0")/workshop.sh"

export VEK_SWEEP=all VEK_BENCH_KERNEL="$root/build/native/bench/kernel/creokernel"
programs="$root/build/windows/tests/faults"
said="$root/build/sweep"
rm -rf "$said"
mkdir -p "$said"

# Runs the suites of a program that a pattern names: sweep_suites NAME PROGRAM PATTERN.
sweep_suites() {
  "$root/cmake/wine.sh" "$programs/$2.exe" "--gtest_filter=$3" </dev/null >"$said/$1.log" 2>&1 ||
    printf '%s\n' "$1" >>"$said/failed"
}
export -f sweep_suites
export root programs said
# The add-in as a whole has the one port: its suites follow each other.
{
  printf 'addin addin_fault_tests *\n'
  "$root/cmake/wine.sh" "$programs/fault_tests.exe" --gtest_list_tests </dev/null | tr -d '\r' |
    sed -n 's/^\([A-Za-z]*\)\.$/operations_\1 fault_tests \1.*/p'
} | xargs -P "$(nproc)" -L1 bash -c 'sweep_suites "$@"' sweep

cat "$said"/operations_*.log "$said/addin.log" | tr -d '\r' | awk '
  $1 == "sweep" { if (!($2 in seen)) order[++count] = $2; seen[$2]; toolkit[$2] += $3; windows[$2] += $4; found[$2] += $5 }
  END {
    form = "%-40s %8s %8s %9s\n"
    printf form, "runs with a failed call of", "toolkit", "Windows", "findings"
    for (i = 1; i <= count; i++) {
      name = order[i]
      printf form, name, toolkit[name], windows[name], found[name]
      all_toolkit += toolkit[name]; all_windows += windows[name]; all_found += found[name]
      if (name ~ /^api_/) operations++
    }
    printf form, operations " operations, " count - operations " runs of the add-in", all_toolkit, all_windows, all_found
  }'
say "It took $SECONDS s."
[ ! -f "$said/failed" ] || fail "Look into build/sweep/ for what was found in:" $(cat "$said/failed")
