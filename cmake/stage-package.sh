#!/usr/bin/env bash
# stage-package.sh FOLDER TREE64 [TREE32]: lays down in a fresh FOLDER what the package for Windows clients holds
# beside the reference. The trees are build trees with the library in bin/.
set -eu

folder=$1 tree64=$2 tree32=${3:-}
cd "$(dirname "$0")/.."

library() {  # library NAME TREE
  mkdir -p "$folder/$1"
  cp "$2/bin/zelUtilities.dll" "$2/bin/zelUtilities.manifest" "$2/generated/zelUtilities.tlb" "$folder/$1"
}

# Text files for Windows have its line ends, wherever they were checked out.
texts() {  # texts DESTINATION FILE...
  local destination=$1 text
  shift
  for text in "$@"; do sed 's/\r*$/\r/' "$text" >"$folder/$destination/$(basename "$text")"; done
}

rm -rf "$folder"
mkdir -p "$folder/examples"
library x64 "$tree64"
[ -z "$tree32" ] || library x86 "$tree32"
texts . package/* src/server/zelUtilities.idl
texts examples examples/settings.{vbs,js,ps1,py,cs} examples/settings_com.cpp examples/settings-com.exe.manifest
cp examples/settings.ini "$folder/examples"
