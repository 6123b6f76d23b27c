#!/usr/bin/env bash
# Installs the dependencies, builds everything in release mode, prints the SQL
# of a saved example query with the ts4 command-line tool, then the structure
# ts4 makes from the sample SQLite database the build made.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset release >/dev/null
cmake --build --preset release
./build/release/tools/ts4/ts4 sql examples/data/sales.str examples/data/big-orders.qry
echo
./build/release/tools/ts4/ts4 import sqlite:build/release/examples/data/sales.db
