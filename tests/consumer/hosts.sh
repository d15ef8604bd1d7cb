#!/bin/sh
# Builds the hosts of examples/ against an installed library, each in its own way, and runs them.
#   hosts.sh EXAMPLES SCRATCH
# CXX, CXXFLAGS, PKG_CONFIG_PATH, CMAKE_PREFIX_PATH and LD_LIBRARY_PATH say which library, as for any program.
set -eu

mkdir -p "$2"
cp -r "$1"/. "$2"
cd "$2"
rm -rf find_file/find_file cmake_host/build make_host/list_sources # of another library
hosts=$(pwd -P)
: "${CXX:=g++}"
export CXX CXXFLAGS="${CXXFLAGS-}"

want() { # want OUTPUT COMMAND...
    wanted=$1
    shift
    printed=$("$@" 2>&1) || true
    [ "$printed" = "$wanted" ] && return
    printf '%s printed\n%s\nand not\n%s\n' "$*" "$printed" "$wanted" >&2
    exit 1
}

cd "$hosts/find_file"
$CXX $CXXFLAGS -std=c++20 main.cpp -o find_file $(pkg-config --cflags --libs korvane_gen)
want "$hosts/find_file/main.cpp" ./find_file main.cpp
want '' ./find_file elsewhere.cpp

cd "$hosts/cmake_host"
cmake -B build >/dev/null
cmake --build build >/dev/null
want 'LOGICAL_AND(EQUAL_TO(HPATH(clk),BUS(1)),TIME_GT(10ns))' \
    build/check_condition '(clk = 1) && (time > 10ns)'

make -s -C "$hosts/make_host" CXX="$CXX" CXXFLAGS="$CXXFLAGS"
cd "$hosts/suite/project"
want "1 $hosts/suite/project/counter.kbd
1 $hosts/suite/project/counter.vhd
1 $hosts/suite/project/counter.v
3 $hosts/suite/project/lib/counter.sv" ../../make_host/list_sources counter lib
