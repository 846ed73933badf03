#!/usr/bin/env bash
# completeness.sh ROOT: holds that each numbered rule has its class in the one table, its entry in the reference, and cases: one
# that finds something, and one that stays silent. The inert rules find nothing, so theirs is the silence alone.
set -euo pipefail
cd "$1"
inert=' 32 33 34 35 36 58 59 '
failed=0
complain() {
    echo "rule $1 has no $2" >&2
    failed=1
}

# found FILE...: whether a case expects a finding or a value: a report or contents section with a line in it.
found() { awk '/^\[/ { inside = /^\[(report|contents)\]/; next } inside && /\|/ { seen = 1 } END { exit !seen }' "$@"; }
# silent FILE...: whether a case expects nothing of a rule: an empty report section, or no reply.
silent() {
    awk '/^\[/ { if (empty) seen = 1; empty = /^\[report\]/; if (/^\[no reply\]/) seen = 1; next }
         empty && NF && !/^#/ { empty = 0 }
         END { exit !(seen || empty) }' "$@"
}

count=0
for number in $(seq 1 22) $(seq 24 42) $(seq 48 53) $(seq 58 61) 70 71 80; do
    count=$((count + 1))
    grep -qE "^    \{$number, make" src/rules/catalogue/catalogue.cpp || complain "$number" "line in the table of the catalogue"
    grep -qE "^## Rules? ([0-9, to]*and )?$number\b|^## Rules? .*\b$number\b" docs/rules/*.md || complain "$number" "entry in the reference"
    [[ $inert != *" $number "* ]] || continue
    cases=(tests/cases/rules/rule"$number"/*.case)
    [ -e "${cases[0]}" ] || { complain "$number" "cases"; continue; }
    found "${cases[@]}" || complain "$number" "case that finds something"
    silent "${cases[@]}" || complain "$number" "case that stays silent"
done
registered=$(grep -cE '^    \{[0-9]+, make' src/rules/catalogue/catalogue.cpp)
[ "$registered" = "$count" ] || { echo "the table registers $registered rules, and $count are known" >&2; failed=1; }
echo "$count rules checked"
exit "$failed"
