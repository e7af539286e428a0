# Doing jobs on the bench over HTTP. Sourced by `run`.
#
# A job is a JSON array of ["operation", {arguments}] steps. The results of a batch are keyed by name, and nothing of a
# batch runs behind a close, so a name that comes again and a step behind a close start a new batch; so does one with
# which the request would no longer fit into what the server reads.

address=http://localhost:4001
request_limit=262143
header_room=1024
if [ -t 1 ] || [ -n "${FORCE_COLOR:-}" ]; then
  red=$'\e[31m' dim=$'\e[2m' plain=$'\e[0m'
else
  red='' dim='' plain=''
fi

port_must_be_free() {
  if (exec 3<>/dev/tcp/127.0.0.1/4001) 2>/dev/null; then
    fail "Port 4001 is in use: another bench, or Creo's add-in, is running. Stop it first."
  fi
}

# Says what is wrong with a job file, with the number of the step; nothing when it is sound.
job_mistake() {
  jq -r 'if type != "array" then "it is no array of steps"
         elif length == 0 then "it has no steps"
         else [to_entries[]
               | select((.value | type) != "array" or (.value | length) != 2
                        or (.value[0] | type) != "string" or (.value[1] | type) != "object")
               | "step \(.key + 1) is not [\"operation\", {arguments}]: \(.value | tojson | .[0:120])"][0] // empty
         end' "$1"
}

# The batches of a job, one request body a line.
job_batches() {
  jq -c --argjson room $((request_limit - header_room)) '
    def size: tojson | utf8bytelength;
    reduce .[] as [$name, $arguments] ([];
      if length == 0 or (.[-1].operations | has($name)) or (.[-1].operations | has("api_document_close"))
         or (.[-1] | size) + ($name | size) + ($arguments | size) + 2 > $room
      then . + [{operations: {($name): $arguments}}]
      else .[-1].operations += {($name): $arguments}
      end) | .[]' "$1"
}

# Posts one batch and prints its steps in their order; false when one of them failed.
post_batch() {
  local body=$1 answer status failures=0 success name message
  answer=$(curl -sS --max-time 180 -w '\n%{http_code}' -H 'Content-Type: application/json' \
    --data-binary @- "$address/execute" <<<"$body") || {
    say "${red}The bench did not answer.${plain}"
    return 1
  }
  status=${answer##*$'\n'}
  answer=${answer%$'\n'*}
  if [ "$status" != 200 ]; then
    say "${red}The bench answered with status $status: $(jq -r '.error? // .' <<<"$answer" 2>/dev/null || say "$answer")${plain}"
    return 1
  fi
  while IFS=$'\t' read -r success name message; do
    if [ "$success" = true ]; then
      say "  $name  ${dim}$message${plain}"
    else
      say "  ${red}$name  $message${plain}"
      failures=$((failures + 1))
    fi
  done < <(jq -r --argjson answer "$answer" '.operations | keys_unsorted[] as $name
    | ($answer.results[$name] // {success: false, message: "The bench gave no result."})
    | [(.success | tostring), $name, (.message | gsub("[\\t\\n\\r]"; " "))] | join("\t")' <<<"$body")
  [ "$failures" -eq 0 ]
}

# Sends a line to the bench's console and prints the answer.
ask_console() {
  local line
  say "$1" >&"$console"
  while IFS= read -r -t 60 line <&"$answers"; do
    line=${line%$'\r'}
    case "$line" in
      ok) return 0 ;;
      error:*) say "$line" && return 1 ;;
      *) say "  $line" ;;
    esac
  done
  return 1
}

# Draws the current model into out/ if it is a drawing.
plot_drawing() {
  local name
  name=$(ask_console models | sed -nE 's/^  drawing (.*), window [0-9]+, current(,.*)?$/\1/p')
  [ -z "$name" ] || ask_console "plot O:\\${name,,}.svg"
}

start_bench() {
  local line
  coproc BENCH { exec "$root/cmake/start_bench.sh" 2>&1; }
  bench_pid=$BENCH_PID
  # Copies of the coprocess's ends, so that its console is closed when ours is.
  exec {answers}<&"${BENCH[0]}" {console}>&"${BENCH[1]}"
  eval "exec ${BENCH[1]}>&-"
  while IFS= read -r -t 120 line <&"$answers"; do
    case "$line" in
      *ready*) break ;;
      *) say "$line" ;;
    esac
  done
  curl -sS --max-time 10 -o /dev/null "$address/health" ||
    fail "The bench is up but its add-in does not answer; see $bench_home/drive_d/VekCreoAddin.log."
}

stop_bench() {
  say quit >&"$console" 2>/dev/null || true
  exec {console}>&-
  cat <&"$answers" >/dev/null || true
  wait "$bench_pid" 2>/dev/null || true
}

run_jobs() {
  local file mistake body failed=0
  for file in "$@"; do
    [ -r "$file" ] || fail "$file can't be read."
    mistake=$(job_mistake "$file" 2>&1) || fail "$file is not JSON: ${mistake#jq: error*: }"
    [ -z "$mistake" ] || fail "$file is not a job: $mistake."
  done
  port_must_be_free
  find "$out_dir" -mindepth 1 -delete
  start_bench
  trap stop_bench EXIT
  for file in "$@"; do
    say "${file#"$root"/}"
    while IFS= read -r body; do
      if [ "$(printf %s "$body" | wc -c)" -gt $((request_limit - header_room)) ]; then
        say "  ${red}A step is larger than the $request_limit bytes that the add-in reads.${plain}"
        failed=1
        continue
      fi
      post_batch "$body" || failed=1
    done < <(job_batches "$file")
    plot_drawing || failed=1
  done
  say "Models in session"
  ask_console models || failed=1
  trap - EXIT
  stop_bench
  [ -z "$(ls -A "$out_dir")" ] || { say "Written to out/" && (cd "$out_dir" && ls -1 | sed 's/^/  /'); }
  return "$failed"
}
