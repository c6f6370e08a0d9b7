# For the tests of farms: a scene, what one machine makes of it, and what to say of the outcome. To be sourced with the
# command-line tool as the only argument.
set -euo pipefail
cli=$1
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
work=$(mktemp -d)
database=$work/db

skip() {
    echo "skipped: $*"
    exit 77 # which ctest shows as such
}

fail() {
    echo "FAILED: $*" >&2
    tail -n 5 "$work"/job*/log/* 2>/dev/null >&2 || true
    exit 1
}

# need PROGRAM PACKAGE
need() {
    command -v "$1" >/dev/null || skip "$1 is not installed (Debian package $2)"
}

# until_true COMMAND...: waits for it, as long as ctest lets the test run.
until_true() {
    until "$@"; do
        sleep 0.2
    done
}

same_frames() {
    local one=$1 other=$2 file count=0
    for file in "$one"*; do
        cmp "$file" "$other${file#"$one"}" || fail "a frame of the farm differs"
        count=$((count + 1))
    done
    ((count > 0)) || fail "no frames in $one"
}

damage() {
    head -c 100 "$1" >"$1.short"
    mv "$1.short" "$1"
}

"$cli" demo --database "$database" 2>/dev/null
cel=$database/Demo.scene/Fox/$(ls "$database/Demo.scene/Fox" | grep '\.bit$' | head -n 1)
