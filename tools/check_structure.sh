#!/usr/bin/env bash
# Checks the rules of the tree that the compiler cannot see. Prints each place that breaks one; fails if any does.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

faults=0
roots=()
for root in src tests bench fuzz; do
    if [[ -d $root ]]; then roots+=("$root"); fi
done

# report RULE PLACES: PLACES holds one place a line and may be empty.
report() {
    [[ -n $2 ]] || return 0
    faults=$((faults + 1))
    printf '%s:\n' "$1"
    printf '  %s\n' "${2//$'\n'/$'\n'  }"
}

# places PATTERN ALLOWED: the lines that match PATTERN in files whose paths do not match ALLOWED.
places() {
    grep -rnE --include='*.cpp' --include='*.h' -- "$1" "${roots[@]}" | grep -vE -- "^($2)" || true
}

# Each outside library stays in the folders that hide it (the headers' names | the folders | the rule).
nowhere='$'
include='^[[:space:]]*#[[:space:]]*include[[:space:]]*["<]'
while IFS=';' read -r headers folders rule; do
    report "$rule" "$(places "$include($headers)" "$folders")"
done <<'END'
png\.h|pngconf\.h;src/platform/|tests/platform/;libpng is used outside src/platform
libdeflate\.h|isa-l(\.h|/);src/platform/files/Png(File|Deflate)\.cpp;libdeflate or ISA-L is used by other code than what writes PNG files
tiff(io|vers)?\.h;src/platform/|tests/platform/;libtiff is used outside src/platform
sqlite3(ext)?\.h;src/platform/journal/|tests/platform/journal/;SQLite is used outside src/platform/journal
zstd(_errors)?\.h|zdict\.h;src/platform/journal/;zstd is used outside src/platform/journal
SDL\.h|SDL2/|SDL_;src/platform/sdl/;SDL is used outside its module, src/platform/sdl
SimpleIni;src/platform/;SimpleIni is used outside src/platform
hwy/;src/image/|src/render/avi/;Highway is used outside src/image and src/render/avi
CLI/|CLI11;src/app/;CLI11 is used outside src/app
nlohmann/;src/app/|src/xsheet/exchange/|tests/app/;The JSON library is used outside src/app and src/xsheet/exchange
libav[a-z]+/|libsw[a-z]+/;src/platform/ffmpeg/|tests/;The FFmpeg libraries are used outside their module, src/platform/ffmpeg
sane/;src/platform/;SANE is used outside src/platform
gtest/|gmock/;tests/;GoogleTest is used outside the tests
benchmark/;bench/;Google Benchmark is used outside bench
Q[A-Z][A-Za-z]*[>"/]|Qt[A-Z];src/views/|src/app/window/|src/app/manual/|src/app/print/|tests/views/|tests/app/window/|tests/app/native/|bench/window/|bench/qt_anchor/|tests/support/qt/;Qt is used outside src/views and the windowed part of src/app
dlfcn\.h;src/platform/(process/Module|scanner/SourceManagerLibrary)\.cpp|tests/;A library is loaded by other code than what loads modules and source managers
unistd\.h|fcntl\.h|pthread\.h|signal\.h|csignal|pwd\.h|sys/|windows\.h;src/platform/|tests/|bench/|fuzz/;The operating system is called outside src/platform
END

report 'An #include climbs out of its folder' "$(places "${include}[^\">]*\\.\\." "$nowhere")"

report 'Output or a message box outside the command-line tool' "$(
    places '\bstd::(cerr|cout|clog)\b|\b(printf|fprintf|puts|fputs|perror|vprintf)[[:space:]]*\(|\bQ?MessageBoxA?\b' \
        'src/app/cli/|src/views/prompter/QtPrompter[A-Za-z]*\.|tests/|bench/')"

