#!/usr/bin/env bash
# Makes docs/operations/ and docs/openapi.json anew from the catalogue, with a picture of each example's result as the
# bench has it: the model, or the sheet.
set -euo pipefail
. "$(dirname "$0")/workshop.sh"
. "$root/cmake/jobs.sh"

catalogue=$root/catalogue/operations.json
images=$root/docs/operations/images
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
width=560
height=350

# The example of an operation as a job, the picture its last step.
example_job() {
  jq --arg name "$1" --argjson width "$width" --argjson height "$height" '
    [.families[] | .name as $family | .operations[] | select(.name == $name)
     | (.example.given + [[.name, .example.arguments]])
       + if $family == "drawing" then [] else
           [["api_export_screenshot",
             {output_path: "O:\\picture.png", width_px: $width, height_px: $height,
              view: (if $family == "sketches" then "front" else "home" end)}]] end][0]' "$catalogue"
}

picture_of() {
  local name=$1 body
  find "$out_dir" -mindepth 1 -delete
  start_bench
  while IFS= read -r body; do
    post_batch "$body" || fail "The example of $name fails."
  done < <(example_job "$name" | job_batches /dev/stdin)
  plot_drawing
  stop_bench
  if [ -f "$out_dir/picture.png" ]; then
    cp "$out_dir/picture.png" "$images/$name.png"
  else
    rsvg-convert --width "$width" "$out_dir"/*.svg --output "$images/$name.png"
  fi
}

port_must_be_free
rm -rf "$images"
mkdir -p "$images"
jq -r '.families[].operations[] | select(.example.picture != false) | .name' "$catalogue" >"$scratch/shown"
while IFS= read -r name <&3; do
  say "$name"
  picture_of "$name" >"$scratch/said" 2>&1 || fail "$(cat "$scratch/said")"
done 3<"$scratch/shown"

version=$(sed -n 's/^project(VekCreoAddin VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")
"$root/build/native/catalogue/reference/catalogue_reference" "$catalogue" "$root/docs" "$version"
say "Written to docs/operations/ and docs/openapi.json."
