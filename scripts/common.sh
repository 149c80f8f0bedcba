# What the commands in this folder share. Sourced, not run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

started=$SECONDS

say() { printf '\n== [%4d s] %s\n' "$((SECONDS - started))" "$*"; }

# build PRESET [TARGET...]: configures and builds, without asking ccache where it is missing.
build() {
  local preset=$1
  shift
  say "building: $preset"
  cmake --preset "$preset" >"build-$preset.log" 2>&1 || { cat "build-$preset.log"; rm -f "build-$preset.log"; return 1; }
  rm -f "build-$preset.log"
  cmake --build "build/$preset" ${1:+--target "$@"}
}
