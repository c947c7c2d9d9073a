#!/usr/bin/env bash
# The layering of the source tree as a rule over include lines. Each area may include only the areas listed for
# it; only presentation/ and the studio under demo/ may include GTK; no library source includes the demo.
#   collections  <  core (common, calculate < tree < formula, device)  <  localisation  <  values, evaluation
#   <  contacts, results  <  containers  <  presentation
# The start-up file containers/ZemTreeRelayTreeResources.cpp registers every node type and so sees every area.
# Usage: check-layers.sh [SOURCE_ROOT]. Prints one line per broken rule and exits 1 when there is any.
set -uo pipefail
root="${1:-$(dirname "$0")/..}"
cd "$root" || exit 2

declare -A allowed=(
    [collections]="collections"
    [core/common]="collections core/common"
    [core/calculate]="collections core/common core/calculate"
    [core/tree]="collections core/common core/calculate core/tree"
    [core/formula]="collections core/common core/calculate core/tree core/formula"
    [core/device]="collections core/common core/calculate core/tree core/device"
    [localisation]="collections core localisation"
    [values]="collections core localisation values"
    [evaluation]="collections core localisation evaluation"
    [contacts]="collections core localisation values contacts"
    [results]="collections core localisation values results"
    [containers]="collections core localisation values evaluation results containers"
    [presentation]="collections core localisation values evaluation results contacts containers presentation"
)
exceptions="containers/ZemTreeRelayTreeResources.cpp"
gui='^#include[[:space:]]*<(gtkmm|gtk|gdkmm|gdk|atkmm|pangomm/|giomm)'
status=0

fail() {
    echo "$1"
    status=1
}

for area in "${!allowed[@]}"; do
    [ -d "$area" ] || continue
    while IFS= read -r file; do
        case " $exceptions " in *" $file "*) continue ;; esac
        while IFS= read -r line; do
            included="${line#*\"}"
            included="${included%%\"*}"
            ok=0
            for permitted in ${allowed[$area]}; do
                case "$included" in "$permitted"/*) ok=1 ;; esac
            done
            # Headers beside the file, without a folder, stay inside the area.
            case "$included" in */*) ;; *) ok=1 ;; esac
            [ $ok -eq 1 ] || fail "$file: includes \"$included\", which $area may not see"
        done < <(grep -hE '^#include[[:space:]]*"' "$file")
        if [ "$area" != presentation ] && grep -qE "$gui" "$file"; then
            fail "$file: includes a GTK header outside presentation/"
        fi
    done < <(find "$area" -name '*.h' -o -name '*.cpp')
done

# The demo's relay and runner are headless programs.
for folder in demo/relay demo/runner; do
    [ -d "$folder" ] || continue
    while IFS= read -r file; do
        grep -qE "$gui" "$file" && fail "$file: includes a GTK header in a headless program"
    done < <(find "$folder" -name '*.h' -o -name '*.cpp')
done
exit $status
