#!/usr/bin/env bash
# tidy.sh [BASE]: runs clang-tidy over the sources that changed since the commit BASE, the latest first, with what is
# not committed yet; without BASE over all of them. A header is looked at through the source files of its name. With
# TIDY_SECONDS set, no file is begun after that time, and the ones that were left out are named.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# The files named on the standard input that are sources, a header's place taken by its source file; each once.
sources() {
    while read -r file; do
        file=${file%.h}
        file=${file%.cpp}.cpp
        if [[ $file =~ ^(src|tests|bench)/ && -f $file ]]; then echo "$file"; fi
    done | awk '!seen[$0]++'
}

files=$({ git diff --name-only HEAD && git log --format= --name-only "${1:+$1..}HEAD"; } | sources)
if [[ -z $files ]]; then
    echo "clang-tidy: no sources changed"
    exit 0
fi

# Its compile commands are without the precompiled header, which is one of another compiler.
cmake --preset tidy >/dev/null

left_out=$(mktemp)
trap 'rm -f "$left_out"' EXIT
end=$(($(date +%s) + ${TIDY_SECONDS:-1000000}))
export left_out end

tidy_one() {
    if (($(date +%s) >= end)); then
        echo "$1" >>"$left_out"
        return 0
    fi
    clang-tidy --quiet -p build/tidy "$1" 2>/dev/null
}
export -f tidy_one
failed=0
xargs -P "$(nproc)" -I{} bash -c 'tidy_one "$1"' _ {} <<<"$files" || failed=1

if [[ -s $left_out ]]; then
    echo "clang-tidy: no time was left for:"
    sed 's/^/  /' "$left_out"
fi
exit "$failed"
