#!/usr/bin/env bash
# reference_test.sh PROGRAM VERSION: docs/operations/ and docs/openapi.json are what the catalogue gives, and each example
# that has something to show has its picture.
set -euo pipefail
program=$1
version=$2
root=$(cd "$(dirname "$0")/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

mkdir -p "$scratch/operations"
ln -s "$root/docs/operations/images" "$scratch/operations/images"
"$program" "$root/catalogue/operations.json" "$scratch" "$version"
diff -r "$scratch/operations" "$root/docs/operations" && diff "$scratch/openapi.json" "$root/docs/openapi.json" || {
  echo "The reference is not that of the catalogue: ./run reference makes it anew." >&2
  exit 1
}
diff <(jq -r '.families[].operations[] | select(.example.picture != false) | .name + ".png"' "$root/catalogue/operations.json" | sort) \
  <(cd "$root/docs/operations/images" && ls) || {
  echo "Pictures are missing, or shown by no example." >&2
  exit 1
}
