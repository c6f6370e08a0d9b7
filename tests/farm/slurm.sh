#!/usr/bin/env bash
# The job that is written for Slurm, run by a Slurm of two nodes.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
slurm=$work/slurm
end() {
    "$here/two_nodes.sh" stop "$slurm"
    rm -rf "$work"
}
trap end EXIT
need slurmctld slurm-wlm
need slurmd slurm-wlm
need munged munge
[[ $(id -u) -eq 0 ]] || skip "Slurm's daemons are started by root only"
mkdir "$slurm"
"$here/two_nodes.sh" start "$slurm"
export SLURM_CONF=$slurm/slurm.conf

idle() { [[ -z $(squeue -h) ]]; }
state() { scontrol show job "$1" | sed -n 's/.*JobState=\([A-Z_]*\).*/\1/p' | sort -u; }
# submit JOB OPTIONS...: keeps the number of the job in $frames.
submit() {
    local job=$1
    shift
    "$cli" farm slurm --database "$database" Demo --antialias --job "$job" --submit "$@" | tee "$work/submitted"
    frames=$(sed -n 's/^frames: job //p' "$work/submitted")
}
# render_of JOB: the process of a task of the job that has made a frame.
render_of() {
    local file
    until_true test -e "$1/frames/f0002.png"
    for file in /proc/[0-9]*/cmdline; do
        if tr '\0' ' ' 2>/dev/null <"$file" | grep -q "^$cli render .*$1/frames/f.*--frames 1-"; then
            basename "$(dirname "$file")"
            return
        fi
    done
}

# Two nodes make what one machine makes.
"$cli" render --database "$database" Demo --antialias --frames 1-20 --format avi -o "$work/one" 2>/dev/null
submit "$work/job1" --frames 1-20 --chunk 4 --format avi -o "$work/out/one"
until_true idle
cmp "$work/one.avi" "$work/out/one.avi" || fail "the movie differs from that of one machine"
"$cli" render --database "$database" Demo --antialias --frames 1-20 -o "$work/frame" 2>/dev/null
same_frames "$work/frame0" "$work/job1/frames/f0"

# A task that is killed in the middle is queued again, and the movie still comes.
large=(--frames 1-24 --scaling 400)
submit "$work/job2" "${large[@]}" --chunk 12 --format avi -o "$work/out/killed"
kill -KILL "$(render_of "$work/job2")"
until_true idle
grep -q 'DUE TO JOB REQUEUE' "$work"/job2/log/* || fail "the killed task was not queued again"
"$cli" render --database "$database" Demo --antialias "${large[@]}" --format avi -o "$work/large" 2>/dev/null
cmp "$work/large.avi" "$work/out/killed.avi" || fail "the movie with a task that was killed differs"

# A limit strikes; the same job, submitted again, leaves what is whole and finishes.
submit "$work/job3" "${large[@]}" --chunk 24 --time 1 --format avi -o "$work/out/limited"
render_of "$work/job3" >/dev/null
scontrol update "jobid=$frames" EndTime=now+1
until_true idle
if [[ $(state "$frames") == TIMEOUT ]]; then
    [[ ! -e $work/out/limited.avi ]] || fail "a movie was made of an unfinished job"
    first=$(stat -c %Y.%i "$work/job3/frames/f0001.png")
    "$work/job3/submit.sh"
    until_true idle
    [[ $(stat -c %Y.%i "$work/job3/frames/f0001.png") == "$first" ]] || fail "a whole frame was rendered again"
fi
cmp "$work/large.avi" "$work/out/limited.avi" || fail "the movie of a job that met its limit differs"

# A broken cel fails its frames alone and is named.
damage "$cel"
submit "$work/job4" --frames 1-20 --scaling 30 --chunk 2 --format avi -o "$work/out/broken"
until_true idle
grep -q "FAILED: .*$(basename "$cel")" "$work"/job4/log/frames-* || fail "the broken cel is not named"
made=$(ls "$work/job4/frames" | wc -l)
((made > 0 && made < 20)) || fail "$made frames were made of 20 with a broken cel"
[[ ! -e $work/out/broken.avi ]] || fail "a movie with a gap was made"
