# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Sourced by .ci/run and .ci/nightly: named stages, of which all run, even after a failure.
failed=()

# stage <name> <command>...
stage() {
    local name=$1 start=$SECONDS
    shift
    printf '\n=== %s\n' "$name"
    if "$@"; then
        printf '=== %s: passed (%d s)\n' "$name" $((SECONDS - start))
    else
        printf '=== %s: FAILED (%d s)\n' "$name" $((SECONDS - start))
        failed+=("$name")
    fi
}

# end_stages: prints what failed. Status 1 if something did.
end_stages() {
    echo
    if [ ${#failed[@]} -gt 0 ]; then
        echo "FAILED after $SECONDS s: ${failed[*]}"
        return 1
    fi
    echo "All passed in $SECONDS s."
}
