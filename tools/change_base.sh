#!/usr/bin/env bash
# Prints the commit that a change starts from: where the branch left origin/main, or, on main itself, the commit that was
# the latest a day before.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
head=$(git rev-parse HEAD)
base=$(git merge-base HEAD origin/main 2>/dev/null || echo "$head")
if [[ $base == "$head" ]]; then
    day=$((24 * 60 * 60))
    base=$(git rev-list -1 --before="$(($(git log -1 --format=%ct) - day))" HEAD)
fi
echo "${base:-$(git rev-list --max-parents=0 HEAD | head -n 1)}"
