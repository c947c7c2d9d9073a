#!/usr/bin/env bash
# Writes (or with --check, verifies) the umbrella headers: ZemTreeRelay/ZemTreeRelay.h includes every header of
# the non-GUI model, ZemTreeRelay/ZemTreeRelayGui.h every header of the presenters and views.
set -euo pipefail
cd "$(dirname "$0")/.."
generate_model() {
    echo '#pragma once'
    echo
    echo '// Every header of the non-GUI model and its platform layer.'
    echo
    find core collections containers evaluation values contacts results localisation -name '*.h' 2>/dev/null \
        | LC_ALL=C sort | sed 's|.*|#include "&"|'
}
generate_gui() {
    echo '#pragma once'
    echo
    echo '// Every header of the presenters and GTK views; link ZemTreeRelayGui.'
    echo
    find presentation -name '*.h' 2>/dev/null | LC_ALL=C sort | sed 's|.*|#include "&"|'
}
if [ "${1:-}" = "--check" ]; then
    status=0
    if ! diff <(generate_model) ZemTreeRelay/ZemTreeRelay.h; then
        echo "ZemTreeRelay/ZemTreeRelay.h is out of date: run cmake/umbrella.sh" >&2
        status=1
    fi
    if ! diff <(generate_gui) ZemTreeRelay/ZemTreeRelayGui.h; then
        echo "ZemTreeRelay/ZemTreeRelayGui.h is out of date: run cmake/umbrella.sh" >&2
        status=1
    fi
    exit $status
else
    generate_model > ZemTreeRelay/ZemTreeRelay.h
    generate_gui > ZemTreeRelay/ZemTreeRelayGui.h
fi
