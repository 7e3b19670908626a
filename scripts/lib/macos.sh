# Building, packaging and starting on a Mac. Sourced by the scripts; runs with the old bash that a Mac has.

# Makes sure of the compiler and, with Homebrew, of the given tools: names of programs, or `qt` or `googletest`.
install_mac_tools() {
    if ! xcode-select -p >/dev/null 2>&1; then
        echo "Apple's command line tools are missing. Run: xcode-select --install" >&2
        exit 2
    fi
    if ! command -v brew >/dev/null; then
        echo "Homebrew (https://brew.sh) is missing: it brings $*." >&2
        exit 2
    fi
    local tool missing=""
    for tool in "$@"; do
        command -v "$tool" >/dev/null || brew list --versions "$tool" >/dev/null 2>&1 || missing="$missing $tool"
    done
    [[ -n $missing ]] || return 0
    echo "To be installed with Homebrew:$missing"
    # shellcheck disable=SC2086 # names without blanks
    brew install --quiet $missing
}

# What CMake is told on a Mac, in configure_options.
configure_for_mac() {
    # shellcheck disable=SC2034 # read by build_preset
    configure_options=("-DCMAKE_PREFIX_PATH=$(brew --prefix qt);$(brew --prefix)" -DORVANTILE_WARNINGS_ARE_ERRORS=OFF)
}

# Makes build/macos/Orvantile.app, which needs nothing of what it was built with, signs it and packs it into a disk
# image. The signature is ad hoc unless ORVANTILE_SIGN_AS names an identity; with an ad hoc signature the system asks
# for the permission anew after each build.
package_for_mac() {
    local app=build/macos/Orvantile.app
    rm -rf build/macos
    mkdir -p build/macos
    ditto build/release/bin/Orvantile.app "$app"
    "$(brew --prefix qt)/bin/macdeployqt" "$app" -verbose=1
    codesign --force --deep --sign "${ORVANTILE_SIGN_AS:--}" "$app"
    codesign --verify --deep --strict "$app"
    hdiutil create -quiet -volname Orvantile -srcfolder "$app" -format UDZO -ov build/macos/Orvantile.dmg
    echo "Packed: build/macos/Orvantile.dmg"
}

run_on_mac() {
    install_mac_tools cmake ninja qt
    configure_for_mac
    echo "Building …"
    build_preset release orvantile
    package_for_mac
    [[ ${1:-} == --package ]] || open build/macos/Orvantile.app
}

# The tests that are the same on all systems, and the conformance to the SDK, which is tested by compiling it.
test_on_mac() {
    install_mac_tools cmake ninja qt googletest
    configure_for_mac
    echo "Building …"
    build_preset dev all
    ctest --test-dir build/dev --output-on-failure "$@"
}
