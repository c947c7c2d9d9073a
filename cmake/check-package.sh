#!/usr/bin/env bash
# Installs the built libraries into a scratch prefix and builds and runs a small outside project against them,
# once through find_package and once through pkg-config.
set -euo pipefail
build_dir=$1
source_dir=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cmake --install "$build_dir" --prefix "$scratch/prefix" > "$scratch/install.log" || { cat "$scratch/install.log"; exit 1; }
cmake -S "$source_dir/cmake/consumer" -B "$scratch/consumer" -G Ninja -DCMAKE_PREFIX_PATH="$scratch/prefix" > "$scratch/configure.log" || { cat "$scratch/configure.log"; exit 1; }
cmake --build "$scratch/consumer" > "$scratch/build.log" || { cat "$scratch/build.log"; exit 1; }
LD_LIBRARY_PATH="$scratch/prefix/lib:$scratch/prefix/lib64:${LD_LIBRARY_PATH:-}" "$scratch/consumer/consumer"
LD_LIBRARY_PATH="$scratch/prefix/lib:$scratch/prefix/lib64:${LD_LIBRARY_PATH:-}" "$scratch/consumer/consumer-gui"
libdir=$(ls -d "$scratch"/prefix/lib*/pkgconfig | head -n 1)
PKG_CONFIG_PATH="$libdir" c++ -std=c++17 "$source_dir/cmake/consumer/main.cpp" -o "$scratch/pc-consumer" \
    $(PKG_CONFIG_PATH="$libdir" pkg-config --cflags --libs ZemTreeRelay)
LD_LIBRARY_PATH="$(dirname "$libdir")" "$scratch/pc-consumer"
PKG_CONFIG_PATH="$libdir" c++ -std=c++17 "$source_dir/cmake/consumer/gui.cpp" -o "$scratch/pc-consumer-gui" \
    $(PKG_CONFIG_PATH="$libdir" pkg-config --cflags --libs ZemTreeRelayGui)
LD_LIBRARY_PATH="$(dirname "$libdir")" "$scratch/pc-consumer-gui"
# The installed runner starts from its prefix alone, and finds its stylesheet and the sample there.
env -u LD_LIBRARY_PATH "$scratch/prefix/bin/zemtree-run" --help > "$scratch/help.txt"
grep -q "usage: zemtree-run" "$scratch/help.txt"
cp "$scratch/prefix/share/zemtree/sample-project.xml" "$scratch/project.xml"
env -u LD_LIBRARY_PATH "$scratch/prefix/bin/zemtree-run" --check "$scratch/project.xml" \
    --templates "$scratch/prefix/share/zemtree" 2> "$scratch/check.txt" || { cat "$scratch/check.txt"; exit 1; }