# A variable that stands at the start of a line is one of a namespace: clang-format indents everything else.
mutable_globals() {
    find src -name '*.cpp' -o -name '*.h' | sort | while read -r file; do
        awk -v file="$file" '
            /^(namespace|using|class|struct|enum|union|template|typedef|friend|concept|requires|static_assert|return|public|private|protected|else|do|case|default|goto)([^A-Za-z0-9_]|$)/ { next }
            /^(static |inline )*const [A-Za-z0-9_:]+ ?\*+ ?[A-Za-z_][A-Za-z0-9_]*( = |;|\[|\{)/ { print file ":" FNR ":" $0; next }
            /(^|[^A-Za-z0-9_])(const|constexpr)([^A-Za-z0-9_]|$)/ { next }
            /^([A-Za-z_][A-Za-z0-9_:]* )*[A-Za-z_][A-Za-z0-9_:]*(<.*>)?( |[*&]+ ?| [*&]+)[A-Za-z_][A-Za-z0-9_:]*(\[[^]]*\])*( = | ?\{|;)/ { print file ":" FNR ":" $0 }
        ' "$file"
    done
}
report 'A variable of a namespace can change' "$(mutable_globals)"

# What stands indented with "static" or "thread_local" before it, is no function and can change. Two things belong to
# the whole process: what a signal handler reads, and the threads that divide work.
mutable_statics() {
    find src -name '*.cpp' -o -name '*.h' | sort | grep -vE '^src/platform/(files/UnfinishedFiles|process/Parallel)\.cpp$' |
        while read -r file; do
            awk -v file="$file" '
                /^[ \t]+(inline |static |thread_local )*(static|thread_local) / {
                    code = $0
                    sub(/\/\/.*/, "", code)
                    if (code ~ /(^|[^A-Za-z0-9_])(constexpr|constinit const)[^A-Za-z0-9_]/) next
                    if (code ~ / const / && code !~ /const [A-Za-z0-9_:]+ ?\*+ ?[A-Za-z_]/) next
                    while (gsub(/<[^<>]*>/, "", code)) { }
                    sub(/[={;].*/, "", code)
                    if (code !~ /\(/ && $0 ~ /[={;]/) print file ":" FNR ":" $0
                }
            ' "$file"
        done
}
report 'A static variable can change' "$(mutable_statics)"

report 'Memory is owned by hand (Qt owns its objects; a driver frees what it is given)' "$(
    places '^[^"/]*(\bnew [A-Za-z]|\bdelete [a-z]|\b(malloc|calloc|realloc|free)[[:space:]]*\()' \
        'src/views/|src/app/window/|src/platform/scanner/SourceManagerLibrary\.cpp|tests/|bench/' | grep -v 'unique_ptr<.*new ' || true)"

# A comment gives the reason; "it was always so" and "somebody wants it so" are none.
authority='laid down|\bspec\b|specificat(ion) (says|wants|demands)|established (one|text|name|behaviou?r)|existing profiles'
authority+='|as it always (has|was|did)|for historical reasons|must be kept|(deliberately|purposely) kept|on purpose'
authority+='|\b(issue|ticket|requirement) #?[0-9]+'
report 'Words that give an authority instead of a reason' "$(
    grep -rnEiI --exclude=check_structure.sh -- "$authority" "${roots[@]}" docs tools cmake ./*.md ./*.txt ./*.sh || true)"

# A guide whose signs point nowhere is worse than none.
missing_files() {
    grep -noE '`[a-z]+/[A-Za-z0-9/]+\.(h|cpp)`' docs/tour.md docs/architecture.md | tr -d '`' |
        while IFS=: read -r page line path; do
            [[ -f src/$path || -f $path ]] || echo "$page:$line: $path"
        done
}
report 'A page names a file that is not there' "$(missing_files)"

# The table of layers in the documentation is the one that the build enforces.
documented_layers() {
    awk -F'|' '/^\| *`[a-z]+\/` *\|/ {
        gsub(/[ `\/]/, "", $2)
        gsub(/^ +| +$/, "", $3)
        uses = $3
        if (uses == "-") uses = ""
        if (uses == "all above") uses = above
        gsub(/, */, " ", uses)
        print $2 ":" uses
        above = above (above == "" ? "" : " ") $2
    }' docs/architecture.md
}
built_layers() {
    sed -nE 's/^set\(VELMOR_MAY_USE_([a-z]+) *"?([a-z ]*)"?\)$/\1:\2/p' cmake/Layer.cmake
}
documented=$(documented_layers)
# A program is no layer: nothing stands on it in the build, and it may use everything.
report 'docs/architecture.md and cmake/Layer.cmake differ (< documented, > built)' "$(
    diff <(grep -v '^app:' <<<"$documented" | sort) <(built_layers | sort) | grep '^[<>]' || true)"
for folder in src/*/; do
    name=$(basename "$folder")
    grep -q "^$name:" <<<"$documented" || report 'A folder without a row in docs/architecture.md' "$folder"
done

((faults == 0))
