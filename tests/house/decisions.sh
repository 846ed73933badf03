#!/usr/bin/env bash
# decisions.sh ROOT: holds that each row of docs/decisions.md has its four columns, and names in the last one a file of the
# tests that shows the decision. A folder shows nothing. Prints each row that doesn't, and fails if there is one.
set -euo pipefail
cd "$1"
page=docs/decisions.md

failed=0
checked=0
complain() {
    echo "$page:$1: $2" >&2
    failed=1
}

while IFS=: read -r number row; do
    [[ $row != "| Place |"* && $row != "|---"* ]] || continue
    checked=$((checked + 1))
    IFS='|' read -ra columns <<<"$row"
    [ "${#columns[@]}" = 5 ] || { complain "$number" "has not four columns"; continue; }
    shown=0
    while IFS= read -r path; do
        [ -f "$path" ] || complain "$number" "names $path, which is no file"
        shown=1
    done < <(grep -oE '`tests/[^`]+`' <<<"${columns[4]}" | tr -d '`')
    [ "$shown" = 1 ] || complain "$number" "names nothing that shows it"
done < <(grep -nE '^\|' "$page")

[ "$checked" -gt 0 ] || complain 0 "no decisions were found"
echo "$checked decisions checked"
exit "$failed"
