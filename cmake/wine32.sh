#!/usr/bin/env bash
# wine32.sh --prepare TREE: gets a 32-bit Wine into TREE/wine32, some 150 MB from Debian's archive.
# wine32.sh TREE wine|wineserver [ARGUMENT...]: runs it.
#
# For 64-bit systems, on which 32-bit packages cannot always be installed beside the others: the packages are
# unpacked into a folder of their own, in which Wine then runs as in a root directory, with all other folders
# of the system at their places. Needs to be root. Changes nothing outside TREE.
set -eu

prepare() {
  local state=$tree/wine32.state making=$tree/wine32.making package
  [ "$(id -u)" -eq 0 ] || { echo "wine32.sh: only root can run a 32-bit Wine here" >&2; exit 1; }
  rm -rf "$state" "$making"
  mkdir -p "$state/lists/partial" "$state/cache/archives/partial" "$making"
  : >"$state/status"
  printf 'Types: deb\nURIs: %s\nSuites: %s\nComponents: main\n%s\n' "${DEBIAN_ARCHIVE:-http://deb.debian.org/debian}" \
    "$(. /etc/os-release && echo "$VERSION_CODENAME")" \
    'Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg' >"$state/archive.sources"
  local options=(-q -o "Dir::State::lists=$state/lists" -o "Dir::State::status=$state/status"
    -o "Dir::Cache=$state/cache" -o "Dir::Etc::sourcelist=$state/archive.sources" -o Dir::Etc::sourceparts=-
    -o APT::Architecture=amd64 -o APT::Architectures::=amd64 -o APT::Architectures::=i386)
  apt-get "${options[@]}" update
  apt-get "${options[@]}" -y --download-only --no-install-recommends install wine32:i386
  for package in "$state"/cache/archives/*_i386.deb "$state"/cache/archives/*_all.deb; do
    dpkg -x "$package" "$making"
  done
  # What installing the packages would have made.
  cp /usr/lib/x86_64-linux-gnu/wine/i386-windows/zlib1.dll "$making/usr/lib/i386-linux-gnu/wine/i386-windows/"
  rm -rf "$state"
  mv "$making" "$root"
}

# Within mounts of our own: shows the system's other folders inside the root, with the locales and fonts that
# installing would have set up, and goes there.
enter='
  root=$1; shift
  for folder in /* /usr/lib/locale /etc/fonts; do
    case $folder in /usr | /lib* | /bin | /sbin | /etc) continue ;; esac
    [ -d "$folder" ] && [ ! -L "$folder" ] || continue
    mkdir -p "$root$folder"
    mount --rbind "$folder" "$root$folder"
  done
  exec unshare --root="$root" --wd="$PWD" -- "$@"'

if [ "$1" = --prepare ]; then
  tree=$(realpath "$2")
  root=$tree/wine32
  [ -d "$root" ] || prepare
  exit
fi

root=$(realpath "$1")/wine32
case $2 in
  wine) program=/usr/lib/wine/wine ;;
  wineserver) program=/usr/lib/wine/wineserver32 ;;
esac
shift 2
export WINEARCH=win32 WINESERVER=/usr/lib/wine/wineserver32
exec unshare --mount sh -c "$enter" enter "$root" "$program" "$@"
