# Shared by ./run, ./test and ./fuzz: what the project needs on a machine, and how it is built. To be sourced.

packages=(cmake g++ ninja-build ccache qt6-base-dev qt6-serialport-dev libcli11-dev nlohmann-json3-dev \
          fonts-inter xvfb xauth xdotool scrot)
fuzz_packages=(clang-14 libclang-rt-14-dev)

# ensure_packages [PACKAGE...]: those that everything needs, and the named ones
ensure_packages() {
    local missing=() package
    for package in "${packages[@]}" "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    echo "Installing: ${missing[*]}"
    local root=()
    [ "$(id -u)" -eq 0 ] || root=(sudo)
    "${root[@]}" apt-get update -qq
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# build PRESET [TARGET...]: everything unless targets are named
build() {
    local preset=$1
    shift
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" ${1:+--target "$@"}
}
