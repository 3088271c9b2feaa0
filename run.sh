#!/usr/bin/env bash
# run.sh [ARGS]: builds the workbench when needed and starts it; ARGS go to the workbench as they are.
# Without ARGS it opens the sample project: in a window, or, where there is no display, in batch mode.
# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

readonly WORKBENCH=$ROOT/build/release/workbench/velmora-workbench
readonly SAMPLE=examples/musterhaus
readonly DOCUMENTS=(_config/data/scenes _config/data/schedule _menu)

# What a person would do in the window: open, look, export. The export runs on a copy, the sample stays as it is.
run_batch_sample() {
    local copy
    copy=$(mktemp -d)
    # shellcheck disable=SC2064 # the name is wanted as it is now
    trap "rm -rf '$copy'" EXIT
    cp -R "$SAMPLE" examples/home "$copy/"
    "$WORKBENCH" --batch --project "$SAMPLE" --picture build/musterhaus.png
    NORHOME=$copy/home KOLT_HOME=$copy/home \
        "$WORKBENCH" --batch --project "$copy/musterhaus" \
        --do scenes=MenuAction_Export --do schedule=MenuAction_Export --do menu=MenuAction_Export \
        --answer yes
    local documents count=0
    for documents in "${DOCUMENTS[@]}"; do
        diff -r "$SAMPLE/$documents" "$copy/musterhaus/$documents" || die "The exported files differ from the sample's."
        count=$((count + $(find "$copy/musterhaus/$documents" -name '*.xml' | wc -l)))
    done
    say "Exported $count files, all equal to the sample's. Picture of the window: build/musterhaus.png"
}

main() {
    scripts/install.sh run
    prepare_environment
    build_preset release
    if [[ $# -gt 0 ]]; then
        # Paths in ARGS are meant as seen from where the caller stands.
        cd "$CALLER_DIR"
        exec "$WORKBENCH" "$@"
    elif has_display; then
        exec "$WORKBENCH" --project "$SAMPLE"
    else
        run_batch_sample
    fi
}

main "$@"
