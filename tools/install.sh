#!/usr/bin/env bash
# install.sh [--gates]: installs what building and testing need on Debian 12, with --gates also what .ci/run needs
# besides. Does nothing, and needs no rights, when it is all there.
set -euo pipefail

packages=(
    g++ cmake ninja-build ccache pkg-config
    libsdl2-dev libpng-dev libtiff-dev libdeflate-dev libisal-dev libsqlite3-dev libzstd-dev libsimpleini-dev libcli11-dev
    nlohmann-json3-dev libhwy-dev
    qt6-base-dev qt6-base-dev-tools qt6-svg-dev libgl-dev fonts-dejavu-core xvfb xdotool
    libgtest-dev libbenchmark-dev pulseaudio
    libavdevice-dev libavformat-dev libavcodec-dev libswscale-dev libswresample-dev libavutil-dev
    libsane-dev libsane1
)
case ${1:-} in
'') ;;
--gates) packages+=(git python3 clang clang-format clang-tidy libclang-rt-dev slurm-wlm munge parallel
    lintian desktop-file-utils shared-mime-info libglib2.0-bin appstream debootstrap man-db file zsh) ;;
*)
    echo "usage: install.sh [--gates]" >&2
    exit 2
    ;;
esac

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    echo "This is no Debian system; it is taken to have what Debian calls: ${packages[*]}" >&2
    exit 0
fi

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [[ $status == installed ]] || missing+=("$package")
done
((${#missing[@]})) || exit 0

as_root=()
if [[ $(id -u) -ne 0 ]]; then
    if ! command -v sudo >/dev/null; then
        echo "Missing packages, and neither root nor sudo to install them: ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "Installing ${missing[*]}" >&2
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq update
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -y --no-install-recommends \
    -o Dpkg::Use-Pty=0 install "${missing[@]}" >/dev/null
