#!/usr/bin/env bash
# check-dll.sh OBJDUMP DLL: the library exports its five entry points under their plain names and imports nothing but
# system libraries, so that one file is all there is to copy.
set -u
objdump=$1 dll=$2

dump=$("$objdump" -p "$dll") || exit 1
exports=$(sed -nE '/\[Ordinal\/Name Pointer\] Table/,/^$/s/^[[:space:]]*\[ *[0-9]+\] //p' <<<"$dump" | sort | tr '\n' ' ')
expected="DllCanUnloadNow DllGetClassObject DllInstall DllRegisterServer DllUnregisterServer "
if [ "$exports" != "$expected" ]; then
  echo "$dll exports $exports" >&2
  exit 1
fi

foreign=$(sed -nE 's/^[[:space:]]*DLL Name: //p' <<<"$dump" |
  grep -viE '^(advapi32|gdi32|kernel32|msvcrt|ole32|oleaut32|user32|shell32|mpr|comdlg32)\.dll$')
if [ -n "$foreign" ]; then
  echo "$dll imports $foreign" >&2
  exit 1
fi
