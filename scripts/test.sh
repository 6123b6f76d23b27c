#!/usr/bin/env bash
# Installs the dependencies, then builds and runs every test: once with GCC
# and once with Clang, both under AddressSanitizer and
# UndefinedBehaviorSanitizer (each test run next to a throw-away PostgreSQL
# server, see with-postgres.sh), checks the formatting, and runs each fuzz
# target for a short while. Last, builds the sources the way a packager does
# (a plain Release configure, all defaults, tests on) and runs that suite too,
# so that warnings only an optimising build reports cannot creep in.
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
  bash scripts/with-postgres.sh ctest --preset "$preset"
done

echo "== fuzz: a short run of each target"
bash scripts/fuzz.sh 30

echo "== packager build: plain Release, defaults, warnings as errors"
cmake -S . -B build/packager -DCMAKE_BUILD_TYPE=Release -DTS4_WERROR=ON >/dev/null
cmake --build build/packager --parallel "$(nproc)"
bash scripts/with-postgres.sh ctest --test-dir build/packager --output-on-failure -j "$(nproc)" --timeout 600
