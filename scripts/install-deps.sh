#!/usr/bin/env bash
# Installs the Debian packages VKM Step needs to build, test and run. Idempotent:
# prints nothing and does nothing when everything is there.
set -euo pipefail

PACKAGES=(
    # build
    build-essential cmake pkg-config clang-format
    qt6-base-dev qt6-serialport-dev libgl1-mesa-dev
    libarchive-dev libxlsxwriter-dev libgtest-dev
    # the editor under a virtual display (make run without a display, screenshots)
    xvfb xauth
    # fonts: Latin for the grid, Japanese for catalogue texts in code page 932
    fontconfig fonts-dejavu-core fonts-ipafont-gothic
    # tests: fixture generators, PDF text and pages of the printed sheet, an LHA reader of
    # its own (lhasa's lha) that checks the archives tools/lhapack writes
    python3 poppler-utils lhasa
    # tests: the installed desktop entry and file type checked by the desktop's own tools
    desktop-file-utils libxml2-utils shared-mime-info
)

missing=()
for p in "${PACKAGES[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

SUDO=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null 2>&1; then
        echo "These Debian packages are missing: ${missing[*]}" >&2
        echo "Install them as root:" >&2
        echo "  apt-get update && apt-get install -y --no-install-recommends ${missing[*]}" >&2
        exit 1
    fi
    SUDO=(sudo)
fi
echo "Installing: ${missing[*]}"
"${SUDO[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${SUDO[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
