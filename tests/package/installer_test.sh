#!/usr/bin/env bash
# installer_test.sh BUILD: the zip and the installer of that Windows build. The installer is run in the bench's Wine, the
# bench loads what it has installed, an upgrade and the uninstaller follow, and nothing must stay behind.
set -euo pipefail
build=$1
root=$(cd "$(dirname "$0")/../.." && pwd)
scratch=$(mktemp -d)
home=$(realpath -m "${VEK_BENCH_HOME:-$root/build/bench}")
drive=$home/prefix/drive_c
netsh=$drive/windows/system32/netsh.exe
key='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\VekCreoAddin'
# Two blanks in a row would be lost on the way through the command line, one is not.
folder='Program Files/Vek test/add-in'
windows_folder='C:\Program Files\Vek test\add-in'
installed=$drive/$folder
bench=

wine() { "$root/cmake/wine.sh" "$@" </dev/null; }
complain() {
  printf '%s\n' "$*" >&2
  exit 1
}
clean_up() {
  [ -z "$bench" ] || kill "$bench" 2>/dev/null || true
  [ ! -f "$scratch/netsh.exe" ] || cp -f "$scratch/netsh.exe" "$netsh"
  rm -rf "$netsh.noted" "$drive/Program Files/Vek test"
  wine reg delete "$key" /f >/dev/null 2>&1 || true
  rm -rf "$scratch"
}
trap clean_up EXIT

# What the firewall is asked for is noted instead of done. Wine would take its own netsh but for the override.
export WINEDLLOVERRIDES="netsh.exe=n"
cp "$netsh" "$scratch/netsh.exe"
rm -f "$netsh" "$netsh.noted"
cp "$build/tests/platform/note_arguments.exe" "$netsh"
firewall_calls() { tr -d '\r' <"$netsh.noted" 2>/dev/null | grep -c "firewall $1 rule" || true; }

(cd "$build" && cpack -B "$scratch/packages") >"$scratch/cpack.log" 2>&1 ||
  complain "the packages can't be made: $(tail -n 20 "$scratch/cpack.log")"
zip=$(echo "$scratch"/packages/*.zip)
installer=$(echo "$scratch"/packages/*.exe)
version=$(sed -n 's/^project(VekCreoAddin VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")
[[ $zip == */VekCreoAddin-$version-bench.zip ]] || complain "the zip is called $zip"

mkdir "$scratch/unpacked"
(cd "$scratch/unpacked" && cmake -E tar xf "$zip")
files_below() { (cd "$1" && find . -type f | sort); }
for file in VekCreoAddin.dll VekAI.Creo.AddinHelper.exe vek-mcp.exe creotk.dat welcome.html text/VekCreoAddin.txt \
  text/resource/findComponent.png docs/install.md docs/operations/README.md licences/VekCreoAddin.txt \
  licences/json-for-modern-cpp.txt; do
  [ -s "$scratch/unpacked/$file" ] || complain "$file is not in the zip"
done
while IFS=: read -r page link; do
  [ -e "$(dirname "$page")/$link" ] || complain "in the package $page leads nowhere: $link"
done < <(grep -roE '\]\([^)# ]+' --include='*.md' "$scratch/unpacked" | sed 's/](//')
for program in VekCreoAddin.dll VekAI.Creo.AddinHelper.exe vek-mcp.exe; do
  strings -el "$scratch/unpacked/$program" | grep -A1 -x ProductVersion | grep -qx "$version" ||
    complain "$program does not show the version $version"
done

# A folder in /D or _? takes no quotes; Wine would add them to an argument with blanks.
# shellcheck disable=SC2086
install() { wine "$installer" /S "$@" /D=$windows_folder; }
# With _? the uninstaller runs in its own folder, and can be waited for; else it would go on as a copy.
# shellcheck disable=SC2086
uninstall() { wine "$windows_folder\\uninstall.exe" /S _?=$windows_folder; }

install || complain "the installer ends with $?"
[ "$(files_below "$scratch/unpacked"; echo ./uninstall.exe)" = "$(files_below "$installed" | grep -v uninstall; echo ./uninstall.exe)" ] ||
  complain "the installer installs other files than the zip holds"
