# Building. Sourced by the scripts.

# Configures the preset when needed and builds the targets (all without any), quietly unless something fails.
build_preset() {
    local preset=$1
    shift
    local log targets=()
    log=$(mktemp)
    [[ $# -eq 0 ]] || targets=(--target "$@")
    # shellcheck disable=SC2154 # whoever sources this sets it or not
    if ! { cmake --preset "$preset" ${configure_options[@]+"${configure_options[@]}"} &&
        cmake --build "build/$preset" "${targets[@]}"; } >"$log" 2>&1; then
        tail -n 60 "$log" >&2
        rm -f "$log"
        echo "The build of preset “$preset” has failed." >&2
        exit 1
    fi
    rm -f "$log"
}
