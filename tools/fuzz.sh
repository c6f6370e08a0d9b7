#!/usr/bin/env bash
# fuzz.sh [SECONDS [READER...]]: hands made-up input to the readers of files and messages, to each (or to those named)
# for that long (30 seconds), two at a time. A fault stops it; it then says where the input lies that shows the fault:
# build/fuzz/fuzz/fuzz_READER shows it again when it is started on that file. With FUZZ_SEED set to a number, every run
# makes up the same input.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

seconds=${1:-30}
shift || true
readers=("$@")
if ((${#readers[@]} == 0)); then
    for source in fuzz/*.cpp; do
        readers+=("$(basename "$source" .cpp)")
    done
fi

cmake --preset release >/dev/null
cmake --build --preset release --target velmor-cli
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz
fuzz/make_corpus.sh build/release/src/app/cli/velmor-cli build/fuzz/corpus

fuzz_reader() {
    local seconds=$1 reader=$2
    local found=build/fuzz/found/$reader findings=build/fuzz/findings log=build/fuzz/found/$reader.log
    # FFmpeg asks for what a movie's header says, and does not use it; memory that is used counts in any case.
    local block_mb=64
    [[ $reader != avi ]] || block_mb=2048
    mkdir -p "$found" "$findings"
    if build/fuzz/fuzz/fuzz_"$reader" -max_total_time="$seconds" -seed="${FUZZ_SEED:-0}" -timeout=20 -max_len=131072 -rss_limit_mb=1024 \
        -malloc_limit_mb="$block_mb" -print_final_stats=1 -artifact_prefix="$findings/$reader-" \
        "$found" "build/fuzz/corpus/$reader" >"$log" 2>&1; then
        printf '%-9s %s inputs, %s\n' "$reader" "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")" \
            "$(grep -oE 'cov: [0-9]+ ft: [0-9]+' "$log" | tail -n 1)"
        return
    fi
    tail -n 60 "$log"
    echo "fuzz_$reader found a fault; the input is $(sed -n 's/.*Test unit written to //p' "$log" | tail -n 1)"
    exit 255 # which tells xargs to start no more
}
export -f fuzz_reader

printf '%s\n' "${readers[@]}" | xargs -P 2 -I {} bash -c 'fuzz_reader "$@"' _ "$seconds" {}
