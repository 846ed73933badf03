#!/usr/bin/env bash
# hardening.sh BINARY...: holds each binary against what is shipped: calls bound at load and then read-only, a stack that
# is neither executable nor without guards, checked copies, and marked targets of indirect jumps.
set -euo pipefail
export LC_ALL=C
failed=0

for binary in "$@"; do
    name=$(basename "$binary")
    headers=$(readelf --wide --program-headers --dynamic "$binary")
    imports=$(nm -D --undefined-only "$binary")
    code=$(objdump --disassemble --no-show-raw-insn "$binary")
    # hold WHAT PATTERN TEXT: complains unless a line of TEXT matches.
    hold() {
        grep -qE "$2" <<<"$3" && return
        echo "$name: no $1" >&2
        failed=1
    }
    hold "binding of all calls at load" 'FLAGS.*NOW' "$headers"
    hold "read-only relocations" 'GNU_RELRO' "$headers"
    hold "stack that is not executable" 'GNU_STACK .* RW ' "$headers"
    hold "stack guard" '__stack_chk_fail' "$imports"
    hold "checked copies" '__[a-z]+_chk(@|$)' "$(grep -v __stack_chk_fail <<<"$imports")"
    hold "marked targets of indirect jumps" 'endbr64' "$code"
done
exit "$failed"
