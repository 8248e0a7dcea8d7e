#!/bin/sh
# Runs the examples for clusters and the recipes of docs/bulk.md on this machine, and compares what they
# write with what one process writes.
#
#   sh scripts/cluster.sh [dask|slurm|recipes...]
#
# dask: a scheduler with three workers, of which one is killed in the middle of its partition.
# slurm: slurmctld, slurmd and munged, with a task that fails at first.
# All three by default. Root is needed only to install what is missing. Nothing is left running.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

parts=${*:-dask slurm recipes}
for part in $parts; do
  case $part in
    dask | slurm | recipes) ;;
    *) fail "sh scripts/cluster.sh [dask|slurm|recipes...]" ;;
  esac
done

# The daemons of Debian's packages are in folders of root.
PATH=$PATH:/usr/sbin:/sbin

want_parts() {
  want openssl has openssl
  want python3 has /usr/bin/python3
  for part in $parts; do "want_$part"; done
}

want_dask() {
  want python3-distributed /usr/bin/python3 -c "import distributed"
}

want_slurm() {
  want munge has munged
  want slurmctld has slurmctld
  want slurmd has slurmd
  want slurm-client has sbatch
}

want_recipes() {
  want_dask
  want curl has curl
  want jq has jq
  want parallel has parallel
  want zstd has zstd
}

provide want_build_tools want_tool_libraries want_parts

cmake --preset release >/dev/null
cmake --build --preset release --target orvelasn1_tool
tool=$PWD/build/release/bin/orvelasn1
source=$PWD

