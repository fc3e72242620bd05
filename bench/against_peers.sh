#!/usr/bin/env bash
# Holds quillmarsh against the plain-text accounting programs that are installed: the same
# household, the same questions, the figures compared to the cent, and the whole process timed.
# A round asks every question of every program once; the seconds are the median of the rounds.
set -euo pipefail
# Points in numbers, whole characters in names.
export LC_ALL=C.UTF-8
# A journal is read, not what was kept of it from the time before.
export BEANCOUNT_DISABLE_LOAD_CACHE=1

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
quillmarsh=$root/build/release/bin/quillmarsh
journal_export=$root/build/release/bin/journal_export
plain_copy=$root/build/release/bin/plain_copy
place=$root/build/bench/peers
rounds=3

usage() {
  cat <<'TEXT'
usage: bench/against_peers.sh [TRANSACTIONS] [YEARS]
  Compares quillmarsh with hledger, ledger and beancount, those of them that are installed, on a
  sample household (default: 100000 transactions in 40 years); quillmarsh is asked twice, the second
  time with a copy of the store that has no indexes ("plain"). Needs the release build of the targets
  quillmarsh, plain_copy and journal_export.
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

# ---- the questions

last_day=2026-10-15
after_last_day=2026-10-16

questions=(balances year all month)
declare -A title=(
  [balances]="balances of all accounts on the last day"
  [year]="income and expenses by category, last year"
  [all]="income and expenses by category, all dates"
  [month]="income and expenses by category, last month"
)
# The first day, the last and the day after it; all dates have none.
declare -A first=([year]=2025-01-01 [month]=2026-09-01)
declare -A last=([year]=2025-12-31 [month]=2026-09-30)
declare -A after=([year]=2026-01-01 [month]=2026-10-01)

# ---- asking: ask_PROGRAM QUESTION prints the answer as the program gives it

ask_quillmarsh() {
  local range=(--range all-dates)
  if [[ $1 == balances ]]; then
    "$quillmarsh" report "$store" 6 --range up-to-a-date --to "$last_day"
    return
  fi
  if [[ -n ${first[$1]:-} ]]; then
    range=(--range custom-dates --from "${first[$1]}" --to "${last[$1]}")
  fi
  "$quillmarsh" report "$store" 4 "${range[@]}"
}

ask_plain() {
  local store=$plain_store
  ask_quillmarsh "$1"
}

ask_hledger() {
  local dates=()
  if [[ $1 == balances ]]; then
    hledger -f "$journal" balance '^Assets:' '^Liabilities:' --value='end,$' \
      --end "$after_last_day" --flat --no-total -O csv
    return
  fi
  if [[ -n ${first[$1]:-} ]]; then
    dates=(--begin "${first[$1]}" --end "${after[$1]}")
  fi
  hledger -f "$journal" balance '^Income:' '^Expenses:' "${dates[@]}" --flat --no-total -O csv
}

ask_ledger() {
  local dates=() row='%(account)\t%(quantity(scrub(display_total)))\n'
  if [[ $1 == balances ]]; then
    ledger --args-only -f "$journal" balance '^Assets:' '^Liabilities:' -X '$' \
      --now "$last_day" --end "$after_last_day" --flat --no-total --format "$row"
    return
  fi
  if [[ -n ${first[$1]:-} ]]; then
    dates=(--begin "${first[$1]}" --end "${after[$1]}")
  fi
  ledger --args-only -f "$journal" balance '^Income:' '^Expenses:' "${dates[@]}" \
    --flat --no-total --format "$row"
}

# As text, since it prints numbers cut to two places.
ask_beancount() {
  local condition=""
  if [[ $1 == balances ]]; then
    bean-query -q -f csv "$beancount_journal" \
      "SELECT account, str(convert(sum(position), 'USD', $last_day))
       WHERE account ~ '^(Assets|Liabilities):' AND date <= $last_day GROUP BY account"
    return
  fi
  if [[ -n ${first[$1]:-} ]]; then
    condition="AND date >= ${first[$1]} AND date <= ${last[$1]}"
  fi
  bean-query -q -f csv "$beancount_journal" \
    "SELECT account, str(sum(position))
     WHERE account ~ '^(Income|Expenses):' $condition GROUP BY account"
}

program_of() { # program_of PEER: the command that it is started by
  if [[ $1 == beancount ]]; then echo bean-query; else echo "$1"; fi
}

# ---- reading: every answer as sorted lines "name<TAB>cents"

# Amounts are whole ten-thousandths in here. Names are compared by their letters and digits: no two
# formats allow the same other characters.
# shellcheck disable=SC2016
awk_library='
  function units(text,   negative, parts, count) {
    gsub(/[^0-9.-]/, "", text)
    negative = sub(/^-/, "", text)
    count = split(text, parts, ".")
    text = parts[1] * 10000 + (count > 1 ? int(("0." parts[2]) * 10000 + 0.5) : 0)
    return negative ? -text : text
  }
  function name(text) {
    gsub(/[^A-Za-z0-9\200-\377]+/, "-", text)
    sub(/^-/, "", text)
    sub(/-$/, "", text)
    return tolower(text)
  }
  function row(key, amount,   cents) {
    cents = int(((amount < 0 ? -amount : amount) + 50) / 100)
    if (cents != 0) printf "%s\t%s%.0f\n", key, (amount < 0 ? "-" : ""), cents
  }
'

# Rows of a quillmarsh report as "indent<TAB>label<TAB>amount"; headings have no amount.
rows_of_report() {
  LC_ALL=C awk '
    match($0, /-?[0-9][0-9,]*\.[0-9][0-9]$/) && RSTART > 1 {
      amount = substr($0, RSTART)
      label = substr($0, 1, RSTART - 1)
      sub(/ +$/, "", label)
      match(label, /^ */)
      print RLENGTH "\t" substr(label, RLENGTH + 1) "\t" amount
      next
    }
    /[A-Za-z]/ { sub(/^ +/, ""); print "0\t" $0 "\t" }
  '
}

# figure NAME KEY [DATES]: a total, from the command that gives it exactly.
figure() {
  local operation=$1 key=$2
  shift 2
  "$quillmarsh" figure "$store" "$operation" "$@" --format json |
    LC_ALL=C awk -v key="$key" "$awk_library"'
      match($0, /"result":"[^"]*"/) { row(key, units(substr($0, RSTART + 10, RLENGTH - 11))) }'
}

# The label of an account is its type and its name; what is owed stands below its heading.
read_quillmarsh_balances() {
  rows_of_report <"$1" | LC_ALL=C awk -F '\t' "$awk_library"'
    $3 == "" && ($2 == "Assets" || $2 == "Liabilities") { side = $2 }
    $3 != "" && index($2, ":") {
      row(name(substr($2, index($2, ":") + 1)), (side == "Liabilities" ? -1 : 1) * units($3))
    }'
  figure TotalAssets "(total assets)" --to "$last_day"
  figure TotalLiabilities "(total liabilities)" --to "$last_day"
}

# Sub-categories stand indented under their category. Totals come from the figures instead, and
# the row of the rest says nothing that the total does not.
read_quillmarsh_flows() { # read_quillmarsh_flows ANSWER QUESTION
  local dates=()
  if [[ -n ${first[$2]:-} ]]; then
    dates=(--from "${first[$2]}" --to "${last[$2]}")
  fi
  rows_of_report <"$1" | LC_ALL=C awk -F '\t' "$awk_library"'
    $3 == "" && $2 == "Income" { kind = "income" }
    $3 == "" && $2 == "Expenses" { kind = "expenses" }
    $3 == "" || $2 ~ /^(Total|All Other) (Income|Expenses)$/ { next }
    $2 == "Expenses Less Income" { next }
    $2 ~ /^(Income|Expenses) - Unassigned$/ { row(kind ":unassigned", units($3)); next }
    $1 <= 2 { category = name($2); row(kind ":" category, units($3)) }
    $1 > 2 { row(kind ":" category ":" name($2), units($3)) }'
  figure TotalIncome "(total income)" "${dates[@]}"
  figure TotalExpenses "(total expenses)" "${dates[@]}"
}

# A peer's answer as "account<TAB>amount".
rows_of_peer() { # rows_of_peer PEER <ANSWER
  case $1 in
    hledger) sed -n -e '1d' -e 's/^"\(.*\)","\(.*\)"$/\1\t\2/p' ;;
    ledger) cat ;;
    beancount) sed -n -e '1d' -e 's/^\([^ ,]*\) *,(\(.*\)).*$/\1\t\2/p' ;;
  esac
}

