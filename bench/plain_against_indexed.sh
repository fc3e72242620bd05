#!/usr/bin/env bash
# Holds a store without indexes against the same store with them: the reports that are benchmarked,
# over all dates and over last month, as whole processes. The answers are compared, and the
# milliseconds are those of the processor, the median of the rounds.
set -euo pipefail
export LC_ALL=C.UTF-8

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
quillmarsh=$root/build/release/bin/quillmarsh
plain_copy=$root/build/release/bin/plain_copy
place=$root/build/bench/plain
rounds=${ROUNDS:-7}

usage() {
  cat <<'TEXT'
usage: bench/plain_against_indexed.sh [TRANSACTIONS] [YEARS]
  Compares a plain store with an indexed one on a sample household (default: 100000 transactions in
  40 years). Needs the release build of the targets quillmarsh and plain_copy; ROUNDS in the
  environment sets how often each report is asked for.
TEXT
}

case ${1:-} in -h | --help)
  usage
  exit 0
  ;;
esac
transactions=${1:-100000}
years=${2:-40}
if [[ $# -gt 2 || ! $transactions =~ ^[0-9]+$ || ! $years =~ ^[0-9]+$ ]]; then
  usage >&2
  exit 2
fi

last_day=2026-10-15
reports=(5 6 18 20 21 25 1 22 4 3 19 58 59 13 14 15 16 24 2 8 12 28 17)
ranges=(all-dates previous-month)

ask() { # ask STORE NUMBER RANGE
  local subject=()
  case $2 in 25 | 28) subject=(--parameter1 3) ;; esac
  "$quillmarsh" report "$1" "$2" --range "$3" --today "$last_day" "${subject[@]}"
}

# time_once KIND NUMBER RANGE: notes the processor's milliseconds and keeps the answer.
time_once() {
  local TIMEFORMAT='%3U %3S'
  { time ask "$place/$1.qm" "$2" "$3" >"$place/$1.answer" 2>/dev/null; } 2>&1 |
    awk '{ print ($1 + $2) * 1000 }' >>"$place/$1.times"
}

median() { sort -n "$1" | sed -n "$(((rounds + 1) / 2))p"; }

for program in "$quillmarsh" "$plain_copy"; do
  if [[ ! -x $program ]]; then
    echo "Missing: ${program#"$root"/}; build it first." >&2
    exit 2
  fi
done

mkdir -p "$place"
"$quillmarsh" sample "$place/indexed.qm" --transactions "$transactions" --years "$years" \
  --until "$last_day" --seed 1 --force >/dev/null
"$plain_copy" "$place/indexed.qm" "$place/plain.qm"

echo "$(date +%F), $(nproc) cores, $transactions transactions in $years years, median of $rounds"
echo
echo "| report | dates | indexed ms | plain ms | plain over indexed |"
echo "|---|---|---|---|---|"
differ=0
for number in "${reports[@]}"; do
  for range in "${ranges[@]}"; do
    rm -f "$place"/*.times
    for ((round = 0; round < rounds; ++round)); do
      time_once indexed "$number" "$range"
      time_once plain "$number" "$range"
    done
    cmp -s "$place/indexed.answer" "$place/plain.answer" || differ=$((differ + 1))
    awk -v number="$number" -v range="${range//-/ }" -v indexed="$(median "$place/indexed.times")" \
      -v plain="$(median "$place/plain.times")" 'BEGIN {
        printf "| %s | %s | %.0f | %.0f | %.2f |\n", number, range, indexed, plain, plain / indexed
      }'
  done
done
if [[ $differ -gt 0 ]]; then
  echo
  echo "$differ answers of the plain store differ."
  exit 1
fi
