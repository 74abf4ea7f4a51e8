#!/usr/bin/env bash
# wine-run.sh PROGRAM [ARGUMENT...]: runs a Windows program under Wine and ends with its exit code.
# wine-run.sh --prepare TREE: makes a build tree ready for that beforehand.
#
# Every run has a Wine prefix of its own, so that programs neither see each other's registry and files nor
# anything of the user's. It is a copy by hard links (some 0.03 s) of a template in the program's build tree,
# which the first run creates (some 10 s). Wine rewrites its registry files in place; those are real copies.
# Programs of a 32-bit build tree run under the 32-bit Wine of wine32.sh.
set -eu

export LC_ALL=C.UTF-8 TZ=UTC WINEDEBUG=-all
unset DISPLAY WAYLAND_DISPLAY
here=$(realpath "$(dirname "$0")")
wine=(wine) wineserver=(wineserver)

createTemplate() {
  local making=$template.making
  rm -rf "$template" "$making"
  export WINEPREFIX=$making
  WINEDLLOVERRIDES="mscoree,mshtml=" "${wine[@]}" wineboot -i
  # Windows and message boxes work without a display; a crash ends the program instead of asking.
  "${wine[@]}" reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f
  "${wine[@]}" reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f
  timeout 20 "${wineserver[@]}" -w || "${wineserver[@]}" -k || true
  # The user's folders are links into the real home at first.
  find "$making/drive_c/users" -type l | while read -r link; do
    rm "$link"
    mkdir "$link"
  done
  echo "$version" >"$making/wine-version"
  mv "$making" "$template"
}

# Ends all that runs in the prefix, also what its server has lost sight of: a program that hangs in its end.
cleanUp() {
  local environment
  WINEPREFIX=$prefix "${wineserver[@]}" -k || true
  for environment in $(grep -lszxF "WINEPREFIX=$prefix" /proc/[0-9]*/environ); do
    kill -KILL "$(basename "$(dirname "$environment")")" 2>/dev/null || true
  done
  rm -rf "$prefix" || { sleep 1 && rm -rf "$prefix"; }
}

if [ "$1" = --prepare ]; then
  program=
  tree=$(realpath "$2")
else
  program=$(realpath "$1")
  shift
  tree=$(dirname "$program")
  until [ -f "$tree/CMakeCache.txt" ]; do
    [ "$tree" != / ] || { echo "wine-run.sh: $program lies in no build tree" >&2; exit 1; }
    tree=$(dirname "$tree")
  done
fi

template=$tree/wine-template
exec 9>"$tree/wine.lock"
flock 9
if grep -q '^CMAKE_TOOLCHAIN_FILE.*mingw-i686' "$tree/CMakeCache.txt"; then
  "$here/wine32.sh" --prepare "$tree" >"$tree/wine32.log" 2>&1 9>&- ||
    { echo "wine-run.sh: no 32-bit Wine could be had, see $tree/wine32.log" >&2; exit 1; }
  wine=("$here/wine32.sh" "$tree" wine) wineserver=("$here/wine32.sh" "$tree" wineserver)
fi
version=$("${wine[@]}" --version 9>&-) || { echo "wine-run.sh: ${wine[*]} does not run here" >&2; exit 1; }
if [ "$(cat "$template/wine-version" 2>/dev/null)" != "$version" ]; then
  createTemplate </dev/null >"$tree/wine-template.log" 2>&1 9>&- ||
    { echo "wine-run.sh: no Wine prefix could be made, see $tree/wine-template.log" >&2; exit 1; }
fi
exec 9>&-
[ -n "$program" ] || exit 0

prefix=$(mktemp -d "$tree/wine-prefix.XXXXXX")
trap cleanUp EXIT
trap 'exit 143' TERM INT HUP
cp -al "$template/." "$prefix/"
for registry in "$template"/*.reg; do
  cp --remove-destination "$registry" "$prefix/"
done

# In the background, so that a signal ends the program with its whole prefix.
WINEPREFIX=$prefix "${wine[@]}" "$program" "$@" <&0 &
code=0
wait $! || code=$?
exit $code