read_peer_balances() { # read_peer_balances PEER ANSWER
  rows_of_peer "$1" <"$2" | LC_ALL=C awk -F '\t' "$awk_library"'
    {
      amount = units($2)
      row(name(substr($1, index($1, ":") + 1)), amount)
      if (amount > 0) assets += amount; else liabilities -= amount
    }
    END {
      row("(total assets)", assets)
      row("(total liabilities)", liabilities)
    }'
}

# An account is Income or Expenses, then what counts it, the category and perhaps a sub-category.
read_peer_flows() { # read_peer_flows PEER ANSWER
  rows_of_peer "$1" <"$2" | LC_ALL=C awk -F '\t' "$awk_library"'
    {
      split("", part)
      parts = split($1, part, ":")
      kind = tolower(part[1])
      amount = (kind == "income" ? -1 : 1) * units($2)
      if (part[2] == "Household" || part[2] == "Unlisted") total[kind] += amount
      if (part[2] == "Household" || part[2] == "Reimbursed") {
        category = kind ":" name(part[3])
        sum[category] += amount
        if (parts > 3) sum[category ":" name(part[4])] += amount
      }
    }
    END {
      for (key in sum) row(key, sum[key])
      row("(total income)", total["income"])
      row("(total expenses)", total["expenses"])
    }'
}

