#!/usr/bin/env bash
# Installs the dependencies, builds the demo application in release mode and
# starts it over the sample sales database: the window when there is a
# display; otherwise it renders the window into a PNG file and prints the
# SQL of its query, the first rows and the row count. Arguments go to the
# demo (for example --query examples/data/sales-by-category.qry).
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset release >/dev/null
cmake --build --preset release --target ts4demo
demo=./build/release/examples/demo/ts4demo

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$demo" "$@"
fi
# Qt keeps its runtime files there; a root shell on a server often has none.
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-/tmp/runtime-$(id -u)}"
mkdir -p -m 700 "$XDG_RUNTIME_DIR"
"$demo" --screenshot build/release/ts4demo.png "$@"
echo "No display here: the window is rendered in build/release/ts4demo.png."
echo "What its query returns (ts4demo --run):"
echo
"$demo" --run "$@"
