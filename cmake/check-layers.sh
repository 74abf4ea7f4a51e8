#!/usr/bin/env bash
# Includes run downwards only, and the operating system stays behind the platform seam. Prints each line that
# breaks this and fails when there is one.
set -u
cd "$(dirname "$0")/.." || exit 1

# From the bottom up. Folders of one rank may know each other; host and server sit on the library as a whole and
# reach the classes through the class registry alone.
awk -F'[/:]' '
  BEGIN {
    rank["automation"] = 1; rank["platform"] = 2; rank["foundation"] = 3
    rank["system"] = rank["text"] = rank["files"] = 4
    rank["datalist"] = 5; rank["globalization"] = 6; rank["library"] = 7
    rank["host"] = rank["server"] = 8
  }
  {
    from = $2
    to = $0
    sub(/^[^"]*"/, "", to)
    sub(/\/.*/, "", to)
    if (!(to in rank)) next
    if (rank[to] > rank[from]) { print $0 "   (" to " lies above " from ")"; bad = 1 }
    if (rank[from] == 8 && rank[to] >= 4 && rank[to] <= 6) { print $0 "   (reach classes through the registry)"; bad = 1 }
  }
  END { exit bad }' < <(grep -rnE '^ *# *include *"' src)
code=$?

systems='_WIN32|_WIN64|__MINGW|__linux__|__unix__'
headers='windows\.h|ole|shl|wtypes|winreg|sqlite3|libxml|unistd|fcntl|sys/|pwd|dirent|poll|spawn'
grep -rnE "^ *# *(if|ifdef|ifndef|elif).*($systems)" src tests --include=*.h --include=*.cpp |
  grep -vE '^(src/platform|tests/[a-z]+/(linux|windows))/' | sed 's/$/   (an operating system outside the platform)/' | grep . && code=1
grep -rnE "^ *# *include *<($headers)" src tests |
  grep -vE '^(src/platform/[a-z]+/[^/]*\.cpp|src/server/|tests/[a-z]+/(linux|windows)/)' |
  sed 's/$/   (a system header outside the platform)/' | grep . && code=1
exit $code
