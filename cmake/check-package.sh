#!/usr/bin/env bash
# check-package.sh TREE: unpacks the package that lies in a build tree of the preset windows-x64 and uses it from
# there under Wine: registers the library, runs an example as a script and ends the registration. Says "package
# ok", or what went wrong.
set -eu

tree=$(realpath "$1")
zip=$(echo "$tree"/zelUtilities-*-windows.zip)
cd "$(dirname "$0")/.."
place=$(mktemp -d "$tree/unpacked here.XXXXXX")
trap 'rm -rf "$place"' EXIT
cmake -E chdir "$place" cmake -E tar xf "$zip"
folder=$(echo "$place"/zelUtilities-*)
for expected in x64/zelUtilities.{dll,manifest,tlb} zelUtilities.idl README.md register.cmd unregister.cmd \
  reference/README.md reference/zelNodeList.md examples/settings.{vbs,js,ps1,py,cs,ini} examples/settings_com.cpp; do
  [ -s "$folder/$expected" ] || { echo "$expected is missing in the package"; exit 1; }
done

cat >"$folder/check.bat" <<'BATCH'
@cd /d "%~dp0"
@call register.cmd machine
@cscript //nologo examples\settings.vbs examples\settings.ini copy.ini
@call unregister.cmd machine
@reg query HKCR\zelUtilities.zelNodeList
@if not errorlevel 1 echo still registered
@echo end
BATCH
cmake/wine-run.sh --prepare "$tree"
winName() { printf 'Z:%s' "$(tr / '\\' <<<"$1")"; }
said=$(cmake/wine-run.sh "$tree/wine-template/drive_c/windows/system32/cmd.exe" /c "$(winName "$folder/check.bat")" |
  tr -d '\r' | grep -aE '^(saved|end|.*registered)$' | paste -sd '|')
[ "$said" = "zelUtilities is registered|saved|zelUtilities is no longer registered|end" ] ||
  { echo "the package does not work: $said"; exit 1; }
cmp -s "$folder/examples/settings.ini" "$folder/copy.ini" && { echo "the script changed nothing"; exit 1; }
echo "package ok"
