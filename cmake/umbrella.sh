#!/usr/bin/env bash
# Writes (or with --check, verifies) ZemTreeRelay/ZemTreeRelay.h: one include of every header of the non-GUI model.
set -euo pipefail
cd "$(dirname "$0")/.."
generate() {
    echo '#pragma once'
    echo
    echo '// Every header of the non-GUI model and its platform layer.'
    echo
    find core collections containers evaluation values contacts results localisation -name '*.h' 2>/dev/null \
        | LC_ALL=C sort | sed 's|.*|#include "&"|'
}
if [ "${1:-}" = "--check" ]; then
    if ! diff <(generate) ZemTreeRelay/ZemTreeRelay.h; then
        echo "ZemTreeRelay/ZemTreeRelay.h is out of date: run cmake/umbrella.sh" >&2
        exit 1
    fi
else
    generate > ZemTreeRelay/ZemTreeRelay.h
fi
