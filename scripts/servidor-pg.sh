# Sourced by the test and benchmark scripts: starts a private PostgreSQL server for the run on a
# Unix socket only, stops and removes it when the script ends, and exports KORVEN_TEST_PG.
pgbin=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1)
pgdir=$(mktemp -d /tmp/korven-pg.XXXXXX)
puerto=$(( 56000 + RANDOM % 2000 ))
como=()
if [ "$(id -u)" -eq 0 ]; then
    chown postgres "$pgdir"
    como=(runuser -u postgres --)
fi
parar() {
    "${como[@]}" "$pgbin/pg_ctl" -D "$pgdir/data" -m immediate stop >/dev/null 2>&1 || true
    rm -rf "$pgdir"
}
trap parar EXIT
"${como[@]}" "$pgbin/initdb" -D "$pgdir/data" -U korven --auth=trust -E UTF8 >/dev/null
"${como[@]}" "$pgbin/pg_ctl" -D "$pgdir/data" -l "$pgdir/log" -w \
    -o "-k $pgdir -p $puerto -c listen_addresses='' -c fsync=off -c max_connections=200" start >/dev/null
export KORVEN_TEST_PG="host=$pgdir port=$puerto user=korven dbname=postgres"
