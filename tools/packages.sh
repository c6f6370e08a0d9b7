#!/usr/bin/env bash
# packages.sh [--quick] [FOLDER]: makes the packages of a build (build/release) and checks them: what Debian's own
# checkers say, and whether a bare system takes them, runs them and is without a trace of them afterwards. The bare
# system is made by debootstrap where root and the network allow it; otherwise, and with --quick, the packages are put
# into an empty root and every program is asked whether it finds its libraries.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
quick=
if [[ ${1:-} == --quick ]]; then
    quick=yes
    shift
fi
build=${1:-build/release}
packages=$build/packages

say() { printf '== %s\n' "$*"; }
fail() {
    echo "FAILED: $*" >&2
    exit 1
}

say "building"
[[ -n ${PACKAGES_BUILT:-} ]] || cmake --build "$build" --target packaged
rm -rf "$packages"
(cd "$build" && cpack --config CPackConfig.cmake >/dev/null)
window=$(realpath "$packages"/personal-velmor_*.deb)
cli=$(realpath "$packages"/velmor-cli_*.deb)

say "checking descriptions"
lintian --allow-root --fail-on error,warning "$window" "$cli"
desktop-file-validate packaging/personal-velmor.desktop
appstreamcli validate --pedantic --no-net "$build"/packaging/*.metainfo.xml
for page in "$build/reference/velmor-cli.1" "$build/src/app/personal-velmor.1"; do
    problems=$(LC_ALL=C.UTF-8 MANROFFSEQ='' man --warnings -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
    [[ -z $problems ]] || fail "$page: $problems"
done
bash -n "$build/reference/velmor-cli.bash"
! command -v zsh >/dev/null || zsh -n "$build/reference/_velmor-cli"

work=$(mktemp -d)
end() {
    ! mountpoint -q "$work/root/proc" || umount "$work/root/proc"
    rm -rf "$work"
}
trap end EXIT

say "unpacking the tarball"
mkdir "$work/tree"
tar -xzf "$packages"/*.tar.gz -C "$work/tree" --strip-components=1
"$work/tree/bin/velmor-cli" demo --database "$work/db" 2>/dev/null
"$work/tree/bin/velmor-cli" render --database "$work/db" Demo --frames 1-3 --scaling 20 --format mp4 -o "$work/m" \
    2>/dev/null
[[ -s $work/m.mp4 ]] || fail "the unpacked tool makes no movie"

# What dpkg keeps of itself, and of what a package's own files are not part.
state='^\./var/|^\./etc/ld\.so\.cache|^\./usr/share/(mime|applications|icons/hicolor|info|man)/.*cache'
listing() { (cd "$1" && find . -path ./proc -prune -o -not -type d -print | { grep -vE "$state" || true; } | sort); }

in_empty_root() {
    local root=$work/root file
    mkdir -p "$root/var/lib/dpkg/"{info,updates} "$root/var/lib/dpkg/triggers"
    touch "$root/var/lib/dpkg/"{status,available}
    listing "$root" >"$work/before"
    dpkg --root="$root" --force-depends --no-triggers -i "$cli" "$window" >/dev/null 2>&1
    while IFS= read -r -d '' file; do
        if file -b "$file" | grep -q '^ELF'; then
            ! LD_LIBRARY_PATH= ldd "$file" | grep 'not found' || fail "$file lacks a library"
        fi
    done < <(find "$root/usr" -type f -print0)
    "$root/usr/bin/velmor-cli" demo --database "$work/db2" 2>/dev/null
    "$root/usr/bin/velmor-cli" print --database "$work/db2" Demo -o "$work/sheet.pdf" || fail "printing"
    QT_QPA_PLATFORM=offscreen "$root/usr/bin/personal-velmor" --version
    dpkg --root="$root" --no-triggers -P personal-velmor velmor-cli >/dev/null 2>&1
    listing "$root" >"$work/after"
    diff "$work/before" "$work/after" || fail "removed packages leave files"
}

in_bare_system() {
    local root=$work/root
    mount -t proc proc "$root/proc" # by which programs find what lies beside them
    chroot "$root" apt-get -qq update
    cp "$cli" "$window" "$root/var/tmp/"
    # The libraries first, so that they are not counted as a trace.
    chroot "$root" sh -c 'export DEBIAN_FRONTEND=noninteractive
        apt-get -qq -y --no-install-recommends install /var/tmp/*.deb >/dev/null 2>&1 &&
        dpkg -P personal-velmor velmor-cli >/dev/null'
    listing "$root" >"$work/before"
    chroot "$root" sh -c 'dpkg -i /var/tmp/*.deb >/dev/null'
    chroot "$root" velmor-cli demo --database /var/tmp/db 2>/dev/null
    chroot "$root" velmor-cli render --database /var/tmp/db Demo --frames 1-3 --format mp4 -o /var/tmp/m 2>/dev/null
    [[ -s $root/var/tmp/m.mp4 ]] || fail "the installed tool makes no movie"
    chroot "$root" velmor-cli print --database /var/tmp/db Demo -o /var/tmp/sheet.pdf || fail "printing"
    chroot "$root" env QT_QPA_PLATFORM=offscreen personal-velmor --version
    chroot "$root" dpkg -P personal-velmor velmor-cli >/dev/null
    rm -r "$root/var/tmp"/*
    listing "$root" >"$work/after"
    diff "$work/before" "$work/after" || fail "removed packages leave files"
}

mirror=$(sed -nE 's/^deb (\[[^]]*\] )?(https?:[^ ]+) .*/\2/p; s/^URIs: *(https?:[^ ]+).*/\1/p' \
    /etc/apt/sources.list /etc/apt/sources.list.d/* 2>/dev/null | grep -v security | head -n 1 || true)
if [[ -z $quick && $(id -u) -eq 0 && -n $mirror ]] && command -v debootstrap >/dev/null &&
    debootstrap --variant=minbase bookworm "$work/root" "$mirror" >"$work/log" 2>&1; then
    say "installing into a bare Debian"
    in_bare_system
else
    say "installing into an empty root"
    rm -rf "$work/root"
    in_empty_root
fi
say "the packages are good"
