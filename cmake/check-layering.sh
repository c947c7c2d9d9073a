#!/usr/bin/env bash
# Fails when a file of the non-GUI model includes a presenter, a view or a GTK header: the model is built without
# GTK's flags, and a headless program links it alone.
set -euo pipefail
cd "$(dirname "$0")/.."
model_dirs="core collections containers evaluation values contacts results localisation"
found=$(grep -rnE '^[[:space:]]*#[[:space:]]*include[[:space:]]*[<"](presentation/|gtkmm|gtk/|gtk\.h|gdkmm|gdk/|gdk\.h|glibmm|giomm|atkmm|pangomm)' \
    --include='*.h' --include='*.cpp' $model_dirs || true)
if [ -n "$found" ]; then
    echo "The model includes GUI headers:" >&2
    echo "$found" >&2
    exit 1
fi
