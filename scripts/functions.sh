# What the scripts of this folder share: where the project lies, and how they speak. Sourced, not run.
set -euo pipefail

project_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() {
    printf '\n== %s\n' "$*"
}

die() {
    printf '\n%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# build_preset PRESET [TARGET]: configures one preset of CMakePresets.json and builds its TARGET, or all of it. Run from
# the project's root.
build_preset() {
    cmake --preset "$1" || die "the preset \"$1\" cannot be configured; what is missing stands above"
    cmake --build --preset "$1" ${2:+--target "$2"} ||
        die "the preset \"$1\" does not build; the first error above says why"
}
