#!/usr/bin/env bash
# Usage: with-postgres.sh COMMAND [ARGS...]
#
# Starts a throw-away PostgreSQL server on a free port of 127.0.0.1, loads the
# sample sales database into it, runs COMMAND with TS4_PG_URL pointing at that
# database, then stops the server and deletes its files, whatever COMMAND did.
# Exits with COMMAND's exit status.
#
# On Ctrl-C the command and this script stop together and the server goes
# with them; a signal sent to this script alone is handled once COMMAND ends.
set -euo pipefail

if [ $# -eq 0 ]; then
  echo "usage: $0 COMMAND [ARGS...]" >&2
  exit 2
fi

repo=$(cd "$(dirname "$0")/.." && pwd)
sample_sql="$repo/examples/data/sales.sql"
superuser=ts4
database=ts4_sales

# The newest server installed by Debian's postgresql package.
pg_bin=
for dir in /usr/lib/postgresql/*/bin; do
  [ -x "$dir/pg_ctl" ] && pg_bin=$dir
done
if [ -z "$pg_bin" ]; then
  echo "with-postgres: no PostgreSQL server under /usr/lib/postgresql (run scripts/install-deps.sh)" >&2
  exit 1
fi

# initdb and postgres refuse to run as root: then they run as the package's
# system user, which must own the data folder.
pg_dir=$(mktemp -d "${TMPDIR:-/tmp}/ts4-pg.XXXXXX")
if [ "$(id -u)" -eq 0 ]; then
  chown postgres: "$pg_dir"
  as_owner=(runuser -u postgres --)
else
  as_owner=()
fi

# Runs a server program as the data folder's owner, from a folder it may enter.
pg_tool() {
  (cd "$pg_dir" && "${as_owner[@]}" "$pg_bin/$1" "${@:2}")
}

cleanup() {
  # Also after a failed start: the server may be up, only late.
  if [ -f "$pg_dir/data/postmaster.pid" ]; then
    pg_tool pg_ctl -D "$pg_dir/data" -m fast stop >/dev/null || true
  fi
  rm -rf "$pg_dir"
}
trap cleanup EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# A throw-away cluster need not survive a crash: skip the disk syncs.
pg_tool initdb -D "$pg_dir/data" -U "$superuser" --auth=trust \
  --encoding=UTF8 --no-locale --no-sync >"$pg_dir/initdb.log" 2>&1 || {
  cat "$pg_dir/initdb.log" >&2
  exit 1
}

# True when something listens on the port (bash's /dev/tcp: a bare machine
# has neither python nor ss).
port_in_use() {
  (exec 3<>"/dev/tcp/127.0.0.1/$1") 2>/dev/null
}

# Another program may take the port between the check and the start: then
# the server cannot bind and we try another one.
port=
for _ in 1 2 3 4 5; do
  candidate=$((20000 + (RANDOM * 32768 + RANDOM) % 40000))
  port_in_use "$candidate" && continue
  if pg_tool pg_ctl -w -D "$pg_dir/data" -l "$pg_dir/server.log" \
    -o "-p $candidate -c listen_addresses=127.0.0.1 -c fsync=off -k $pg_dir" \
    start >"$pg_dir/pg_ctl.log" 2>&1; then
    port=$candidate
    break
  fi
  grep -q 'could not bind\|already in use' "$pg_dir/server.log" 2>/dev/null || break
done
if [ -z "$port" ]; then
  echo "with-postgres: the server did not start:" >&2
  cat "$pg_dir/pg_ctl.log" "$pg_dir/server.log" >&2 2>/dev/null || true
  exit 1
fi

export TS4_PG_URL="postgresql://$superuser@127.0.0.1:$port/$database"
"$pg_bin/psql" -q -v ON_ERROR_STOP=1 "postgresql://$superuser@127.0.0.1:$port/postgres" \
  -c "create database $database"
"$pg_bin/psql" -q -v ON_ERROR_STOP=1 "$TS4_PG_URL" -f "$sample_sql" >/dev/null
echo "with-postgres: PostgreSQL $(basename "$(dirname "$pg_bin")") on 127.0.0.1:$port, TS4_PG_URL=$TS4_PG_URL"

status=0
"$@" || status=$?
exit "$status"
