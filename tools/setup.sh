# Sourced by ./run and ./test: the packages of tools/packages.txt, installed where they are missing, and the build.

say() { printf '== %s\n' "$*"; }

# install_missing [test]: with "test" also what only ./test needs.
install_missing() {
    local kind=${1-} word package wanted=() missing=()
    while read -r word package; do
        case $word in
            '' | '#'*) ;;
            test) [ "$kind" != test ] || wanted+=("$package") ;;
            *) wanted+=("$word") ;;
        esac
    done <tools/packages.txt
    for package in "${wanted[@]}"; do
        dpkg-query -W -f='${Status}\n' "$package" 2>/dev/null | grep -q '^install ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { echo "Missing packages, and no sudo to install them: ${missing[*]}" >&2; return 1; }
        root=(sudo)
    fi
    say "Installing ${missing[*]}"
    mkdir -p build
    { "${root[@]}" apt-get -q update &&
        "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qy install --no-install-recommends "${missing[@]}"; } \
        </dev/null >build/packages.log 2>&1 || {
        tail -20 build/packages.log >&2
        echo "Could not install: ${missing[*]}" >&2
        return 1
    }
}

# build PRESET [TARGET...]: configures once, then builds what is out of date; prints nothing but warnings and errors.
build() {
    local preset=$1
    shift
    mkdir -p build
    if [ ! -f "build/$preset/build.ninja" ]; then
        cmake --preset "$preset" >"build/$preset.log" 2>&1 || { cat "build/$preset.log" >&2; return 1; }
    fi
    cmake --build --preset "$preset" ${1+--target "$@"} -- --quiet >"build/$preset.log" 2>&1 || {
        tail -60 "build/$preset.log" >&2
        return 1
    }
}
