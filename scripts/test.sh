#!/usr/bin/env bash
# Installs what is missing, builds everything, starts a private PostgreSQL server for the run,
# and runs the whole test suite (every store test on SQLite and on PostgreSQL).
# With --sanitizers it builds into build-san/ with AddressSanitizer and UndefinedBehaviorSanitizer
# and runs the same suite there; every other argument goes to ctest.
set -euo pipefail
cd "$(dirname "$0")/.."
raiz=$(pwd)
sanitizers=0
args=()
for a in "$@"; do
    if [ "$a" = "--sanitizers" ]; then sanitizers=1; else args+=("$a"); fi
done
bash scripts/setup.sh
if [ "$sanitizers" -eq 1 ]; then
    dir=build-san
    cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKORVEN_SANITIZERS=ON \
        -DKORVEN_BENCH=OFF >/dev/null
    cmake --build "$dir" -j"$(nproc)"
    # Leak detection is on: the whole suite runs without leaks, the SQLite and PostgreSQL
    # drivers included. Options given by the caller come last and win.
    export ASAN_OPTIONS="halt_on_error=1:detect_leaks=1${ASAN_OPTIONS:+:$ASAN_OPTIONS}"
    export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1${UBSAN_OPTIONS:+:$UBSAN_OPTIONS}"
else
    dir=build
    bash scripts/build.sh
fi

source scripts/servidor-pg.sh
export KORVEN_REQUIRE_PG=1
echo "Servidor PostgreSQL de pruebas: $KORVEN_TEST_PG"

cd "$raiz/$dir"
ctest --output-on-failure -j"$(nproc)" "${args[@]}"
