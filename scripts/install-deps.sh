#!/usr/bin/env bash
# Installs the Debian packages the build needs, and only those that are missing.
# Usage: scripts/install-deps.sh [extra-package ...]
# Runs apt-get (after one apt-get update) as root or through sudo; fails with a
# clear message when a package is missing and cannot be installed.
set -euo pipefail

# libpng-dev writes the icons; the last four validate the desktop entry, the
# AppStream metadata and the manual page in the test suite.
packages=(g++ cmake make pkg-config libsdl2-dev googletest libgtest-dev libbenchmark-dev libpng-dev
          desktop-file-utils appstream groff-base man-db "$@")

missing=()
for pkg in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$pkg")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

echo "install-deps: installing ${missing[*]}"

if [ "$(id -u)" -eq 0 ]; then
    sudo=()
elif command -v sudo >/dev/null 2>&1; then
    sudo=(sudo)
else
    echo "install-deps: missing packages (${missing[*]}) and not root; install them or run as root" >&2
    exit 1
fi

export DEBIAN_FRONTEND=noninteractive
if ! "${sudo[@]}" apt-get update -q; then
    echo "install-deps: apt-get update failed; cannot install ${missing[*]}" >&2
    exit 1
fi
if ! "${sudo[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"; then
    echo "install-deps: apt-get install failed for ${missing[*]}" >&2
    exit 1
fi