[ -s "$installed/uninstall.exe" ] || complain "there is no uninstaller"
for named in $(sed -n 's/^\(exec_file\|text_dir\) .*add-in\\//p' "$installed/creotk.dat" | tr -d '\r'); do
  [ -e "$installed/$named" ] || complain "creotk.dat names $named, which is not there"
done
[ "$(grep -cF "$windows_folder\\" "$installed/creotk.dat")" = 2 ] || complain "creotk.dat does not name the folder"
wine reg query "$key" /v DisplayVersion | grep -q "$version" || complain "Windows does not list the version"
[ "$(firewall_calls add)" = 1 ] || complain "the firewall rule is not asked for"
grep -q 'action=block protocol=TCP localport=4001' "$netsh.noted" || complain "the firewall rule is another one"

# The installed add-in is what a session loads, and while it does, neither setup touches it.
mkfifo "$scratch/console"
VEK_BENCH_ADDIN="$installed/VekCreoAddin.dll" VEK_BENCH_KERNEL="${VEK_BENCH_KERNEL:-$root/build/native/bench/kernel/creokernel}" \
  "$root/cmake/start_bench.sh" --serve <"$scratch/console" >"$scratch/said" 2>&1 &
bench=$!
exec 3>"$scratch/console"
curl -sS --retry 60 --retry-connrefused --retry-delay 1 --max-time 60 http://localhost:4001/health >"$scratch/health" ||
  complain "the installed add-in does not answer: $(cat "$scratch/said")"
grep -q '"api_feature_extrude"' "$scratch/health" || complain "the installed add-in has no operations"
before=$(files_below "$installed")
install && complain "the installer replaces an add-in that is loaded"
uninstall && complain "the uninstaller removes an add-in that is loaded"
[ "$(files_below "$installed")" = "$before" ] || complain "files are gone under a running session"
echo quit >&3
exec 3>&-
wait "$bench" || complain "the bench with the installed add-in ends with $?"
bench=

# So it is with the bridge, which an assistant holds for as long as it runs.
mkfifo "$scratch/assistant"
"$root/cmake/wine.sh" "$installed/vek-mcp.exe" <"$scratch/assistant" >"$scratch/bridge" 2>&1 &
bridge=$!
exec 4>"$scratch/assistant"
before=$(files_below "$installed")
for _ in $(seq 100); do
  ! grep -q '^vek-mcp' "$scratch/bridge" || break
  sleep 0.2
done
install && complain "the installer replaces a bridge that runs"
uninstall && complain "the uninstaller removes a bridge that runs"
[ "$(files_below "$installed")" = "$before" ] || complain "files are gone under a running bridge"
exec 4>&-
wait "$bridge" || complain "the installed bridge ends with $?"

# An upgrade keeps the administrator's file and drops what the helper had put aside; no firewall rule was asked for.
mkdir "$installed/pending"
touch "$installed/helper.log" "$installed/VekCreoAddin.dll.old-1" "$installed/pending/complete.txt"
echo '\\server\share' >"$installed/update-source.txt"
install /NOFIREWALL || complain "the upgrade ends with $?"
[ "$(cat "$installed/update-source.txt")" = '\\server\share' ] || complain "the upgrade loses update-source.txt"
[ ! -e "$installed/pending" ] && [ ! -e "$installed/VekCreoAddin.dll.old-1" ] || complain "the upgrade keeps leftovers"
[ "$(firewall_calls add) $(firewall_calls delete)" = "1 1" ] || complain "the upgrade treats the firewall rule wrongly"

# What others have put there is theirs.
touch "$installed/text/own.txt"
uninstall || complain "the uninstaller ends with $?"
# Where it runs it can't remove itself.
rm -f "$installed/uninstall.exe"
left=$(cd "$installed" && find . -mindepth 1 | sort | tr '\n' ' ')
[ "$left" = './text ./text/own.txt ' ] || complain "these stay behind: $left"
wine reg query "$key" >/dev/null 2>&1 && complain "Windows still lists the product"
exit 0
