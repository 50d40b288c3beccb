#!/usr/bin/env bash
# Makes a server of PostgreSQL in a temporary folder, fills a shared archive with ten years of a record
# each 15 minutes of LOGGERS loggers (350,640 records, some 60 MB each), runs server_bench on it and
# takes all of it away again:
#
#   bench/server/run.sh LOGGERS build/release/bin/server_bench [options of the benchmark]
set -euo pipefail
if [ $# -lt 2 ]; then
    echo "usage: bench/server/run.sh LOGGERS PROGRAM [OPTION...]" >&2
    exit 2
fi
loggers=$1
program=$(realpath "$2")
shift 2
here=$(dirname "$(realpath "$0")")
programs=$(dirname "$(find /usr/lib/postgresql -path '*/bin/initdb' | sort -V | tail -1)")
folder=$(mktemp -d "${TMPDIR:-/tmp}/orvia-figures-XXXXXX")
# The server refuses to be run by root.
as=()
if [ "$(id -u)" -eq 0 ]; then
    as=(setpriv --reuid=postgres --regid=postgres --clear-groups)
    chown postgres "$folder"
    chmod 755 "$folder"
fi
cd "$folder"
clean() {
    "${as[@]}" "$programs/pg_ctl" -D "$folder/data" -m immediate stop >/dev/null || true
    rm -rf "$folder"
}
trap clean EXIT
"${as[@]}" "$programs/initdb" -D data -A trust -U administrator -E UTF8 --locale=C >/dev/null
"${as[@]}" "$programs/pg_ctl" -D data -w -l "$folder/log" -o "-k $folder -c listen_addresses='' \
    -c shared_buffers=1GB -c max_wal_size=8GB" start >/dev/null
ask() { psql --quiet --no-psqlrc --host="$folder" --username=administrator "$@"; }
ask --dbname=postgres --command="CREATE DATABASE orvia"
ask --dbname=orvia --file="$here/../../data/sql/archive.sql"
ask --dbname=orvia --command="CREATE ROLE console LOGIN IN ROLE orvia_file"
SECONDS=0
ask --dbname=orvia --variable=loggers="$loggers" --file="$here/fill.sql"
echo "$loggers loggers filled in $SECONDS s, $(ask --dbname=orvia --tuples-only --no-align \
    --command="SELECT pg_size_pretty(pg_database_size('orvia'))")"
# The rows to copy are written there by whoever runs this.
chmod 777 "$folder"
ORVIA_SERVER="$folder" "$program" "$@"
