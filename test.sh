#!/usr/bin/env bash
# Installs what is missing, builds everything and runs all tests.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

tools/install.sh
cmake --preset release
cmake --build --preset release
ctest --preset release
