#!/usr/bin/env bash
# Installs what is missing, builds, makes the demo scene, its flipbook and its movie, and says where they are.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

tools/install.sh
cmake --preset release
cmake --build --preset release --target velmor-cli

cli=build/release/src/app/cli/velmor-cli
database="$PWD/build/demo/Database"
scene=Demo
rm -rf "$database/$scene.scene" # of an earlier run; "demo" replaces nothing
"$cli" demo --database "$database"
# A flipbook is filmed from where the camera stands at the cursor frame; the rendered movie follows the fox.
"$cli" flipbook --database "$database" "$scene" --scaling 100 --quality 90 --antialias --cursor 37
"$cli" render --database "$database" "$scene" --format avi --antialias -o build/demo/demo.avi
echo "The flipbook of the scene \"$scene\" is $database/flipbook.avi"
echo "The movie with its moving camera is $PWD/build/demo/demo.avi"
