#!/usr/bin/env bash
# fuzz.sh [SECONDS] [NAME…]: runs the fuzzers, or those named, for so long each, side by side on all cores, and prints
# what they did. Exits with 0 only when none found anything. Each starts from the seeds and from what it has found before
# in build/fuzz/corpus/; what it said, and inputs that broke something, are in build/fuzz/.
set -euo pipefail
. "$(dirname "$0")/workshop.sh"

seconds=60
case "${1:-}" in
  "" | *[!0-9]*) ;;
  *)
    seconds=$1
    shift
    ;;
esac

export seconds root
export programs="$root/build/native/tests/fuzz" seeds="$root/tests/fuzz" said="$root/build/fuzz"
mkdir -p "$said/findings"

names=()
for wanted in "${@:-}"; do
  found=
  for program in "$programs"/fuzz_*; do
    name=${program##*/fuzz_}
    if [ -x "$program" ] && { [ -z "$wanted" ] || [ "$wanted" = "$name" ]; }; then
      names+=("$name")
      found=yes
    fi
  done
  [ -n "$found" ] || fail "There is no fuzzer '$wanted'."
done

run_fuzzer() {
  local name=$1 words=()
  [ ! -f "$seeds/fuzz_$name.dict" ] || words=("-dict=$seeds/fuzz_$name.dict")
  mkdir -p "$said/corpus/$name"
  rm -f "$said/findings/$name-"*
  "$programs/fuzz_$name" -max_total_time="$seconds" -max_len=4096 -timeout=300 -report_slow_units=60 -print_final_stats=1 \
    -artifact_prefix="$said/findings/$name-" "${words[@]}" "$said/corpus/$name" "$seeds/corpus/fuzz_$name" \
    >"$said/$name.log" 2>&1 </dev/null || true
}
export -f run_fuzzer
printf '%s\n' "${names[@]}" | xargs -P "$(nproc)" -I{} bash -c 'run_fuzzer {}'

# The figures of one log: the counters that were compiled in, and the last line that tells how many of them were seen.
figures() {
  awk -v name="$1" -v findings="$2" '
    /^INFO: Loaded/ { if (match($0, /\([0-9]+ inline/)) edges = substr($0, RSTART + 1, RLENGTH - 8) }
    /^#[0-9]+[ \t]/ {
      for (i = 2; i < NF; ++i) {
        if ($i == "cov:") covered = $(i + 1)
        if ($i == "corp:") { split($(i + 1), corpus, "/"); inputs = corpus[1] }
      }
    }
    /^Done [0-9]+ runs in/ { ran = $5 }
    /number_of_executed_units/ { runs = $2 }
    END { printf "%-18s %8d %12d %8d of %6d %8d %9d\n", name, ran, runs, covered, edges, inputs, findings }
  ' "$said/$1.log"
}

failed=()
printf '%-18s %8s %12s %18s %8s %9s\n' target seconds executions "edges covered" corpus findings
for name in "${names[@]}"; do
  findings=$(find "$said/findings" -name "$name-*" ! -name "*-slow-unit-*" | wc -l)
  # A fuzzer that never came to its end has found something, whatever it left behind.
  grep -q '^Done ' "$said/$name.log" || [ "$findings" -gt 0 ] || findings=1
  figures "$name" "$findings"
  [ "$findings" -eq 0 ] || failed+=("$name")
done
say "It took $SECONDS s."
[ ${#failed[@]} -eq 0 ] || fail "Look into build/fuzz/ for what was found in:" "${failed[@]}"
