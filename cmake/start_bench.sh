#!/usr/bin/env bash
# Starts the built bench with the add-in in it; console on standard input and output. Its working directory, where
# models without a directory of their own are saved, is <bench home>/work. PRO_DIRECTORY, as Creo sets it, names the
# installation with hole charts, templates and texts: the bench's own one unless it is set. CREO_BENCH_HOME tells the
# bench's other programs where to write.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
home=$(realpath -m "${VEK_BENCH_HOME:-$root/build/bench}")
windows_path() { printf 'Z:%s' "${1//\//\\}"; }
export PRO_DIRECTORY="${PRO_DIRECTORY:-$(windows_path "$home/installation")}"
CREO_BENCH_HOME=$(windows_path "$home")
export CREO_BENCH_HOME
exec "$root/cmake/wine.sh" "$root/build/windows/bench/host/creobench.exe" \
  --addin "$(windows_path "${VEK_BENCH_ADDIN:-$home/addin/VekCreoAddin.dll}")" \
  --kernel "${VEK_BENCH_KERNEL:-$root/build/native/bench/kernel/creokernel}" \
  --work "$(windows_path "${VEK_BENCH_WORK:-$home/work}")" "$@"
