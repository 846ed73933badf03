#!/usr/bin/env bash
# Proves that the checks of the documents see what they are there to see. Makes small projects in a folder of its own, one in
# which every reference leads somewhere, and one for each way to break it.
set -euo pipefail
house=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
decisions=$house/decisions.sh
references=$house/../docs/references.sh
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
work=$scratch/project
failed=0

# project: an orderly project.
project() {
    rm -rf "$work"
    mkdir -p "$work"/{docs,examples,src,tests/unit}
    cd "$work"
    echo 'TEST(Sum, is_kept) {}' >tests/unit/sumtest.cpp
    echo 'See [the decisions](docs/decisions.md) and `tests/unit`.' >README.md
    printf '%s\n' '| Place | Decision | Reason | Shown by |' '|---|---|---|---|' \
        '| A sum | Is kept | | `tests/unit/sumtest.cpp` (`Sum, is_k...`) |' >docs/decisions.md
}

# seen CHECK COMPLAINT: CHECK refuses the project as it stands with COMPLAINT.
seen() {
    local said
    if said=$("$1" "$work" 2>&1) || [[ $said != *"$2"* ]]; then
        echo "not seen: $2; said was: $said" >&2
        failed=1
    fi
}

project
"$decisions" "$work" && "$references" "$work" || failed=1
sed -i 's|`tests/unit/sumtest.cpp`.*|- \||' docs/decisions.md
seen "$decisions" "docs/decisions.md:3: names nothing that shows it"
project
sed -i 's|/sumtest.cpp` (.*)|`|' docs/decisions.md
seen "$decisions" "docs/decisions.md:3: names tests/unit, which is no file"
project
sed -i 's|is kept \|||I' docs/decisions.md
seen "$decisions" "docs/decisions.md:3: has not four columns"
project
sed -i '3d' docs/decisions.md
seen "$decisions" "no decisions were found"
project
mv tests/unit/sumtest.cpp tests/unit/sumstest.cpp
seen "$decisions" "docs/decisions.md:3: names tests/unit/sumtest.cpp, which is no file"
seen "$references" "docs/decisions.md: names tests/unit/sumtest.cpp, which is not there"
project
sed -i 's/is_kept/is_lost/' tests/unit/sumtest.cpp
seen "$references" "docs/decisions.md: tests/unit/sumtest.cpp has no test Sum, is_k"
project
mv docs/decisions.md docs/choices.md
seen "$references" "README.md: links to docs/decisions.md, which is not there"
exit "$failed"
