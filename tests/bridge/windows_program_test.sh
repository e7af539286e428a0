#!/usr/bin/env bash
# The Windows program says the same as the native one, byte for byte, and imports nothing but Windows' own libraries:
# windows_program_test.sh NATIVE_PROGRAM
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
native=$1
windows="$root/build/windows/bridge/vek-mcp.exe"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

complain() {
  echo "$*" >&2
  exit 1
}

# Nothing answers on port 1; a letter beyond ASCII and a control character must come through whole.
cat >"$scratch/lines" <<'LINES'
{"jsonrpc":"2.0","id":"Ω \u001a","method":"initialize","params":{"protocolVersion":"2025-06-18","capabilities":{}}}
{"jsonrpc":"2.0","method":"notifications/initialized"}
{"jsonrpc":"2.0","id":2,"method":"tools/list"}
LINES
call='{"jsonrpc":"2.0","id":3,"method":"tools/call","params":{"name":"api_document_info"}}'
printf '%s\n' "$call" >>"$scratch/lines"

"$native" --address 127.0.0.1:1 <"$scratch/lines" >"$scratch/native" 2>"$scratch/said"
"$root/cmake/wine.sh" "$windows" --address 127.0.0.1:1 <"$scratch/lines" >"$scratch/windows" 2>"$scratch/said"
cmp "$scratch/native" "$scratch/windows" || complain "the Windows program answers otherwise"
[ "$(wc -l <"$scratch/windows")" = 3 ] || complain "there are not three answers"
[ "$(sed -n 2p "$scratch/windows" | jq '.result.tools | length')" = 82 ] || complain "there are not 82 tools"
sed -n 3p "$scratch/windows" | grep -q 'nothing answers on 127.0.0.1:1' || complain "the missing add-in is not told"
grep -q 'asked at 127.0.0.1:1' "$scratch/said" || complain "the address is not told"

imports=$(x86_64-w64-mingw32-objdump -p "$windows" | sed -nE 's/^\tDLL Name: (.*)$/\1/p')
foreign=$(grep -viE '^(kernel32|msvcrt|ws2_32)\.dll$' <<<"$imports") || true
[ -z "$foreign" ] || complain "the Windows program imports $foreign"
