#!/bin/bash
# Runs `orvelasn1 map` over the shards of a list, a task of a job array each.
#
#   ls "$PWD"/shards/*.txt >list
#   sbatch --array=1-"$(wc -l <list)" map.sh list --in base64 --fields subject,san.dns
#
# Task N takes the shard in line N of the list. Its lines are in SHARD.out when they are complete, and under
# no such name before. Where some tasks failed, submit the same again: a shard whose result is there is
# not done twice. The options are those of `orvelasn1 map`. Shards that end with .gz or .zst are unpacked
# on the way.
#
#SBATCH --job-name=orvelasn1-map
#SBATCH --cpus-per-task=1
#SBATCH --mem=256M
#SBATCH --requeue
set -euo pipefail

list=$1
shift
shard=$(sed -n "${SLURM_ARRAY_TASK_ID}p" "$list")
if [ -z "$shard" ]; then
  echo "$list has no line $SLURM_ARRAY_TASK_ID" >&2
  exit 2
fi
result=$shard.out
if [ -e "$result" ]; then
  echo "$result is there" >&2
  exit 0
fi

unpacked() {
  case $shard in
    *.gz) gzip -dc "$shard" ;;
    *.zst) zstd -dcq "$shard" ;;
    *) cat "$shard" ;;
  esac
}

# A task that Slurm starts again has the same number, and writes over what the first one left.
unfinished=$result.unfinished-$SLURM_JOB_ID
trap 'rm -f "$unfinished"' EXIT
unpacked | orvelasn1 map --jobs "$SLURM_CPUS_PER_TASK" "$@" >"$unfinished"
sync "$unfinished"
mv "$unfinished" "$result"
