# Sourced by ./run and ./test.

# requirePackages PACKAGE...: installs the Debian packages that are missing, or says how to and ends the script.
requirePackages() {
  command -v dpkg-query >/dev/null || return 0  # another system: the build says what it misses
  local package missing=()
  for package in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0

  local root=()
  if [ "$(id -u)" -ne 0 ]; then
    root=(sudo -n)
    sudo -n true 2>/dev/null || sayWhatToInstall "${missing[@]}"
  fi
  echo "Installing ${missing[*]}"
  "${root[@]}" apt-get update -q || true  # an old list may still do
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}" ||
    sayWhatToInstall "${missing[@]}"
}

sayWhatToInstall() {
  printf 'Some packages are missing. Type:\n  sudo apt-get update && sudo apt-get install -y --no-install-recommends %s\n' "$*" >&2
  exit 1
}

# What every build needs, and what the tests need beyond it.
buildPackages=(cmake ninja-build g++ libsqlite3-dev libxml2-dev)
nativeTestPackages=(googletest)
windowsTestPackages=(googletest g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix wine wine64 wine64-tools libwine-dev)

# configure PRESET: makes the build folder unless it is there and up to date; Ninja sees to the rest.
configure() {
  local tree=build/$1
  [ "$tree/build.ninja" -nt CMakePresets.json ] || cmake --preset "$1" || exit 1
}
