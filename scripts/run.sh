#!/usr/bin/env bash
# Installs what is missing, builds, and starts the program on its embedded stores: the SQLite
# file build/src/app/db/korven.db, created with the reference data and the demo Operations the first
# time (when the folder is empty).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh --target korven korven-admin
exec build/src/app/korven "$@"
