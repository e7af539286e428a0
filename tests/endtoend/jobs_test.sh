#!/usr/bin/env bash
# ./run with jobs: the sample twice in a row, the housing, the gearbox, a job with a failing step, and jobs with
# mistakes in them.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export VEK_SKIP_BUILD=1

complain() {
  echo "$*" >&2
  cat "$scratch/said" >&2
  exit 1
}
run() { "$root/run" "$@" >"$scratch/said" 2>&1; }

for attempt in first second; do
  run || complain "the sample fails the $attempt time"
  grep -q 'BRACKET' "$scratch/said" || complain "the sample's part is not among the models"
  head -c 13 "$root/out/bracket.stp" | grep -q '^ISO-10303-21;' || complain "no STEP file came of the sample"
  # Behind the signature and the head of the first block stand width and height: 1920 and 1080.
  [ "$(head -c 24 "$root/out/bracket.png" | tail -c 23 | tr -d '\0' | od -An -tx1 | tr -d ' \n')" = \
    "504e470d0a1a0a0d4948445207800438" ] || complain "the sample's picture is no PNG of its size"
  [ -s "$root/out/bracket.prt.1" ] || complain "the sample's part was not saved"
done

run "$root/examples/housing.json" || complain "a step of the housing fails"
head -c 13 "$root/out/housing.stp" | grep -q '^ISO-10303-21;' || complain "no STEP file came of the housing"

# Six screws, on the cover's plate at z = 48, whose rows are at y = -48 and 48.
run "$root/examples/gearbox.json" || complain "a step of the gearbox fails"
grep -q 'assembly GEARBOX.* size 180 x 112 x 128 mm' "$scratch/said" || complain "the gearbox is not put together"
[ "$(grep -c NEXT_ASSEMBLY_USAGE_OCCURRENCE "$root/out/gearbox.stp")" = 13 ] || complain "components are not in the file"
[ "$(grep -cE "CARTESIAN_POINT\\('',\\((-10|36|82)\.,-?48\.,48\.\\)\\)" "$root/out/gearbox.stp")" = 6 ] ||
  complain "the screws of the file don't lie on the cover"

run "$root/examples/bracket_drawing.json" || complain "a step of the drawing fails"
svg=$root/out/bracket.svg
[ -s "$svg" ] || complain "no sheet came of the drawing"
rsvg-convert "$svg" >"$scratch/sheet.png" 2>>"$scratch/said" || complain "the sheet is no SVG"
# The bracket is 100 high around y = 97, and the ends of the cut at x = 170 lie 8 past it: at 39 and 155, from above 258
# and 142 of 297.
for words in 'SECTION A-A' 'DETAIL B  SCALE 2:1' '>BRACKET<' '>1:1<' 'M170 258L170 252' 'M170 142L170 148'; do
  grep -q "$words" "$svg" || complain "the sheet lacks $words"
done

echo '[["api_document_new_part", {}], ["api_sketch_create", {"plane": "NOWHERE"}], ["api_feature_list", {}]]' \
  >"$scratch/failing.json"
run "$scratch/failing.json" && complain "a failing step goes unnoticed"
grep -q "Datum plane 'NOWHERE' not found in the active part." "$scratch/said" || complain "the message is lost"
grep -q 'Found 4 features.' "$scratch/said" || complain "the step behind the failing one did not run"

echo '[["api_document_info", {}], ["api_feature_list"]]' >"$scratch/half.json"
run "$scratch/half.json" && complain "half a step is taken for a step"
grep -q 'half.json is not a job: step 2 is not' "$scratch/said" || complain "the mistake is not named"

echo '[["api_document_info", {}' >"$scratch/broken.json"
run "$scratch/broken.json" && complain "a broken file is taken for a job"
grep -q 'broken.json is not JSON' "$scratch/said" || complain "the broken file is not named"
exit 0
