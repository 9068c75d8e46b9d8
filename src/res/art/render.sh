#!/usr/bin/env bash
# Renders the drawings in this folder to the icons and the splash picture one folder up.
set -euo pipefail

usage() {
    cat <<'EOF'
Usage: render.sh [--sheet FILE.png] [--help]

Renders the SVG drawings beside this script to the finished binaries in the
folder above it: six .ico files and splash.bmp. May be started from any
directory; running it twice gives identical bytes.

  --sheet FILE.png  also write a contact sheet: every icon at its real sizes on
                    light grey, white and dark, and 16/20/24 enlarged 8 times
  --help            show this text

Needs (Debian package names): librsvg2-bin icoutils imagemagick fonts-lato
The variable CONVERT may name another ImageMagick 6 "convert" (default:
/usr/bin/convert).
EOF
}

sheet=
while [ $# -gt 0 ]; do
    case $1 in
        --sheet)
            [ $# -ge 2 ] || { echo "render.sh: --sheet needs a file name" >&2; exit 2; }
            sheet=$2; shift 2 ;;
        --help|-h) usage; exit 0 ;;
        *) echo "render.sh: unknown argument: $1 (try --help)" >&2; exit 2 ;;
    esac
done

art=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
out=$(dirname -- "$art")
convert=${CONVERT:-/usr/bin/convert}

need() { # COMMAND PACKAGE
    command -v "$1" >/dev/null 2>&1 || { echo "render.sh: $1 is missing; install the package $2" >&2; exit 1; }
}
need rsvg-convert librsvg2-bin
need icotool icoutils
need "$convert" imagemagick
if command -v fc-match >/dev/null 2>&1; then
    font=$(fc-match -f '%{family}' Lato)
else # fontconfig's tools are not installed: look for the package's own file
    font=missing
    [ ! -f /usr/share/fonts/truetype/lato/Lato-Bold.ttf ] || font=Lato
fi
case $font in
    Lato*) ;;
    *) echo "render.sh: the font Lato is missing; install the package fonts-lato" >&2; exit 1 ;;
esac

export LC_ALL=C SOURCE_DATE_EPOCH=0
tmp=$(mktemp -d)
trap 'rm -rf -- "$tmp"' EXIT

icons=(site-keeper browse open-folder ledger-composer sheet-writer norm-keeper)
sizes=(16 20 24 32 48 64 256)

# Plain 8-bit RGBA without any text, time or colour-profile chunk.
clean=(-strip -depth 8 -define png:color-type=6 -define png:bit-depth=8
       -define png:exclude-chunks=all -define png:compression-level=9
       -define png:compression-strategy=0)

for icon in "${icons[@]}"; do
    args=()
    for size in "${sizes[@]}"; do
        # 16, 20 and 24 have drawings of their own; the rest share the large one.
        src=$art/$icon-$size.svg
        [ -f "$src" ] || src=$art/$icon.svg
        png=$tmp/$icon-$size.png
        rsvg-convert -w "$size" -h "$size" -o "$tmp/raw.png" "$src"
        if [ "$size" -lt 256 ]; then
            "$convert" "$tmp/raw.png" "${clean[@]}" "$png"
            args+=("$png")
        else
            # Keep whichever PNG row filter packs best.
            rm -f -- "$png"
            for filter in 0 1 2 4 5; do
                "$convert" "$tmp/raw.png" "${clean[@]}" -define png:compression-filter=$filter "$tmp/try.png"
                if [ ! -f "$png" ] || [ "$(stat -c %s "$tmp/try.png")" -lt "$(stat -c %s "$png")" ]; then
                    mv -- "$tmp/try.png" "$png"
                fi
            done
            args+=("--raw=$png")
        fi
    done
    icotool -c -o "$tmp/$icon.ico" "${args[@]}"
    mv -- "$tmp/$icon.ico" "$out/$icon.ico"
done

rsvg-convert -w 500 -h 300 -o "$tmp/splash.png" "$art/splash.svg"
"$convert" "$tmp/splash.png" -background '#10294A' -alpha remove -alpha off -strip -depth 8 \
    -type TrueColor -compress none -define bmp:format=bmp3 "BMP3:$tmp/splash.bmp"
mv -- "$tmp/splash.bmp" "$out/splash.bmp"

[ -n "$sheet" ] || exit 0

# The contact sheet is made from the finished .ico files, not from the drawings.
bands=()
row=0
for icon in "${icons[@]}"; do
    mkdir -p "$tmp/x/$icon"
    icotool -x -o "$tmp/x/$icon" "$out/$icon.ico"
    px() { echo "$tmp"/x/"$icon"/"$icon"_*_"$1"x"$1"x32.png; }
    cells=()
    # light grey, white, dark
    for ground in '#F0F0F0' '#FFFFFF' '#202020'; do
        row=$((row + 1))
        strip=$tmp/strip-$row.png
        "$convert" -size 840x272 "xc:$ground" \
            "$(px 16)" -geometry +8+12 -composite \
            "$(px 20)" -geometry +32+12 -composite \
            "$(px 24)" -geometry +60+12 -composite \
            "$(px 32)" -geometry +92+12 -composite \
            "$(px 48)" -geometry +132+12 -composite \
            "$(px 64)" -geometry +188+12 -composite \
            \( "$(px 16)" -filter point -resize 800% \) -geometry +8+100 -composite \
            \( "$(px 20)" -filter point -resize 800% \) -geometry +152+100 -composite \
            \( "$(px 24)" -filter point -resize 800% \) -geometry +328+72 -composite \
            "$(px 256)" -geometry +550+8 -composite \
            "$strip"
        cells+=("$strip")
    done
    "$convert" "${cells[@]}" +append "$tmp/band-$icon.png"
    bands+=("$tmp/band-$icon.png")
done
"$convert" "${bands[@]}" -append -strip -define png:exclude-chunks=all "PNG24:$sheet"
