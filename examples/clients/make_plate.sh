#!/usr/bin/env bash
# Makes a plate with a bore and checks its volume: make_plate.sh [ADDRESS]
set -euo pipefail
address=${1:-http://localhost:4001}

# A session knows its sketches by name, whichever document they are in.
sketch=PLATE_$(date +%s)
# The add-in gives up on a batch after 120 s.
answer=$(curl -sS --max-time 180 -w '\n%{http_code}' -H 'Content-Type: application/json' --data-binary @- "$address/execute" <<BATCH
{"operations": {
  "api_document_new_part": {},
  "api_sketch_create": {"name": "$sketch", "plane": "XY"},
  "api_sketch_rectangle_two_points": {"sketch_name": "$sketch", "x1": -40, "y1": -25, "x2": 40, "y2": 25},
  "api_sketch_circle_center_radius": {"sketch_name": "$sketch", "cx": 0, "cy": 0, "radius": 10},
  "api_feature_extrude": {"sketch_name": "$sketch", "distance_mm": 8},
  "api_analysis_mass_properties": {}
}}
BATCH
) || {
  echo "Nothing answers on $address. Is Creo running, with the add-in in it?" >&2
  exit 1
}
status=${answer##*$'\n'}
answer=${answer%$'\n'*}
if [ "$status" != 200 ]; then
  echo "The add-in answered with status $status: $(jq -r .error <<<"$answer")" >&2
  exit 1
fi

jq -r '.results | to_entries[] | "\(if .value.success then "ok    " else "FAILED" end)  \(.key)  \(.value.message)"' <<<"$answer"
jq -e '.results | all(.success)' <<<"$answer" >/dev/null || exit 1

made=$(jq '.results.api_analysis_mass_properties.data.volume_cm3' <<<"$answer")
meant=$(jq -n '(8 * 5 - 3.14159265) * 0.8')
# jq writes a point, whatever the language of the machine.
LC_ALL=C printf 'volume %.4f cm³, meant %.4f cm³\n' "$made" "$meant"
jq -en "($made - $meant | fabs) < 1e-3" >/dev/null || {
  echo "The plate is not as meant." >&2
  exit 1
}
