#!/usr/bin/env bash
# A throwaway PostgreSQL 15 server for the tests of the SQL gateway kinds.
#
#   pg-test-cluster.sh start DIR   initializes and starts a server below DIR (created if missing,
#                                  best short, e.g. from mktemp -d) and writes DIR/env
#   pg-test-cluster.sh stop DIR    stops it and removes DIR
#
# DIR/env exports FENDRIX_TEST_PG_HOST/PORT/USER/PASSWORD/DB and ODBCSYSINI, a private driver
# list whose psqlODBC entries keep their communication log off (else every connection leaves
# a log file behind). The server listens on 127.0.0.1 only, on a free port, with fsync off.
set -euo pipefail

pg_bin=${FENDRIX_PG_BIN:-/usr/lib/postgresql/15/bin}
action=${1:-}
dir=${2:-}
[ -n "$action" ] && [ -n "$dir" ] || { echo "usage: $0 start|stop DIR" >&2; exit 2; }

# initdb refuses to run as root: the server then belongs to the postgres account.
as_owner() {
  if [ "$(id -u)" -eq 0 ]; then
    runuser -u postgres -- "$@"
  else
    "$@"
  fi
}

port_is_free() {
  ! (exec 3<>"/dev/tcp/127.0.0.1/$1") 2>/dev/null
}

start() {
  [ -x "$pg_bin/initdb" ] || { echo "PostgreSQL binaries not found in $pg_bin" >&2; exit 1; }
  mkdir -p "$dir/data" "$dir/odbc"
  chmod 755 "$dir"
  local password
  password=$(od -An -N12 -tx1 /dev/urandom | tr -d ' \n')
  printf '%s\n' "$password" >"$dir/pwfile"
  if [ "$(id -u)" -eq 0 ]; then
    chown postgres: "$dir" "$dir/data" "$dir/pwfile"
  fi
  chmod 700 "$dir/data"
  chmod 600 "$dir/pwfile"

  as_owner "$pg_bin/initdb" -D "$dir/data" -U fendrix --pwfile="$dir/pwfile" -E UTF8 --locale=C.UTF-8 \
    --auth-local=trust --auth-host=scram-sha-256 >"$dir/initdb.log" 2>&1 \
    || { cat "$dir/initdb.log" >&2; exit 1; }
  rm -f "$dir/pwfile"

  # Another run may take a port between the check and the start: try a few.
  local port started=0
  for _ in 1 2 3 4 5 6 7 8 9 10; do
    port=$((20000 + RANDOM % 20000))
    port_is_free "$port" || continue
    if as_owner "$pg_bin/pg_ctl" -D "$dir/data" -l "$dir/server.log" -w -t 30 \
        -o "-c listen_addresses=127.0.0.1 -p $port -k $dir -c fsync=off -c synchronous_commit=off -c full_page_writes=off" \
        start >/dev/null; then
      started=1
      break
    fi
  done
  [ "$started" -eq 1 ] || { cat "$dir/server.log" >&2 || true; exit 1; }

  as_owner "$pg_bin/psql" -h "$dir" -p "$port" -U fendrix -d postgres -v ON_ERROR_STOP=1 -q \
    -c "CREATE DATABASE fendrix_test" >/dev/null

  local drivers=/usr/lib/x86_64-linux-gnu/odbc
  [ -d "$drivers" ] || drivers=$(dirname "$(find /usr/lib -name psqlodbcw.so -print -quit 2>/dev/null)")
  cat >"$dir/odbc/odbcinst.ini" <<EOF
[PostgreSQL Unicode]
Description=PostgreSQL ODBC driver (Unicode version)
Driver=$drivers/psqlodbcw.so
Debug=0
CommLog=0

[PostgreSQL ANSI]
Description=PostgreSQL ODBC driver (ANSI version)
Driver=$drivers/psqlodbca.so
Debug=0
CommLog=0

[SQLite3]
Description=SQLite3 ODBC Driver
Driver=$drivers/libsqlite3odbc.so
EOF
  : >"$dir/odbc/odbc.ini"

  cat >"$dir/env" <<EOF
export FENDRIX_TEST_PG_HOST=127.0.0.1
export FENDRIX_TEST_PG_PORT=$port
export FENDRIX_TEST_PG_USER=fendrix
export FENDRIX_TEST_PG_PASSWORD=$password
export FENDRIX_TEST_PG_DB=fendrix_test
export ODBCSYSINI=$dir/odbc
EOF
  echo "PostgreSQL test server on 127.0.0.1:$port (facts in $dir/env)"
}

stop() {
  if [ -f "$dir/data/postmaster.pid" ]; then
    as_owner "$pg_bin/pg_ctl" -D "$dir/data" -m immediate -w stop >/dev/null 2>&1 || true
  fi
  rm -rf "$dir"
}

case "$action" in
  start) start ;;
  stop) stop ;;
  *) echo "usage: $0 start|stop DIR" >&2; exit 2 ;;
esac
