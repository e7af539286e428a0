#!/usr/bin/env bash
# What the README says, done as a newcomer would: each of its commands, the first request with its answer, and the
# clients beside the examples. A command that nobody here knows fails: it must be tried by a test.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
readme=$root/README.md
scratch=$(mktemp -d)
export VEK_SKIP_BUILD=1
bench=

complain() {
  printf '%s\n' "$*" >&2
  [ ! -f "$scratch/said" ] || cat "$scratch/said" >&2
  exit 1
}
clean_up() {
  [ -z "$bench" ] || kill "$bench" 2>/dev/null || true
  rm -rf "$scratch"
}
trap clean_up EXIT

# The code of the README: block N of the named language ("" for none), and all commands without their comments.
block() {
  awk -v language="$1" -v wanted="$2" '
    /^```/ { inside = !inside; if (inside && $0 == "```" language) shown = ++count == wanted; else shown = 0; next }
    shown' "$readme"
}
commands() {
  awk '/^```/ { inside = !inside; shown = inside && $0 == "```"; next } shown' "$readme" |
    sed -E 's/ +#.*//' | grep -E '^(\./|cmake |cpack |curl )'
}

try_job() {
  printf '[["api_document_new_part", {}], ["api_feature_list", {}]]' >"$scratch/my_job.json"
  "$root/run" "$scratch/my_job.json" >"$scratch/said" 2>&1 || complain "./run my_job.json fails"
}

start_serving() {
  mkfifo "$scratch/console"
  "$root/run" serve <"$scratch/console" >"$scratch/said" 2>&1 &
  bench=$!
  exec 3>"$scratch/console"
  for _ in $(seq 120); do
    grep -q '^The add-in answers on' "$scratch/said" && return
    sleep 0.5
  done
  complain "./run serve does not come up"
}

# The README's first request, to the letter, must give the entries that the README shows.
try_first_request() {
  local request
  request=$(block '' 3 | sed 's/ | jq$//')
  [[ $request == curl*api_feature_extrude* ]] || complain "the first request is not where it was: $request"
  (cd "$root" && bash -c "$request") >"$scratch/answer" 2>"$scratch/said" || complain "the first request fails"
  block json 1 | grep -v '^ *\.\.\.$' | tr -d '\n' | sed -E 's/,( *\})/\1/g' |
    jq '.results | .[].message |= gsub("[0-9]{5,}"; "N")
        | .api_document_new_part.data |= map_values(gsub("[0-9]{5,}"; "N"))' >"$scratch/shown"
  jq '.results | .[].message |= gsub("[0-9]{5,}"; "N")
      | .api_document_new_part.data |= map_values(gsub("[0-9]{5,}"; "N"))
      | {api_document_new_part, api_feature_extrude}' "$scratch/answer" >"$scratch/given"
  diff "$scratch/shown" "$scratch/given" >"$scratch/said" || complain "the README shows another answer"
  echo tree >&3
  echo menus >&3
}

try_clients() {
  local program
  mcs -langversion:5 -r:System.Net.Http -r:System.Runtime.Serialization -out:"$scratch/make_plate.exe" \
    "$root/examples/clients/make_plate.cs" >"$scratch/said" 2>&1 || complain "the C# client can't be compiled"
  for program in "bash $root/examples/clients/make_plate.sh" "python3 $root/examples/clients/make_plate.py" \
    "mono $scratch/make_plate.exe"; do
    sleep 1 # each names its sketch by the second
    $program >"$scratch/said" 2>&1 || complain "$program fails"
    grep -q '^volume 29.4867 cm³, meant 29.4867 cm³' "$scratch/said" || complain "$program makes another plate"
    $program http://localhost:4999 >"$scratch/said" 2>&1 && complain "$program succeeds with nobody there"
    grep -q '^Nothing answers on http://localhost:4999' "$scratch/said" || complain "$program does not say what is wrong"
  done
}

while IFS= read -r command; do
  case "$command" in
    ./run | './test' | ./run\ package) ;; # endtoend.jobs, this run, package.installer
    ./test\ -R\ *)
      (cd "$root/build/tests" && ctest -N ${command#./test }) | grep -q 'Total Tests: [1-9]' || complain "$command finds nothing"
      ;;
    ./run\ examples/*)
      grep -qF "${command#./run }" "$root/tests/endtoend/jobs_test.sh" || complain "no test runs $command"
      ;;
    ./run\ my_job.json) try_job ;;
    ./run\ serve) start_serving ;;
    ./run\ --help)
      "$root/run" --help | grep -q '^./run sweep' || complain "./run --help lists nothing"
      ;;
    curl*) try_first_request ;;
    cmake\ --preset\ creo*) jq -e '.configurePresets[] | select(.name == "creo")' "$root/CMakePresets.json" >/dev/null ;;
    cmake\ --build\ --preset\ creo) jq -e '.buildPresets[] | select(.name == "creo")' "$root/CMakePresets.json" >/dev/null ;;
    cpack\ --config\ build/creo/*) ;; # as package.installer does with the other preset
    *) complain "nobody tries this command: $command" ;;
  esac
done < <(commands)
[ -n "$bench" ] || complain "the README does not start the bench"
try_clients
echo quit >&3
exec 3>&-
wait "$bench" || complain "the bench ends with $?"
bench=
