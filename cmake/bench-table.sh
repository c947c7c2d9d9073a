#!/usr/bin/env bash
# Prints the performance table of the README from the console output of zemtree-bench (real time throughout).
#   cmake/bench-table.sh build-bench/bench.txt
set -euo pipefail
out="${1:?usage: bench-table.sh BENCH-OUTPUT}"

awk '
function ms(name,   t, u) {
    if (!(name in realTime)) return -1
    t = realTime[name]; u = unit[name]
    if (u == "ns") return t / 1e6
    if (u == "us") return t / 1e3
    if (u == "s") return t * 1e3
    return t
}
# "2.35M/s" -> 2350000
function perSecond(text,   value, suffix) {
    sub(/\/s$/, "", text)
    suffix = substr(text, length(text))
    value = text + 0
    if (suffix == "k") value *= 1e3
    else if (suffix == "M") value *= 1e6
    else if (suffix == "G") value *= 1e9
    return value
}
function show(value, digits) { return value < 0 ? "–" : sprintf("%." digits "f", value) }
function ratio(a, b) { return (a < 0 || b <= 0) ? "–" : sprintf("%.1f×", a / b) }
# "BM_TreeLoad/100   31.7 ms   26.9 ms   26 fileMB=0.27 heldPerFileByte=12.0 items_per_second=2.35M/s"
/^BM_/ {
    name = $1; sub(/\/real_time$/, "", name)
    realTime[name] = $2; unit[name] = $3
    for (i = 7; i <= NF; ++i) {
        split($i, pair, "=")
        if (pair[1] == "heldPerFileByte") held[name] = pair[2] + 0
        if (pair[1] == "items_per_second") items[name] = perSecond(pair[2])
    }
}
END {
    split("100 1000 5000", sizes, " ")
    printf "| Operation | 100 tests | 1,000 tests | 5,000 tests | Target |\n|---|---|---|---|---|\n"
    row = "| Project load, ms"; for (i = 1; i <= 3; ++i) row = row " | " show(ms("BM_TreeLoad/" sizes[i]), 1); print row " | |"
    row = "| Raw libxml++ parse of the same file, ms"; for (i = 1; i <= 3; ++i) row = row " | " show(ms("BM_TreeRawParse/" sizes[i]), 1); print row " | |"
    row = "| Load ÷ raw parse"; for (i = 1; i <= 3; ++i) row = row " | " ratio(ms("BM_TreeLoad/" sizes[i]), ms("BM_TreeRawParse/" sizes[i])); print row " | ≤ 4× |"
    row = "| Project save, ms"; for (i = 1; i <= 3; ++i) row = row " | " show(ms("BM_TreeSave/" sizes[i]), 1); print row " | |"
    row = "| Raw libxml++ write of the same file, ms"; for (i = 1; i <= 3; ++i) row = row " | " show(ms("BM_TreeRawWrite/" sizes[i]), 1); print row " | |"
    row = "| Save ÷ raw write"; for (i = 1; i <= 3; ++i) row = row " | " ratio(ms("BM_TreeSave/" sizes[i]), ms("BM_TreeRawWrite/" sizes[i])); print row " | ≤ 3× |"
    row = "| Heap held by a loaded project ÷ file size"; for (i = 1; i <= 3; ++i) { n = "BM_TreeLoad/" sizes[i]; row = row " | " ((n in held) ? sprintf("%.1f×", held[n]) : "–") }; print row " | |"
    row = "| Report without images, ms"; for (i = 1; i <= 3; ++i) row = row " | " show(ms("BM_TreeReportWithoutImages/" sizes[i]), 1); print row " | |"
    row = "| Report with an image per test, ms"; for (i = 1; i <= 3; ++i) row = row " | " show(ms("BM_TreeReportWithImages/" sizes[i]), 0); print row " | |"
    row = "| `setIsEvaluated` on the root, ms"; for (i = 1; i <= 3; ++i) row = row " | " show(ms("BM_TreeSetIsEvaluatedOnRoot/" sizes[i]), 2); print row " | |"
    q = "BM_QueueRunOfInstantTests/100"
    printf "| Queue overhead per instant test, µs | %s | | | < 50 µs |\n", ((q in items) && items[q] > 0) ? sprintf("%.1f", 1e6 / items[q]) : "–"
    f = "BM_FormulaEvaluate"
    printf "| Formula evaluations per second | %s | | | |\n", ((f in items) && items[f] > 0) ? sprintf("%.2f million", items[f] / 1e6) : "–"
    printf "| PNG picture (10 curves × 200 points), ms | %s | | | |\n", show(ms("BM_SaveToImage"), 1)
}' "$out"
