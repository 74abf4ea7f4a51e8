#!/usr/bin/env bash
# quietly.sh COMMAND...: runs a command that has nothing to say; fails when it says something.
output=$("$@" 2>&1)
code=$?
[ -z "$output" ] || printf '%s\n' "$output" >&2
[ "$code" -eq 0 ] && [ -z "$output" ]