read_answer() { # read_answer PROGRAM QUESTION
  local answer=$place/$1-$2.answer
  case $1-$2 in
    quillmarsh-balances | plain-balances) read_quillmarsh_balances "$answer" ;;
    quillmarsh-* | plain-*) read_quillmarsh_flows "$answer" "$2" ;;
    *-balances) read_peer_balances "$1" "$answer" ;;
    *) read_peer_flows "$1" "$answer" ;;
  esac | LC_ALL=C sort
}

# ---- timing

time_once() { # time_once PROGRAM QUESTION
  local start=$EPOCHREALTIME end
  "ask_$1" "$2" >"$place/$1-$2.answer"
  end=$EPOCHREALTIME
  echo $((${end/./} - ${start/./})) >>"$place/$1-$2.times"
}

median() { sort -n "$1" | sed -n "$(((rounds + 1) / 2))p"; }

# ---- the run

peers=()
for peer in hledger ledger beancount; do
  if command -v "$(program_of "$peer")" >/dev/null; then
    peers+=("$peer")
  fi
done
if [[ ${#peers[@]} -eq 0 ]]; then
  echo "No peer is installed: hledger, ledger and beancount are what quillmarsh is held against."
  exit 0
fi
for program in "$quillmarsh" "$plain_copy" "$journal_export"; do
  if [[ ! -x $program ]]; then
    echo "Missing: ${program#"$root"/}; build it first." >&2
    exit 2
  fi
done

mkdir -p "$place"
rm -f "$place"/*.answer "$place"/*.times "$place"/*.figures
store=$place/household-$transactions-$years.qm
plain_store=${store%.qm}-plain.qm
journal=${store%.qm}.journal
beancount_journal=${store%.qm}.beancount
"$quillmarsh" sample "$store" --transactions "$transactions" --years "$years" --until "$last_day" \
  --seed 1 --force >/dev/null
"$plain_copy" "$store" "$plain_store"
"$journal_export" "$store" >"$journal"
"$journal_export" "$store" --format beancount >"$beancount_journal"

programs=(quillmarsh plain "${peers[@]}")
for ((round = 0; round < rounds; ++round)); do
  for question in "${questions[@]}"; do
    for program in "${programs[@]}"; do
      time_once "$program" "$question"
    done
  done
done

echo "$(date +%F), $(nproc) cores, $transactions transactions in $years years, median of $rounds"
echo
"$quillmarsh" --version | sed -n '1s/^/- /p'
for peer in "${peers[@]}"; do
  "$(program_of "$peer")" --version | sed -n '1s/^/- /p'
done
echo
echo "| question | program | seconds | times quillmarsh | figures |"
echo "|---|---|---|---|---|"
mismatches=0
for question in "${questions[@]}"; do
  own=$(median "$place/quillmarsh-$question.times")
  for program in "${programs[@]}"; do
    read_answer "$program" "$question" >"$place/$program-$question.figures"
    agreement=""
    if [[ $program != quillmarsh ]]; then
      agreement=agree
      if ! diff "$place/quillmarsh-$question.figures" "$place/$program-$question.figures" \
        >"$place/$program-$question.diff"; then
        agreement=differ
        mismatches=$((mismatches + 1))
      fi
    fi
    awk -v title="${title[$question]}" -v program="$program" -v agreement="$agreement" \
      -v own="$own" -v its="$(median "$place/$program-$question.times")" 'BEGIN {
        printf "| %s | %s | %.3f | %.1f | %s |\n", title, program, its / 1e6, its / own, agreement
      }'
  done
done
if [[ $mismatches -gt 0 ]]; then
  echo
  echo "$mismatches answers differ from quillmarsh's; build/bench/peers/*.diff show where."
  exit 1
fi
