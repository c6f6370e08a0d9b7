#!/usr/bin/env bash
# Fails, and says where, if clang-format would change a source file.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

find src tests bench \( -name '*.cpp' -o -name '*.h' \) -print0 | xargs -0 -n 20 -P "$(nproc)" clang-format --dry-run --Werror
