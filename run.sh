#!/usr/bin/env bash
# Installs what is missing, builds, makes the demo scene and opens the program on it. Without a display it makes the
# scene's flipbook and movie instead, and says where they are.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

tools/install.sh
cmake --preset release
cmake --build --preset release --target velmor-cli personal-velmor manual

cli=build/release/src/app/cli/velmor-cli
program=build/release/src/app/personal-velmor
database="$PWD/build/demo/Database"
scene=Demo
if [[ ! -d "$database/$scene.scene" ]]; then
    "$cli" demo --database "$database"
fi

if [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then
    # Settings of its own, so that a user's own database stays the one that the program opens by itself.
    export XDG_CONFIG_HOME="$PWD/build/demo/settings"
    mkdir -p "$XDG_CONFIG_HOME"
    settings="$XDG_CONFIG_HOME/personal-velmor.ini"
    if [[ ! -f $settings ]]; then
        printf '[Settings]\nDatabase Dir = %s/\n[Remember]\nLast Scene = %s\nLast Folder = Fox\n' \
            "$database" "$scene" >"$settings"
    fi
    exec "$program"
fi

# A flipbook is filmed from where the camera stands at the cursor frame; the rendered movie follows the fox.
"$cli" flipbook --database "$database" "$scene" --scaling 100 --quality 90 --antialias --cursor 37
"$cli" render --database "$database" "$scene" --format avi --antialias -o build/demo/demo.avi
echo "The flipbook of the scene \"$scene\" is $database/flipbook.avi"
echo "The movie with its moving camera is $PWD/build/demo/demo.avi"
