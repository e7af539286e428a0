#!/usr/bin/env bash
# Thousands of requests, hostile clients and restarts at one bench, behind a long run of the hostile thread schedules.
# Exits with 0 only when every answer was right, what the bench holds stayed flat, and no race was seen.
# `./run soak SEED` makes the same requests again.
set -euo pipefail
. "$(dirname "$0")/workshop.sh"
. "$root/cmake/jobs.sh"

export VEK_SOAK=all VEK_BENCH_KERNEL="$root/build/native/bench/kernel/creokernel"
[ $# -eq 0 ] || export VEK_SOAK_SEED="$1"
said="$root/build/soak"
rm -rf "$said"
mkdir -p "$said"
failed=0

say "Threads"
VEK_SCHEDULE_TIMES=10 "$root/build/native/tests/core/core_tests_tsan" --gtest_filter='*Schedule.*' \
  </dev/null >"$said/threads.log" 2>&1 || failed=1
sed -nE 's/^(VEK_SCHEDULE_SEED=.*|[0-9]+ rounds.*)$/  \1/p' "$said/threads.log"

say "Soak"
port_must_be_free
"$root/build/native/tests/soak/soak_tests" </dev/null >"$said/soak.log" 2>&1 || failed=1
sed -nE '/^\[|^Running main/!p' "$said/soak.log"

say "It took $SECONDS s."
[ "$failed" -eq 0 ] || fail "Look into build/soak/ for what was found."
