# Functions around the system's packages. Sourced by the scripts.

scripts_directory=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# The names in the given lists (scripts/packages/NAME.txt), one a line.
package_names() {
    local list
    for list in "$@"; do
        grep -vE '^\s*(#|$)' "$scripts_directory/packages/$list.txt"
    done | sort -u
}

# Those of the given packages that are not installed.
missing_packages() {
    local name
    while read -r name; do
        [[ $(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null || true) == installed ]] || echo "$name"
    done
}

as_root() {
    if [[ $(id -u) -eq 0 ]]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "This needs root rights and there is no sudo. As root: $*" >&2
        exit 2
    fi
}

# For systems without apt: says what their packages are called, and stops.
explain_other_systems() {
    cat >&2 <<'TXT'
This script installs packages with apt, which is not here. Install these by hand, then build with
    cmake --preset release && cmake --build build/release

Fedora:     cmake ninja-build gcc-c++ pkgconf qt6-qtbase-devel libxcb-devel libxkbcommon-devel
            libxkbcommon-x11-devel systemd-devel libcanberra-devel at-spi2-core
Arch Linux: cmake ninja gcc pkgconf qt6-base libxcb libxkbcommon libxkbcommon-x11 systemd-libs libcanberra
            at-spi2-core
openSUSE:   cmake ninja gcc-c++ pkgconf qt6-base-devel libxcb-devel libxkbcommon-devel libxkbcommon-x11-devel
            systemd-devel libcanberra-devel at-spi2-core
TXT
    exit 2
}

# Installs what is missing of the given lists, after saying what and how much.
install_packages() {
    command -v apt-get >/dev/null || explain_other_systems
    local missing
    mapfile -t missing < <(package_names "$@" | missing_packages)
    [[ ${#missing[@]} -gt 0 ]] || return 0
    echo "To be installed with apt: ${missing[*]}"
    # A fresh machine has no lists of packages yet.
    if ! apt-cache show "${missing[@]}" >/dev/null 2>&1; then
        echo "Fetching the lists of packages …"
        as_root apt-get update -qq
    fi
    local options=(--no-install-recommends -q)
    LC_ALL=C apt-get install "${options[@]}" --assume-no "${missing[@]}" 2>/dev/null |
        grep -E '^(Need to get|After this operation)' || true
    if ! as_root env DEBIAN_FRONTEND=noninteractive apt-get install "${options[@]}" -y "${missing[@]}" \
        >"${TMPDIR:-/tmp}/orvantile-apt.log" 2>&1; then
        tail -n 20 "${TMPDIR:-/tmp}/orvantile-apt.log" >&2
        echo "The packages could not be installed." >&2
        exit 2
    fi
}
