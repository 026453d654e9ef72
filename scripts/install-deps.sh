#!/usr/bin/env bash
# Installs the Debian packages VKM Step needs to build, test and run. Idempotent:
# prints nothing and does nothing when everything is there.
set -euo pipefail

PACKAGES=(
    build-essential cmake pkg-config
    qt6-base-dev qt6-base-dev-tools qt6-serialport-dev qt6-tools-dev-tools libgl1-mesa-dev
    libarchive-dev libarchive-tools lhasa
    libxlsxwriter-dev
    libgtest-dev
    xvfb xauth x11-apps fontconfig fonts-dejavu-core
    python3
)

missing=()
for p in "${PACKAGES[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
    SUDO="sudo"
fi
echo "Installing: ${missing[*]}"
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
