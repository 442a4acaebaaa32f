#!/usr/bin/env bash
# Checks of what `cmake --install` and the package ship, run by ctest.
#   check.sh tree BUILD_DIR EXPECTED_LIST VERSION   install into a scratch root, compare the file list
#   check.sh desktop|metainfo|manpage FILE  run that file's validator; exit 77 (skipped) without it
set -euo pipefail

need() {
    command -v "$1" >/dev/null && return
    echo "$1 is not installed: skipping this check (scripts/install-deps.sh installs it)"
    exit 77
}

# Fails with the tool's output unless it printed exactly what a clean pass prints.
expect_clean() {
    local want=$1 got
    shift
    got=$("$@" 2>&1) || { echo "$got"; exit 1; }
    [ "$got" = "$want" ] || { echo "$got"; exit 1; }
}

case $1 in
tree)
    build=$2 expected=$3
    scratch=$(mktemp -d)
    trap 'rm -rf "$scratch"' EXIT
    # A prefix that cannot be created (it lies under a plain file) must fail the install.
    touch "$scratch/plain-file"
    if DESTDIR="$scratch/plain-file/root" cmake --install "$build" --prefix /usr >/dev/null 2>&1; then
        echo "an install into an unwritable place reported success"
        exit 1
    fi
    DESTDIR="$scratch/root" cmake --install "$build" --prefix /usr >/dev/null
    (cd "$scratch/root" && find . ! -type d | LC_ALL=C sort) | diff -u "$expected" -
    # Every icon is as wide and high as its folder says (PNG width and height at bytes 16-23).
    for png in "$scratch"/root/usr/share/icons/hicolor/*/apps/*.png; do
        edge=$(basename "$(dirname "$(dirname "$png")")")
        read -r w h < <(od -An -tu4 --endian=big -j16 -N8 "$png")
        [ "${w}x$h" = "$edge" ] || { echo "$png is ${w}x$h"; exit 1; }
    done
    expect_clean "talven $4" "$scratch/root/usr/games/talven" --version
    ;;
desktop)
    need desktop-file-validate
    expect_clean "" desktop-file-validate "$2"
    ;;
metainfo)
    need appstreamcli
    expect_clean "✔ Validation was successful." appstreamcli validate --pedantic --no-net "$2"
    ;;
manpage)
    need groff
    need lexgrog
    expect_clean "" groff -ww -z -man "$2"
    expect_clean "$2: \"talven - dig, build, craft and survive in a seeded 2D underground world\"" lexgrog "$2"
    ;;
*)
    echo "usage: check.sh tree BUILD_DIR EXPECTED_LIST VERSION | desktop|metainfo|manpage FILE" >&2
    exit 2
    ;;
esac
