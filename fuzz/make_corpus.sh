#!/usr/bin/env bash
# make_corpus.sh CLI FOLDER: makes what the fuzzers start from, in FOLDER/READER: small files of every kind that a
# reader knows, made by the command-line tool CLI, and byte by byte where it makes none.
set -euo pipefail

cli=$(realpath "$1")
corpus=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

rm -rf "$corpus"
for reader in avi bitmap cel csv dialogue history journal notes original packed palette picture piece png scanner settings sound targa tiff wave xdts xsheet; do
    mkdir -p "$corpus/$reader"
done

# le VALUE BYTES...: the number, little-endian, in that many bytes; more pairs may follow.
le() {
    local value i
    while (($#)); do
        value=$1
        for ((i = 0; i < $2; i++)); do
            printf '%b' "\\x$(printf %02x $((value >> 8 * i & 255)))"
        done
        shift 2
    done
}
zeros() { head -c "$1" /dev/zero; }
one() { printf '\0\0\0\0\0\0\360\077'; } # as a real number

# Pictures and movies of a scene, small enough to be changed everywhere in a short time.
database=$work/db
"$cli" demo --database "$database" 2>/dev/null
render=(render --database "$database" Demo --scaling 4)
"$cli" "${render[@]}" --frames 1 --format bmp -o "$corpus/bitmap/rendered" 2>/dev/null
"$cli" "${render[@]}" --frames 1 --format tga -o "$corpus/targa/opaque" 2>/dev/null
"$cli" "${render[@]}" --frames 1 --format tga --levels 1 --transparent -o "$corpus/targa/transparent" 2>/dev/null
"$cli" "${render[@]}" --frames 1 -o "$corpus/png/opaque" 2>/dev/null
"$cli" "${render[@]}" --frames 1 --transparent -o "$corpus/png/transparent" 2>/dev/null
for codec in MSVC MJPEG FFV1 Uncompressed; do
    "$cli" "${render[@]}" --frames 1-3 --format avi --codec "$codec" -o "$corpus/avi/$codec" 2>/dev/null || true
done
"$cli" "${render[@]}" --frames 1-3 --format mp4 -o "$corpus/avi/movie" 2>/dev/null || true
"$cli" flipbook --database "$database" Demo --scaling 10 --frames 1-4 -o "$corpus/avi/flipbook" 2>/dev/null

# The sheet, for other programs.
"$cli" sheet export --database "$database" Demo -o "$corpus/xdts/demo.xdts" 2>/dev/null
"$cli" sheet export --database "$database" Demo -o "$corpus/csv/demo.csv" 2>/dev/null
cat >"$corpus/dialogue/lines" <<'END'
2-5 Ann: Hello
7 : it was: late
END
cat >"$corpus/dialogue/chart" <<'END'
# mouths
a i = 1
oo = 2
rest = 3
END
cat >"$corpus/xdts/small" <<'END'
exchangeDigitalTimeSheet Save Data
{"version":5,"timeTables":[{"name":"c","duration":9,"timeTableHeaders":[{"fieldId":0,"names":["A","B"]}],"fields":[
{"fieldId":0,"tracks":[{"trackNo":1,"frames":[{"frame":-2,"data":[{"id":0,"values":["1"]}]},
{"frame":4,"data":[{"id":0,"values":["SYMBOL_TICK_1"]}]},{"frame":6,"data":[{"id":0,"values":["SYMBOL_NULL_CELL"]}]}]}]},
{"fieldId":3,"tracks":[{"trackNo":0,"frames":[{"frame":2,"data":[{"id":0,"values":["Fox","Meow"]}]}]}]},
{"fieldId":5,"tracks":[]}]}]}
END
printf 'Frame;A;B;Dialogue\n1;1;;\n2;;"2";Fox: Meow\n3;x;;x\n' >"$corpus/csv/small"

# A piece of a cel for the clipboard: two by two pixels, paint and lines.
{
    printf 'VELMORPIECE1.0'
    le 2 4 0 4 5 4 7 4 2 4 2 4
    printf '\001\002\002\002'
    for plane in red green blue alpha; do printf '\200\004'; done
} >"$corpus/piece/small"

# What they become as assets.
import() { "$cli" import "$1" --database "$database" Demo "${@:2}" 2>/dev/null; }
scene=$database/Demo.scene
import cel --folder Small "$corpus"/targa/*.tga
import picture --name Opaque "$corpus"/targa/opaque*.tga
import picture --name Transparent "$corpus"/targa/transparent*.tga
cp "$scene"/Small/*.bit "$corpus/cel/"
cp "$scene"/_Pictures_/{Opaque,Transparent}.rgba "$corpus/picture/"
cp "$scene"/*/*.colors "$corpus/palette/"
cp "$scene/Demo.xsheet" "$corpus/xsheet/"

# A sheet of two frames and a level, with a sound.
{
    printf '\032VELMORLTXSHEETDATAFILEV1.0'
    le 2 4 0xffffff 4 20 4 30 4 25 4 1 4
    for frame in 1 2; do
        zeros 16
        one
        zeros 8
    done
    printf '\001A'
    printf '\001F\0011'
    zeros 16
    one
    one
    zeros 16
    one
    one
    le 10 4 12 4
    zeros 74
    le 1 4 0 4
    printf '\004tick'
} >"$corpus/xsheet/small"

# Notes beside a sheet, one of each kind.
{
    printf 'VELMOR SHEET NOTES 1\nxsheet\t00000000000000ff\n'
    printf 'mark\t1\t2\tkey\tred\ncomment\t1\t2\tup\\nand\\tdown\\\\\n'
    printf 'frame mark\t3\tnone\tblue\nframe comment\t3\tcut\n'
    printf 'sound\t3\tMeow\t10\t20\t-60\ndialogue\t2\t4\tFox\tWho?\ncurve\t7\n'
} >"$corpus/notes/small"

# wave RATE SAMPLES: one of 8 bits.
wave() {
    printf RIFF
    le $((36 + ${#2})) 4
    printf 'WAVEfmt '
    le 16 4 1 2 1 2 "$1" 4 "$1" 4 1 2 8 2
    printf data
    le ${#2} 4
    printf '%s' "$2"
}
wave 22050 abcdefgh >"$work/plain.wav"
wave 11025 abcdefg >"$corpus/wave/slower"
{
    head -c 12 "$work/plain.wav"
    printf LIST # a chunk of an odd length
    le 3 4
    printf 'odd\0'
    tail -c +13 "$work/plain.wav"
} >"$corpus/wave/listed"
cp "$work/plain.wav" "$corpus/wave/"
import sound --name Small "$work/plain.wav"
cp "$scene/_Sounds_/Small.sound" "$corpus/sound/"
# One of two channels, converted.
{
    head -c 22 "$work/plain.wav"
    le 2 2
    tail -c +25 "$work/plain.wav"
} >"$work/stereo.wav"
import sound --convert --name Both "$work/stereo.wav"
cp "$scene/_Sounds_/Both.original" "$corpus/original/"

# targa BITS DESCRIPTOR IDENTIFICATION: 3 x 2 pixels.
targa() {
    le ${#3} 1 0 1 2 1 0 5 0 4 3 2 2 2 "$1" 1 "$2" 1
    printf '%s' "$3"
    head -c $((6 * $1 / 8)) <<<abcdefghijklmnopqrstuvwxyz
}
targa 8 0 '' >"$corpus/targa/grey"
targa 24 32 'a name' >"$corpus/targa/turned"
targa 32 8 '' >"$corpus/targa/alpha"

# A TIFF of 2 x 2 pixels in one strip, red green blue.
{
    printf 'II'
    le 42 2 8 4 9 2
    le 256 2 3 2 1 4 2 4 257 2 3 2 1 4 2 4 258 2 3 2 1 4 8 4 259 2 3 2 1 4 1 4 262 2 3 2 1 4 2 4
    le 273 2 4 2 1 4 122 4 277 2 3 2 1 4 3 4 278 2 3 2 1 4 2 4 279 2 4 2 1 4 12 4 0 4
    printf abcdefghijkl
} >"$corpus/tiff/colors"

# bitmap BITS COMPRESSION COLOURS PIXELS: 4 x 2 pixels, with a table of that many colours.
bitmap() {
    printf 'BM'
    le 0 4 0 4 $((54 + 4 * $3)) 4 40 4 4 4 2 4 1 2 "$1" 2 "$2" 4 0 4 0 4 0 4 "$3" 4 0 4
    local color
    for ((color = 0; color < $3; color++)); do
        le $((color * 0x3f3f3f)) 4
    done
    printf '%b' "$4"
}
bitmap 1 0 2 '\0240\0\0\0\0120\0\0\0' >"$corpus/bitmap/lines"
bitmap 4 0 4 '\001\043\0\0\062\020\0\0' >"$corpus/bitmap/colors4"
bitmap 8 0 4 '\0\001\002\003\003\002\001\0' >"$corpus/bitmap/colors8"
bitmap 8 1 4 '\004\001\0\0\0\003\001\002\003\0\0\002\001\001\0\001' >"$corpus/bitmap/runs8"
bitmap 4 2 4 '\004\022\0\0\0\004\001\043\0\002\001\0\0\001' >"$corpus/bitmap/runs4"
bitmap 16 0 0 'abcdefghijklmnop' >"$corpus/bitmap/words"
bitmap 24 0 0 'abcdefghijklmnopqrstuvwx' >"$corpus/bitmap/bytes"
bitmap 32 3 3 'abcdefghijklmnopqrstuvwxyzabcdef' >"$corpus/bitmap/masks"
for file in "$corpus"/bitmap/*; do
    tail -c +15 "$file" >"$corpus/packed/${file##*/}"
done

# A journal that has only its first bytes, and changes of a good one: of a number in its header, of bytes in the middle of
# the file and of what stands beside it, of how long the two are.
{
    printf '\0SQLite format 3\0\020\0\002\002\0\100\040\040'
    zeros 36
    printf '\0\0\0\001\0\0\0\0VelJ'
    zeros 28
} >"$corpus/journal/header"
printf '\001\360\0\0\074\0\0\0\002' >"$corpus/journal/version"
printf '\001\160\0\060\0\001\002\003\004\161\0\040\0\001\002\003\004' >"$corpus/journal/bytes"
printf '\001\016\0\060\0\0\0\0\0\017\0\060\0\0\0\0\0' >"$corpus/journal/lengths"

# The parts of a history, as they are and with another byte.
for part in 0 1 2 3; do
    printf "\\01$part" >"$corpus/history/good$part"
    printf "\\01$part\\0\\5\\1" >"$corpus/history/changed$part"
done

cat >"$corpus/settings/usual" <<'END'
; by hand
[Settings]
Database Dir = /mnt/Database/
ImportThres = 140
[Remember]
Last Scene = "with \"marks\" and\x0aa line"
Last Folder = Fox
END

# message KIND: the message whose bytes come on standard input.
message() {
    cat >"$work/body"
    le "$1" 1 "$(stat -c %s "$work/body")" 4
    cat "$work/body"
}
text() {
    le ${#1} 4
    printf '%s' "$1"
}
{
    message 0 </dev/null
    printf 'test:0' | message 1
    { le 1 4 300 4; zeros 16; one; one; le 0 4 128 4; } | message 2
    { text test:0; text 'A scanner'; } | message 4
    { le 50 4 1200 4; one; one; le 1 4 75 4 300 4; } | message 5
    le 40 4 | message 6
    { le 0 4 12 4 2 4; printf abcd; } | message 7
    { le 1 4 2 4 1 4; printf abcdef; } | message 7
    printf 'out of paper' | message 9
} >"$corpus/scanner/talk"
