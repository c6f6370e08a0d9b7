#!/usr/bin/env bash
# open_from_desktop.sh PROGRAM CLI PACKAGING: opens scenes the way a desktop does at a double click, with the desktop
# entry and the file types that are installed. To be run on an X server (with_xvfb.sh).
set -euo pipefail
program=$1
cli=$2
packaging=$3

# need PROGRAM PACKAGE
need() {
    command -v "$1" >/dev/null && return
    echo "skipped: $1 is not installed (Debian package $2)"
    exit 77
}
need gio libglib2.0-bin
need update-mime-database shared-mime-info
need update-desktop-database desktop-file-utils

work=$(mktemp -d)
touch "$work/started"
end() {
    while read -r process; do
        kill "$process" 2>/dev/null || true
        until_true is_gone "$process"
    done <"$work/started"
    rm -rf "$work"
}
fail() {
    echo "FAILED: $*" >&2
    exit 1
}
# until_true COMMAND...: waits for it, as long as ctest lets the test run.
until_true() {
    until "$@"; do
        sleep 0.1
    done
}
# Also when nobody has asked yet what became of it.
is_gone() { [[ ! -e /proc/$1 || $(sed 's/.*) //' "/proc/$1/stat" 2>/dev/null) == Z* ]]; }
is_open() { grep -qs "^Last Scene *= *$1\$" "$XDG_CONFIG_HOME/personal-velmor.ini"; }
started() { (($(wc -l <"$work/started") >= $1)); }
trap end EXIT

export HOME=$work XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/share XDG_DATA_DIRS=/usr/share \
    XDG_RUNTIME_DIR=$work/run PATH=$work/bin:$PATH
mkdir -p "$work"/{bin,config,run} "$XDG_DATA_HOME"/{applications,mime/packages}
chmod 700 "$work/run"
# The desktop starts it; by its number it can be ended.
printf '#!/bin/sh\necho $$ >>"%s/started"\nexec "%s" --nosplash "$@"\n' "$work" "$program" >"$work/bin/personal-velmor"
chmod +x "$work/bin/personal-velmor"
cp "$packaging/personal-velmor.desktop" "$XDG_DATA_HOME/applications/"
cp "$packaging/personal-velmor-mime.xml" "$XDG_DATA_HOME/mime/packages/personal-velmor.xml"
update-mime-database "$XDG_DATA_HOME/mime"
update-desktop-database "$XDG_DATA_HOME/applications"

"$cli" demo --database "$work/one" 2>/dev/null
mkdir -p "$work/another one/Second.scene"
cp "$work/one/Demo.scene/Demo.xsheet" "$work/another one/Second.scene/Second.xsheet"
cp -r "$work/one/Demo.scene/Fox" "$work/another one/Second.scene/"

type_of() { gio info -a standard::content-type "$1" | sed -n 's/.*standard::content-type: //p'; }
[[ $(type_of "$work/one/Demo.scene/Demo.xsheet") == application/x-velmor-xsheet ]] || fail "the type of an xsheet"
[[ $(type_of "$(ls -d "$work"/one/Demo.scene/Fox/*.bit | head -n 1)") == image/x-velmor-cel ]] || fail "of a cel"
cp "$work/one/Demo.scene/Demo.xsheet" "$work/without an end"
[[ $(type_of "$work/without an end") == application/x-velmor-xsheet ]] || fail "the type by what a file holds"

gio open "$work/one/Demo.scene/Demo.xsheet"
until_true is_open Demo
# The program runs: it is to open the other one, and no second program is to stay.
gio open "$work/another one/Second.scene/Second.xsheet"
until_true started 2
until_true is_gone "$(tail -n 1 "$work/started")"
until_true is_open Second
is_gone "$(head -n 1 "$work/started")" && fail "the program that ran has ended"
grep -q "^Database Dir *= *$work/another one/" "$XDG_CONFIG_HOME/personal-velmor.ini" || fail "the database"
echo "scenes open from the desktop"