scratch=$(mktemp -d)
end() {
  status=$?
  trap - EXIT
  trap '' INT TERM HUP PIPE
  if [ -e "$scratch/slurm/slurm.conf" ]; then end_jobs; fi
  # What they would do at their end is of use to nobody.
  jobs -p >"$scratch/running"
  while read -r process; do kill -9 "$process" 2>/dev/null || :; done <"$scratch/running"
  wait
  if [ $status != 0 ]; then
    for log in "$scratch"/*/*.log; do
      if [ -s "$log" ]; then
        say "--- ${log#"$scratch"/}" >&2
        tail -n 30 "$log" >&2
      fi
    done
  fi
  rm -rf "$scratch"
  exit "$status"
}
trap end EXIT
trap 'exit 1' INT TERM HUP PIPE

# start LOG COMMAND...: runs a daemon in the background, until the script ends.
start() {
  log=$1
  shift
  "$@" >"$log" 2>&1 </dev/null &
}

# await WHAT COMMAND...: waits until the command succeeds, a minute at most.
await() {
  what=$1
  shift
  left=600
  until "$@" >/dev/null 2>&1; do
    left=$((left - 1))
    [ $left != 0 ] || fail "not after a minute: $what"
    sleep 0.1
  done
}

# expect WHAT EXPECTED FOUND
expect() {
  [ "$2" = "$3" ] || fail "$1: expected $2, found $3"
}

# are NUMBER FOLDER TEST...: succeeds where so many files in the folder pass the tests of `find` and are not
# empty.
are() {
  number=$1
  shift
  [ "$(find "$@" -type f -size +0 | grep -c .)" = "$number" ]
}

# Makes eight shards of lines "ID<TAB>BASE64", of certificates and of broken lines, and what one process
# writes for them.
make_shards() {
  mkdir "$scratch/shards"
  cd "$scratch/shards"
  openssl genpkey -algorithm EC -pkeyopt ec_paramgen_curve:P-256 -out p256.pem
  openssl genpkey -algorithm EC -pkeyopt ec_paramgen_curve:P-384 -out p384.pem
  openssl genpkey -algorithm ED25519 -out ed25519.pem
  openssl genpkey -algorithm RSA -pkeyopt rsa_keygen_bits:2048 -out rsa.pem 2>openssl.log
  printf '[req]\ndistinguished_name = dn\n[dn]\n' >openssl.cnf
  for shard in 1 2 3 4 5 6 7 8; do
    for key in p256 p384 ed25519 rsa; do
      for number in 1 2 3 4 5 6 7 8; do
        name=$shard.$key.$number
        openssl req -x509 -config openssl.cnf -key $key.pem -days 30 -subj "/O=Example/CN=$name" \
          -addext "subjectAltName=DNS:$name.example,DNS:www.$name.example" -outform DER -out last.der
        printf '%s\t%s\n' "$name" "$(openssl base64 -A -in last.der)"
      done
      printf '%s.%s.letters\t!!\n' $shard $key
      printf '%s.%s.truncated\t%s\n' $shard $key "$(head -c 300 last.der | openssl base64 -A)"
      printf '%s.%s.empty\t\n' $shard $key
      printf '%s.%s.nul\tMII\000x\n' $shard $key
    done >shard-$shard.txt
  done
  cat shard-?.txt >all
  # The options must be split, here and below.
  # shellcheck disable=SC2086
  "$tool" map --jobs 1 $options all >all.out 2>map.log
  # The names of the certificates are known without the tool.
  cut -f 1 all >ids
  expect "lines" 384 "$(grep -c . ids)"
  cut -f 1 all.out | cmp - ids
  awk -F '\t' '$NF == "" { print $1 "\t" $2 "\t" $3 }' all.out >decoded
  awk '/[0-9]$/ { print $1 "\tCN=" $1 ",O=Example\t" $1 ".example,www." $1 ".example" }' ids |
    cmp - decoded
  gzip shard-7.txt
}
options="--in base64 --fields subject,san.dns,notAfter"

# Compares the results of all shards with what one process writes.
compare() { # FOLDER
  cat "$1"/shard-?.txt*.out | diff "$scratch/shards/all.out" - ||
    fail "the results (>) differ from those of one process (<)"
  are 0 "$1" -name '*.unfinished-*' || fail "a result was left unfinished"
}

run_on_dask() { # FILE... -- OPTION...
  timeout 120 /usr/bin/python3 "$source/examples/dask/map.py" --scheduler "$address" --results results "$@"
}

runs() {
  find runs -mindepth 1 -maxdepth 1 | grep -c . || :
}

test_dask() {
  say "=== dask"
  mkdir "$scratch/dask" "$scratch/dask/bin" "$scratch/dask/runs"
  cd "$scratch/dask"
  # The tool, of which each run leaves the process of its worker. All runs but the first three stop after 20
  # lines of input until the file "go" is there, or their worker is not.
  cat >bin/orvelasn1 <<END
#!/bin/sh
cd "$scratch/dask"
number=1
until mkdir runs/\$number 2>/dev/null; do number=\$((number + 1)); done
echo \$PPID >runs/\$number/worker
{
  if [ \$number -gt 3 ]; then
    sed -u 20q
    until [ -e go ]; do
      kill -0 \$PPID || exit 1
      sleep 0.05
    done
  fi
  cat
} | "$tool" "\$@"
END
  chmod +x bin/orvelasn1

  start scheduler.log dask-scheduler --host 127.0.0.1 --port 0 --no-dashboard --scheduler-file scheduler.json
  await "the scheduler's address" grep -q '"address"' scheduler.json
  address=$(sed -n 's/.*"address": *"\([^"]*\)".*/\1/p' scheduler.json | head -n 1)
  for worker in 1 2 3; do
    start worker-$worker.log env PATH="$PWD/bin:$PATH" dask-worker "$address" --host 127.0.0.1 \
      --no-dashboard --no-nanny --nthreads 1 --local-directory worker-$worker
    echo $! >>workers
  done

  # shellcheck disable=SC2086
  run_on_dask "$scratch"/shards/shard-?.txt* -- $options >map.log 2>&1 &
  map=$!
  await "three results" are 3 results -name '*.out'
  await "the start of three more" are 3 results -name '.unfinished-*'
  victim=$(cat runs/4/worker)
  grep -qx "$victim" workers || fail "$victim is no worker"
  kill -9 "$victim"
  wait "$victim" 2>/dev/null || :
  are 3 results -name '*.out' || fail "a result was not in the middle"
  touch go
  wait $map || fail "map.py failed"
  compare results
  # Eight, and once more what the killed worker was at.
  expect "runs" 9 "$(runs)"
  say "A worker was killed in the middle: the results are those of one process."

  rm results/shard-3.txt.out
  touch -r go results/*
  # shellcheck disable=SC2086
  run_on_dask "$scratch"/shards/shard-?.txt* -- $options >again.log 2>&1 || fail "map.py failed"
  compare results
  expect "runs" 10 "$(runs)"
  are 1 results -name '*.out' -newer go || fail "a result was written again"
  grep -qx '1 done, 7 were there, 0 failed' again.log || fail "map.py counts otherwise"
  say "A second run did what was missing, and nothing else."

  head -c 1000 "$scratch/shards/shard-7.txt.gz" >cut.txt.gz
  # shellcheck disable=SC2086
  if run_on_dask "$scratch"/shards/shard-?.txt* cut.txt.gz -- $options >cut.log 2>&1; then
    fail "a cut file was taken for a whole one"
  fi
  [ ! -e results/cut.txt.gz.out ] || fail "a cut file has a result"
  compare results
  if run_on_dask "$scratch"/shards/shard-?.txt* -- --in base64 >others.log 2>&1; then
    fail "results of other options were mixed"
  fi
  say "A file that is cut fails, and so do other options over the same results."
}

end_jobs() {
  scancel --user="$(id -un)" 2>/dev/null || :
  left=50
  until [ -z "$(squeue --noheader 2>/dev/null)" ] || [ $left = 0 ]; do
    left=$((left - 1))
    sleep 0.1
  done
}

test_slurm() {
  say "=== slurm"
  mkdir "$scratch/slurm"
  cd "$scratch/slurm"
  mkdir bin run shards spool state
  # munged wants a socket that every user can reach.
  chmod 711 "$scratch" . run
  (umask 077 && head -c 128 /dev/urandom >munge.key)
  host=$(uname -n)
  host=${host%%.*}
  # Two ports that are free now.
  ports=$(/usr/bin/python3 -c '
import socket
sockets = [socket.create_server(("127.0.0.1", 0)) for _ in range(2)]
print(*(s.getsockname()[1] for s in sockets))')
  # No cgroups, no accounting, no mail: these a container need not have.
  cat >slurm.conf <<END
ClusterName=scratch
SlurmctldHost=$host(127.0.0.1)
SlurmctldPort=${ports% *}
SlurmdPort=${ports#* }
SlurmUser=$(id -un)
SlurmdUser=$(id -un)
AuthType=auth/munge
AuthInfo=socket=$PWD/run/munge.socket
CredType=cred/munge
StateSaveLocation=$PWD/state
SlurmdSpoolDir=$PWD/spool
SlurmctldPidFile=$PWD/run/slurmctld.pid
SlurmdPidFile=$PWD/run/slurmd.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
JobCompType=jobcomp/none
MailProg=/bin/true
MpiDefault=none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SlurmdParameters=config_overrides
NodeName=$host NodeAddr=127.0.0.1 CPUs=4 RealMemory=1024
PartitionName=all Nodes=ALL Default=YES MaxTime=10 State=UP
END
  # The plugin for the second version of cgroups does not start where there are none. This one does.
  echo CgroupPlugin=cgroup/v1 >cgroup.conf
  SLURM_CONF=$PWD/slurm.conf
  export SLURM_CONF
  start munged.log munged --foreground --key-file=munge.key --socket="$PWD/run/munge.socket" \
    --pid-file="$PWD/run/munged.pid" --seed-file="$PWD/munge.seed" --log-file="$PWD/run/munge.log"
  await "munged" test -S run/munge.socket
  start slurmctld.log slurmctld -D
  await "slurmctld" scontrol ping
  start slurmd.log slurmd -D
  await "slurmd" sh -c 'sinfo --noheader --format=%T | grep -qx idle'

  # The tool, of which each run leaves the number of its task. The first of task 5 ends before its output.
  cat >bin/orvelasn1 <<END
#!/bin/sh
echo \$SLURM_ARRAY_TASK_ID >>"$PWD/runs"
if [ \$SLURM_ARRAY_TASK_ID = 5 ] && mkdir "$PWD/failed"; then
  sed -u 20q | "$tool" "\$@"
  kill -9 \$\$
fi
exec "$tool" "\$@"
END
  chmod +x bin/orvelasn1
  cp "$scratch"/shards/shard-?.txt* shards
  ls "$PWD"/shards/* >list
  submit() {
    # shellcheck disable=SC2086
    PATH=$PWD/bin:$PATH timeout 120 sbatch --wait --array=1-8 --output=%a-"$1".log \
      "$source/examples/slurm/map.sh" list $options >"submit-$1.log" 2>&1
  }
  if submit first; then fail "the task that failed did not count"; fi
  are 7 shards -name '*.out' || fail "the first submission has other results than seven"
  [ ! -e shards/shard-5.txt.out ] || fail "a task that failed has a result"
  touch before
  submit again || fail "the second submission failed"
  compare shards
  are 1 shards -name '*.out' -newer before || fail "a result was written again"
  # Eight, and task 5 once more.
  expect "runs" 9 "$(grep -c . runs)"
  expect "runs of task 5" 2 "$(grep -cx 5 runs)"
  say "A task that failed was submitted again: the results are those of one process."
}

for part in $parts; do
  if [ ! -e "$scratch/shards" ] && [ "$part" != recipes ]; then make_shards; fi
  case $part in
    recipes) sh "$source/tests/docs/bulk.sh" "$tool" "$source" ;;
    *) "test_$part" ;;
  esac
done
