#!/usr/bin/env bash
# exports.sh LIBRARY MAP HEADER: holds what LIBRARY exports against MAP, the linker's list of exports, and HEADER, which
# declares them to hosts. The list has one name a line and no wildcards, so that it says what a host finds.
set -euo pipefail
library=$1 map=$2 header=$3
export LC_ALL=C
failed=0
complain() {
    echo "$*" >&2
    failed=1
}

listed=$(sed -e 's:/\*.*\*/::' -e 's:#.*::' "$map" |
    awk '/global:/ { inside = 1; next } /local:/ { inside = 0 } inside && NF' | sed 's/^[[:blank:]]*//; s/[[:blank:]]*$//' | sort)
exported=$(nm -D --defined-only --format=posix "$library" | awk '{ print $1 }' | sort)

[ -n "$listed" ] || complain "$map lists no exports"
if grep -vE '^[A-Za-z_][A-Za-z0-9_]*;$' <<<"$listed" >&2; then
    complain "the lines of $map above are not one plain name each"
fi
grep -qE '^\{' "$map" || complain "the node of $map has a version name; hosts ask for plain names"
if ! diff <(echo "${listed//;/}") <(echo "$exported") >&2; then
    complain "< is listed in the map only, > is exported only"
fi
while read -r name; do
    grep -qE "\b$name(\(|\[\];)" "$header" || complain "$(basename "$header") does not declare $name"
done <<<"$exported"

soname=$(readelf -d "$library" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p')
[ "$soname" = libediexit.so.1 ] || complain "the SONAME is \"$soname\", not libediexit.so.1"
exit "$failed"
