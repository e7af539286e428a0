#!/usr/bin/env bash
# The add-in imports nothing but Windows' own DLLs and the toolkit, and exports its two entry points.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
listing=$(x86_64-w64-mingw32-objdump -p "$root/build/windows/addin/VekCreoAddin.dll")

imports=$(sed -n 's/^\s*DLL Name: //p' <<<"$listing" | tr '[:upper:]' '[:lower:]' | sort -u)
for import in $imports; do
  case "$import" in
    creobench.dll | kernel32.dll | user32.dll | shell32.dll | ole32.dll | ws2_32.dll | msvcrt.dll | advapi32.dll) ;;
    gdiplus.dll | gdi32.dll | crypt32.dll | shlwapi.dll | winhttp.dll) ;;
    *) echo "VekCreoAddin.dll imports $import" >&2 && exit 1 ;;
  esac
done
grep -q creobench.dll <<<"$imports" || { echo "the toolkit is not among the imports" >&2 && exit 1; }

exports=$(sed -n 's/^\s*\[ *[0-9]*\] \([A-Za-z_]\w*\)$/\1/p' <<<"$listing" | sort | tr '\n' ' ')
[ "$exports" = "user_initialize_plus user_terminate_plus " ] ||
  { echo "the exports are: $exports" >&2 && exit 1; }
