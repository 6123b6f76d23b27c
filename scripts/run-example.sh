#!/usr/bin/env bash
# Installs the dependencies, builds the library in release mode and runs the
# example: a structure of linked tables, their SQL texts and a join path.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset release >/dev/null
cmake --build --preset release --target structure_demo
./build/release/examples/structure_demo/structure_demo
