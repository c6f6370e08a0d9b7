#!/usr/bin/env bash
# The job that is written for GNU parallel, run by it.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
trap 'rm -rf "$work"' EXIT
need parallel parallel
export HOME=$work
mkdir "$work/a b's"
choices=(--database "$database" Demo --antialias --scaling 30 --frames 3-30)

"$cli" render "${choices[@]}" --format avi -o "$work/one" 2>/dev/null
"$cli" farm parallel "${choices[@]}" --format avi --chunk 5 -o "$work/a b's/demo" --job "$work/job 1" --submit \
    2>/dev/null
cmp "$work/one.avi" "$work/a b's/demo.avi" || fail "the movie differs from that of one machine"

"$cli" render "${choices[@]}" --format png --transparent -o "$work/one" 2>/dev/null
"$cli" farm parallel "${choices[@]}" --format png --transparent --chunk 5 -o "$work/out/f" --job "$work/job2"
"$work/job2/submit.sh" 2>/dev/null
same_frames "$work/one0" "$work/out/f0"

# A cel that cannot be read fails the task that has it; mended, the same script does what is left and joins.
cp "$cel" "$work/whole"
damage "$cel"
"$cli" farm parallel "${choices[@]}" --format avi --chunk 1 -o "$work/broken" --job "$work/job3"
if "$work/job3/submit.sh" 2>"$work/errors"; then
    fail "a broken cel went unnoticed"
fi
grep -q "FAILED: .*$(basename "$cel")" "$work/errors" || fail "the broken cel is not named"
[[ ! -e $work/broken.avi ]] || fail "a movie with a gap was made"
made=$(ls "$work/job3/frames" | wc -l)
((made > 0 && made < 28)) || fail "$made frames were made of 28 with a broken cel"
cp "$work/whole" "$cel"
"$work/job3/submit.sh" 2>/dev/null
cmp "$work/one.avi" "$work/broken.avi" || fail "the movie made in two goes differs"
