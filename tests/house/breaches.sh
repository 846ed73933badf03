#!/usr/bin/env bash
# Proves that includes.sh sees what it is there to see. Makes small source trees in a folder of its own, one that keeps the
# order and one for each way to break it.
set -euo pipefail
check=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/includes.sh
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

# tree: an orderly tree.
tree() {
    rm -rf "$work/src"
    mkdir -p "$work/src"/{common,walk,exit,xml,rules/catalogue}
    cd "$work/src"
    touch common/text.h walk/errorinfos.h
    echo '#include "common/text.h"' >walk/walk.h
    printf '#include "common/text.h"\n#include "walk/errorinfos.h"\n' >rules/rule.h
    echo '#include "rules/rule.h"' >rules/catalogue/sums.h
    printf '#include <string>\n#include "ediexit.h"\n#include "walk/walk.h"\n' >exit/exit.cpp
    echo '#include <xercesc/sax2/DefaultHandler.hpp>' >xml/parser.h
}

# seen COMPLAINT: the tree as it stands is refused with COMPLAINT.
seen() {
    local said
    if said=$("$check" "$work/src" 2>&1) || [[ $said != *"$1"* ]]; then
        echo "not seen: $1; said was: $said" >&2
        failed=1
    fi
}

tree
"$check" "$work/src" || failed=1
echo '#include "walk/walk.h"' >common/upward.h
seen "common/upward.h:1: common may not include walk/walk.h"
tree
echo '  # include "../exit/exit.cpp"' >>walk/walk.h
seen "walk/walk.h:2: walk may not include exit/exit.cpp"
tree
echo '#include "rules/catalogue/sums.h"' >>rules/rule.h
seen "rules/rule.h:3: rules may not include rules/catalogue/sums.h"
tree
echo '#include "walk/walk.h"' >>rules/rule.h
seen "rules/rule.h:3: rules may not include walk/walk.h"
tree
echo '#include "common/absent.h"' >>walk/walk.h
seen "walk/walk.h:2: includes common/absent.h, which is not there"
tree
echo '#include <xercesc/sax2/DefaultHandler.hpp>' >>exit/exit.cpp
seen "exit/exit.cpp: only xml may name the XML parser"
tree
mkdir attic && touch attic/old.cpp
seen "attic/old.cpp: lies in no folder that the order knows"
exit "$failed"
