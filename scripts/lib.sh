# Shared by ./run and ./test: what has to be there before the build, and how to get it.
# Source it; it changes into the project's folder.

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1

BUILD_PACKAGES=(g++ cmake ninja-build ccache pkg-config
    qt6-base-dev qt6-serialport-dev qt6-serialbus-dev qt6-svg-dev libgl1-mesa-dev libegl1
    libfmt-dev nlohmann-json3-dev libcli11-dev
    fonts-dejavu-core fonts-wqy-microhei)
# The toolkit's own texts in Chinese. Without them its buttons and dialogs stay English.
WELCOME_PACKAGES=(qt6-translations-l10n)
TEST_PACKAGES=(libgtest-dev librapidcheck-dev libbenchmark-dev clang-format clang-tidy git python3)

say() { printf '== %s\n' "$*"; }

# Those of its arguments that are not installed, a line each.
missing_packages() {
    local package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || echo "$package"
    done
}

# Installs the packages of its arguments that are not there, naming them first, and with them what is
# merely welcome and comes along if it can be had.
need_packages() {
    local missing=() welcome=()
    mapfile -t missing < <(missing_packages "$@")
    mapfile -t welcome < <(missing_packages "${WELCOME_PACKAGES[@]}")
    # Nobody is asked for a password for the sake of those.
    [ "$(id -u)" -eq 0 ] || [ ${#missing[@]} -gt 0 ] || welcome=()
    [ ${#missing[@]} -eq 0 ] && [ ${#welcome[@]} -eq 0 ] && return 0
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "These packages are needed; install them as root: ${missing[*]}" >&2
            exit 1
        }
        root=(sudo)
    fi
    say "Installing what is missing: ${missing[*]} ${welcome[*]}"
    [ ${#missing[@]} -eq 0 ] || install_packages "${missing[@]}" || {
        echo "The packages could not be installed." >&2
        exit 1
    }
    [ ${#welcome[@]} -eq 0 ] || install_packages "${welcome[@]}" || say "Going on without ${welcome[*]}"
}

# Quiet on success, the whole log on failure. `root` is the caller's.
install_packages() {
    local log status=0
    log=$(mktemp)
    { "${root[@]}" apt-get update -qq &&
        "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "$@"; } >"$log" 2>&1 || {
        status=1
        cat "$log" >&2
    }
    rm -f "$log"
    return $status
}

# configure_and_build <preset> [targets...]: configures only when there is something to configure.
configure_and_build() {
    local preset=$1
    shift
    if [ ! -f "build/$preset/build.ninja" ] || [ CMakePresets.json -nt "build/$preset/build.ninja" ]; then
        say "Configuring ($preset)"
        cmake --preset "$preset" >"build/$preset.configure.log" 2>&1 || {
            cat "build/$preset.configure.log" >&2
            exit 1
        }
    fi
    say "Building ($preset)"
    ninja -C "build/$preset" "$@" || exit 1
}
mkdir -p build
