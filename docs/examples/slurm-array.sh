#!/usr/bin/env bash
# sbatch slurm-array.sh LIST RESULTS   checks the voicebanks of LIST, a hundred tasks side by side. LIST holds their
# folders, each ended by a zero byte; RESULTS gets a file of JSON lines for each.
#SBATCH --job-name=voicebanks
#SBATCH --array=0-99
#SBATCH --cpus-per-task=1
#SBATCH --mem=1G
#SBATCH --time=04:00:00
set -uo pipefail
mapfile -d '' banks <"$1"
results=$2
mkdir -p "$results"
failed=0
for ((i = SLURM_ARRAY_TASK_ID; i < ${#banks[@]}; i += SLURM_ARRAY_TASK_COUNT)); do
  name=$results/$(basename -- "${banks[i]}").jsonl
  if [ -e "$name" ]; then continue; fi # of an earlier try
  marlit-batch check --json --jobs 1 "${banks[i]}" >"$name.part"
  if [ $? -le 1 ]; then mv -- "$name.part" "$name"; else failed=1; fi
done
exit "$failed"
