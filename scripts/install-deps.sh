#!/usr/bin/env bash
# Installs what building and testing ts4 needs on Debian 12. Idempotent: when
# every package and the test locale are already there it changes nothing and
# does not touch apt.
set -euo pipefail

packages=(
  cmake ninja-build g++ clang libclang-rt-14-dev clang-format
  libgtest-dev libgmock-dev googletest libbenchmark-dev
  qt6-base-dev libqt6sql6-sqlite libqt6sql6-psql
  sqlite3 libsqlite3-dev
  # The tests start a throw-away server of their own (scripts/with-postgres.sh).
  # The package may set up and even start a default cluster on port 5432;
  # nothing here uses it.
  postgresql
  # Two tests check that files and numbers ignore a decimal-comma locale.
  locales
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q '^install ok installed$'; then
    missing+=("$p")
  fi
done

if [ "$(id -u)" -eq 0 ]; then
  sudo=()
else
  sudo=(sudo)
fi

if [ ${#missing[@]} -eq 0 ]; then
  echo "install-deps: all ${#packages[@]} packages present"
else
  echo "install-deps: installing ${missing[*]}"
  "${sudo[@]}" apt-get update -q
  DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

# The German locale those two tests switch to.
if ! locale -a 2>/dev/null | grep -qix 'de_DE.utf8'; then
  echo "install-deps: generating de_DE.UTF-8"
  "${sudo[@]}" sed -i 's/^# *de_DE.UTF-8 UTF-8/de_DE.UTF-8 UTF-8/' /etc/locale.gen
  grep -q '^de_DE.UTF-8 UTF-8' /etc/locale.gen || echo 'de_DE.UTF-8 UTF-8' | "${sudo[@]}" tee -a /etc/locale.gen >/dev/null
  "${sudo[@]}" locale-gen >/dev/null
fi
