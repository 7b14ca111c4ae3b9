#!/usr/bin/env bash
# Installs what building and testing Korven needs on Debian 12, when it is missing.
set -euo pipefail
paquetes=(g++ cmake ninja-build pkg-config qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite
          libqt6sql6-psql qt6-translations-l10n libsqlite3-dev libgl1-mesa-dev postgresql xvfb
          xauth clang-format poppler-utils python3-aiosmtpd openssl)
faltan=()
for p in "${paquetes[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || faltan+=("$p")
done
if [ ${#faltan[@]} -gt 0 ]; then
    echo "Instalando: ${faltan[*]}"
    sudo_=""
    [ "$(id -u)" -eq 0 ] || sudo_="sudo"
    $sudo_ apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo_ apt-get install -y -qq --no-install-recommends "${faltan[@]}" >/dev/null
fi
