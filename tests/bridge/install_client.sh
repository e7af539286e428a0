#!/usr/bin/env bash
# Puts the protocol's client library and a validator of interface descriptions, in the versions that the lock file names,
# and the tests that use them into a folder:
# install_client.sh FOLDER
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
folder=$1

mkdir -p "$folder"
cp "$here"/*.mjs "$here"/../catalogue/*.mjs "$folder/"
# What is there already is as the lock file says when that has not changed since.
if cmp -s "$here/package-lock.json" "$folder/package-lock.json" && [ -f "$folder/installed" ]; then
  exit 0
fi
rm -f "$folder/installed"
cp "$here/package.json" "$here/package-lock.json" "$folder/"
cd "$folder"
npm ci --no-audit --no-fund --ignore-scripts
touch installed
