#!/usr/bin/env bash
# Installs the dependencies, then builds and runs every test: once with GCC
# and once with Clang, both under AddressSanitizer and
# UndefinedBehaviorSanitizer, and checks the formatting.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh

echo "== formatting"
git ls-files -- '*.cpp' '*.h' | xargs clang-format --dry-run --Werror

for preset in test clang; do
  echo "== $preset: configure and build"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset"
  echo "== $preset: tests"
  ctest --preset "$preset"
done
