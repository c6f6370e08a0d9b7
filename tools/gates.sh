#!/usr/bin/env bash
# The checks that take longer than a build and its tests: headers alone, the packages, the command-line tool without Qt and under
# sanitizers, the fuzzed readers, and clang-tidy over what changed since the commit BASE (default: where the branch left
# origin/main).
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
base=${1:-$(git merge-base HEAD origin/main)}

step() {
    printf '== %s (after %d s)\n' "$*" "$SECONDS"
    "$@"
}

step tools/install.sh --gates
step cmake --preset release
step cmake --build --preset release --target headers
step tools/packages.sh
step cmake --preset asan-cli
step cmake --build --preset asan-cli
step ctest --preset asan-cli
step tools/fuzz.sh 30
export TIDY_SECONDS=${TIDY_SECONDS:-300}
step tools/tidy.sh "$base"
echo "== done (after $SECONDS s)"
