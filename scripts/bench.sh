#!/usr/bin/env bash
# Builds Korven and runs every benchmark once, on SQLite and on a private PostgreSQL server
# started for the run. The figures are medians of a few runs each, in milliseconds.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh
source scripts/servidor-pg.sh
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
echo "Máquina: $(nproc) núcleos, $(grep -m1 'model name' /proc/cpuinfo | cut -d: -f2 | xargs)," \
     "$(free -g | awk '/Mem:/ {print $2}') GB, $(. /etc/os-release; echo "$PRETTY_NAME")"
for b in arranque registro subitems importar armado copia imprimir; do
    echo "== bench_$b"
    build/bench/bench_$b
done
