#!/usr/bin/env bash
# cmake/tidy.sh [FILE...]: checks sources with clang-format and clang-tidy; without files, all of src/ that is
# built natively. Needs the packages clang-tidy and clang-format. Changes nothing; fails when it finds something.
set -u
cd "$(dirname "$0")/.." || exit 1
. cmake/packages.sh
requirePackages "${buildPackages[@]}" clang-tidy clang-format
cmake --preset native >/dev/null || exit 1  # a compile database of today

if [ $# -eq 0 ]; then
  mapfile -t sources < <(git ls-files 'src/*.cpp' ':!src/platform/windows' ':!src/server')
  mapfile -t all < <(git ls-files '*.h' '*.cpp')
else
  sources=("$@") all=("$@")
fi

# clang reads libstdc++ 12 with a compile database made for g++; its unknown warnings are none of ours.
code=0
clang-format --dry-run -Werror "${all[@]}" || code=1
printf '%s\0' "${sources[@]}" |
  xargs -0 -r -n 1 -P "$(nproc)" clang-tidy --quiet -p build/native --extra-arg=-Wno-unknown-warning-option || code=1
exit $code
