#!/usr/bin/env bash
# Installs the package on a fresh Debian 12 system in a debootstrap chroot, plays
# it there as a user would, removes it and checks that nothing of it is left.
# Usage (as root): packaging/try-deb.sh build-pkg/talven_VERSION_amd64.deb [CHROOT_DIR]
set -euo pipefail
deb=$(realpath "$1")
root=$(realpath -m "${2:-/var/tmp/talven-chroot}")
cd "$(dirname "$0")/.."
name=$(basename "$deb")
id=io.github.talven.talven

command -v debootstrap >/dev/null || scripts/install-deps.sh debootstrap
[ -x "$root/usr/bin/apt-get" ] || debootstrap --variant=minbase bookworm "$root" http://deb.debian.org/debian
mountpoint -q "$root/proc" || mount -t proc proc "$root/proc"
marks=$(mktemp -d)
trap 'umount "$root/proc"; rm -rf "$marks"' EXIT
in_root() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive "$@"; }
# Everything on the system but apt's and dpkg's own records and logs.
snapshot() { in_root find / -xdev \( -path /proc -o -path /var/lib/dpkg -o -path /var/lib/apt -o -path /var/cache \
                 -o -path /var/log -o -path /tmp \) -prune -o -print | LC_ALL=C sort; }

cp "$deb" "$root/tmp/$name"
in_root apt-get update -q
in_root id player >/dev/null 2>&1 || in_root useradd -m player
# The first install brings SDL2 and the rest; what it leaves after a remove is the baseline.
in_root apt-get install -y -q "/tmp/$name"
in_root apt-get remove -y -q talven
snapshot > "$marks/before.txt"

in_root apt-get install -y -q "/tmp/$name"
# A user's PATH, with /usr/games; a scratch data folder so nothing real is saved.
play() { chroot --userspec=player:player "$root" env -i HOME=/home/player PATH=/usr/local/bin:/usr/bin:/bin:/usr/games \
             XDG_DATA_HOME=/tmp/play-data SDL_VIDEODRIVER=dummy sh -c "cd /tmp/play && $1"; }
mkdir -p "$root/tmp/play" && chown --reference="$root/home/player" "$root/tmp/play"
play 'command -v talven && talven --version && talven --selftest'
play 'talven --debug-game --screenshot x.bmp && od -An -c -N2 x.bmp'
ls -l "$root/usr/share/applications/$id.desktop" "$root"/usr/share/icons/hicolor/*/apps/$id.png
in_root apt-get remove -y -q talven
rm -rf "$root/tmp/play" "$root/tmp/play-data" "$root/tmp/$name"
snapshot > "$marks/after.txt"
diff -u "$marks/before.txt" "$marks/after.txt"
in_root dpkg-query -W talven 2>/dev/null && { echo "try-deb: dpkg still knows talven"; exit 1; }
echo "try-deb: installed, played and removed; nothing of the package is left"
