#!/usr/bin/env bash
# includes.sh SRC: holds the order of the house. The includes between the folders of SRC run one way, as the table below
# has them, and only xml names the XML parser. Prints each line that breaks the order, and fails if there is one.
set -euo pipefail
cd "$1"

# folder: the folders, or single headers, that it may include beside itself. A file belongs to the longest folder that
# holds it. The list of findings serves walk and rules alike, so the rules may name its header and nothing else of walk;
# that header needs common alone. Of the catalogue, the rules know the table that registers its classes.
order='
common:
grammar: common
rules: common walk/errorinfos.h rules/catalogue/catalogue.h
rules/catalogue: common rules walk/errorinfos.h
walk: common grammar rules
xml: common
exit: common grammar rules walk xml
'

# folder_of PATH: the folder of the table that PATH lies in, or nothing.
folder_of() {
    local folder=$1
    while [[ $folder == */* ]]; do
        folder=${folder%/*}
        if grep -q "^$folder:" <<<"$order"; then
            echo "$folder"
            return
        fi
    done
}

# breach PLACE TEXT: complains of one line.
failed=0
breach() {
    echo "$1: $2" >&2
    failed=1
}

checked=0
while IFS= read -r file; do
    from=$(folder_of "$file")
    [ -n "$from" ] || breach "$file" "lies in no folder that the order knows"
    allowed=$(sed -n "s|^$from:||p" <<<"$order")
    while IFS=: read -r line included; do
        checked=$((checked + 1))
        included=${included#*\"}
        included=${included%\"}
        [ "$included" != ediexit.h ] || continue
        # The compiler looks beside the file first, then from SRC.
        beside=$(realpath -m --relative-to=. "$(dirname "$file")/$included")
        [ ! -e "$beside" ] || included=$beside
        to=$(folder_of "$included")
        [ -e "$included" ] || breach "$file:$line" "includes $included, which is not there"
        [[ " $from $allowed " == *" $to "* || " $allowed " == *" $included "* ]] || breach "$file:$line" "$from may not include $included"
    done < <(grep -nE '^\s*#\s*include\s*"[^"]*"' "$file")
    [ "$from" = xml ] || ! grep -niH xercesc "$file" >&2 || breach "$file" "only xml may name the XML parser"
done < <(find . -name '*.h' -o -name '*.cpp' | sed 's|^\./||' | sort)

[ "$checked" -gt 0 ] || breach "$1" "no includes were found"
echo "$checked includes checked"
exit "$failed"
