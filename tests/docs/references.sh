#!/usr/bin/env bash
# references.sh PROJECT: holds what the documents name against what is there. In each README and each page of docs/:
# files that a link leads to, files that are named in backticks from a top folder on, and, behind such a name, the tests
# that are told in brackets as `beginning of the name...`. Prints each reference that leads nowhere, and fails if there is
# one.
set -euo pipefail
cd "$1"

failed=0
checked=0

# missing PLACE TEXT: complains of one reference.
missing() {
    echo "$1: $2" >&2
    failed=1
}

while IFS= read -r page; do
    folder=$(dirname "$page")
    while IFS= read -r link; do
        checked=$((checked + 1))
        [ -e "$folder/$link" ] || missing "$page" "links to $link, which is not there"
    done < <(grep -oE '\]\([^)#:]+' "$page" | sed 's/^](//')
    while IFS= read -r path; do
        checked=$((checked + 1))
        [ -e "$path" ] || missing "$page" "names $path, which is not there"
    done < <(grep -oE '`(tests|docs|src|include|bench|scripts|examples|host)/[A-Za-z0-9_./-]+`' "$page" | tr -d '`')
    # A file and its tests: `file` (`name...`, `name`). A suite may stand before the name: `Suite, name`.
    while IFS= read -r reference; do
        file=$(cut -d'`' -f2 <<<"$reference")
        while IFS= read -r name; do
            checked=$((checked + 1))
            name=${name%...}
            grep -qF -- "${name%, }" "$file" || missing "$page" "$file has no test $name"
        done < <(sed 's/^`[^`]*` //' <<<"$reference" | grep -oE '`[^`]+`' | tr -d '`')
    done < <(grep -oE '`tests/[A-Za-z0-9_./-]+` \(`[^)]*`\)' "$page")
done < <(find README.md docs examples src tests -name '*.md' -not -path 'tests/docs/pages/*' | sort)

[ "$checked" -gt 0 ] || missing "$1" "no references were found"
echo "$checked references checked"
exit "$failed"
