#!/usr/bin/env bash
# run-test.sh RESULTS NAME SECONDS COMMAND...: runs one GoogleTest program within a time limit, in a fresh
# folder that is also its ZELORA_HOME. Leaves RESULTS/NAME.log (all it printed) and RESULTS/NAME.result
# (one line: passed, failed and skipped tests, how it ended). Fails unless everything passed.
set -u

results=$1 name=$2 limit=$3
shift 3
mkdir -p "$results"
log=$results/$name.log
rm -f "$log" "$results/$name.result"

home=$(mktemp -d "${TMPDIR:-/tmp}/$name.XXXXXX")
trap 'chmod -R u+rwX "$home"; rm -rf "$home"' EXIT
mkdir "$home/work"
export ZELORA_HOME=$home/home GTEST_COLOR=no LC_ALL=C.UTF-8 TZ=UTC
mkdir "$ZELORA_HOME"
cd "$home/work" || exit 1

timeout -k 10 "$limit" "$@" >"$log.raw" 2>&1 </dev/null
code=$?
tr -d '\r' <"$log.raw" >"$log"
rm -f "$log.raw"

# The number in a line of GoogleTest's closing, known from that of another such program, which a test may have
# run, by the number of tests. Without a closing the program ended early: count what it had done.
total=$(sed -nE 's/^\[=+\] Running ([0-9]+) tests?.*/\1/p' "$log" | head -n 1)
closing() { sed -nE "/^\[=+\] ${total:-0} tests? .* ran/,\$ s/^\[  $1 *\] ([0-9]+) tests?.*/\1/p" "$log" | tail -n 1; }
passed=$(closing PASSED)
failed=$(closing FAILED)
skipped=$(closing SKIPPED)
ended=complete
if [ -z "$passed" ]; then
  passed=$(grep -c '^\[       OK \]' "$log")
  failed=$(($(grep -c '^\[  FAILED  \]' "$log") + 1))
  ended="ended early with exit code $code"
  [ "$code" -ne 124 ] && [ "$code" -ne 137 ] || ended="stopped after $limit s"
elif [ "$code" -ne 0 ] && [ "${failed:-0}" -eq 0 ]; then
  failed=1
  ended="exit code $code after its last test"
fi
echo "$passed ${failed:-0} ${skipped:-0} $ended" >"$results/$name.result"

if [ "${failed:-0}" -ne 0 ]; then
  # Without the tests that passed and what they printed.
  awk '/^\[ RUN      \]/ {held = $0; next}
       /^\[       OK \]/ {held = ""; next}
       held != "" {held = held "\n" $0; if (!/^\[  FAILED  \]|^\[  SKIPPED \]/) next; print held; held = ""; next}
       !/^\[-+\]|^$/ {print}
       END {if (held != "") print held}' "$log"
  echo "$name: $passed passed, $failed failed, $ended"
  exit 1
fi
