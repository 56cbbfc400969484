# shellcheck shell=bash disable=SC2034
# What ./run and ./test share. To be sourced, with $root set to the repository's folder.

# A bare environment has neither of these, and the compiler cache needs a home.
export PATH="${PATH:-/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin}"
if [ -z "${HOME:-}" ]; then
    HOME="$(getent passwd "$(id -u)" | cut -d: -f6)"
    export HOME
fi

: "${root:?}"
logs="$root/build/logs"
# One compiler for every script: a build folder keeps the one that it was made with.
export CXX="${CXX:-g++}"

packages_to_build=(
    g++ cmake ninja-build ccache pkg-config git python3
    qt6-base-dev libmlt-dev libmlt++-dev libmlt-data nlohmann-json3-dev libpugixml-dev libseccomp-dev
    libgtest-dev libgmock-dev libbenchmark-dev
)
packages_to_run=(melt frei0r-plugins ffmpeg fonts-dejavu-core)
packages_to_test=(
    clang-format-14 clang-tidy-14 clang-14 libclang-rt-14-dev xvfb xauth
    at-spi2-core dbus gir1.2-atspi-2.0 python3-gi openbox strace xdotool
)

say() { printf '%s\n' "$*"; }

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        return 1
    fi
}

# quietly LOG COMMAND...: the output goes to the log; of a command that fails, the end of it is shown.
quietly() {
    local log="$logs/$1.log"
    shift
    mkdir -p "$logs"
    if ! "$@" >"$log" 2>&1 </dev/null; then
        tail -n 40 "$log" >&2
        printf 'failed: %s (all of it in %s)\n' "$*" "$log" >&2
        return 1
    fi
}

# need PACKAGE...: installs those that are missing. Does nothing, and asks no network, when none is.
need() {
    command -v dpkg-query >/dev/null || return 0
    local package missing=()
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    say "installing ${missing[*]}"
    local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -q -y)
    if ! quietly packages as_root "${apt[@]}" update ||
        ! quietly packages as_root "${apt[@]}" install --no-install-recommends "${missing[@]}"; then
        fail "please install these packages as root, then try again: ${missing[*]}"
    fi
}

# build PRESET [TARGET...]: configures once and brings the targets up to date, in as few words as there is work.
build() {
    local preset="$1" targets=("${@:2}")
    local folder="$root/build/$preset"
    [ -f "$folder/build.ninja" ] || quietly "configure-$preset" cmake -S "$root" --preset "$preset" || return 1
    if ! ninja -C "$folder" -n "${targets[@]}" 2>/dev/null | grep -q 'no work to do'; then
        say "building $preset in build/$preset (progress in build/logs/build-$preset.log)"
    fi
    quietly "build-$preset" ninja -C "$folder" -k 0 "${targets[@]}"
}
