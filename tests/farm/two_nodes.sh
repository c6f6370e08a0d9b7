#!/usr/bin/env bash
# two_nodes.sh start FOLDER | stop FOLDER: a Slurm of two nodes with one processor each on this machine, with all that it
# keeps in FOLDER, for trying jobs. Needs root and Debian's slurm-wlm and munge. Jobs find it by
# SLURM_CONF=FOLDER/slurm.conf.
set -euo pipefail
action=$1
folder=$(realpath -m "$2")

# daemon NAME COMMAND...: starts it in the foreground of a process of its own, whose number it keeps.
daemon() {
    local name=$1
    shift
    "$@" >"$folder/$name.log" 2>&1 </dev/null &
    echo $! >"$folder/$name.pid"
}

write_configuration() {
    local host port
    host=$(hostname -s)
    port=$((20000 + RANDOM % 20000))
    cat >"$folder/slurm.conf" <<END
ClusterName=desk
SlurmctldHost=$host(127.0.0.1)
SlurmctldPort=$port
SlurmUser=root
AuthType=auth/munge
AuthInfo=socket=$folder/munge/socket,cred_expire=5
StateSaveLocation=$folder/state
SlurmdSpoolDir=$folder/spool-%n
SlurmctldPidFile=$folder/slurmctld-own.pid
SlurmdPidFile=$folder/slurmd-%n-own.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
MpiDefault=none
ReturnToService=2
KillWait=2
SchedulerParameters=batch_sched_delay=0,sched_interval=1
NodeName=left NodeHostname=$host NodeAddr=127.0.0.1 Port=$((port + 1)) CPUs=1
NodeName=right NodeHostname=$host NodeAddr=127.0.0.1 Port=$((port + 2)) CPUs=1
PartitionName=both Nodes=left,right Default=YES MaxTime=INFINITE State=UP
END
}

# munge serves a key that only these daemons know, at a socket of its own, as whoever starts it.
start_munge() {
    mkdir -p "$folder/munge"
    chmod 755 "$folder/munge"
    head -c 128 /dev/urandom >"$folder/munge/key"
    chmod 400 "$folder/munge/key"
    daemon munged munged --foreground --force --key-file="$folder/munge/key" --socket="$folder/munge/socket" \
        --pid-file="$folder/munge/pid" --log-file="$folder/munge/log" --seed-file="$folder/munge/seed"
    for _ in $(seq 100); do
        [[ ! -S $folder/munge/socket ]] || return 0
        sleep 0.1
    done
    cat "$folder/munged.log" >&2
    return 1
}

start() {
    mkdir -p "$folder/state" "$folder/spool-left" "$folder/spool-right"
    write_configuration
    start_munge
    export SLURM_CONF=$folder/slurm.conf
    daemon slurmctld slurmctld -D
    daemon left slurmd -D -N left
    daemon right slurmd -D -N right
    for _ in $(seq 200); do
        if [[ $(sinfo -h -o '%t %D' 2>/dev/null) == 'idle 2' ]]; then
            return 0
        fi
        sleep 0.2
    done
    tail -n 20 "$folder"/*.log >&2
    return 1
}

stop() {
    local name process
    for name in left right slurmctld munged; do
        [[ -f $folder/$name.pid ]] || continue
        process=$(<"$folder/$name.pid")
        kill "$process" 2>/dev/null || continue
        for _ in $(seq 50); do # until it has written its last state
            kill -0 "$process" 2>/dev/null || break
            sleep 0.1
        done
    done
}

case $action in
start) start ;;
stop) stop ;;
*)
    echo "two_nodes.sh start FOLDER | stop FOLDER" >&2
    exit 2
    ;;
esac
