#!/bin/sh
# Run by root of a scratch system: installs the packages in /try/previous, replaces them by those in /try/packages, both
# architectures side by side, runs the tests of debian/tests against each, removes the packages, and wants nothing to be
# left. Then autopkgtest installs and tries them its own way.
set -eu
cd /try/packages
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8

fail() { # fail WHAT
    echo "package: $*" >&2
    exit 1
}
state() { # every path of the system, every package
    find / \( -path /proc -o -path /sys -o -path /dev -o -path /run -o -path /tmp -o -path /try \
        -o -path /var/cache -o -path /var/log -o -path /var/lib/apt \) -prune -o -print | sort
    dpkg-query -W
}
apt() { # apt COMMAND ARGUMENT...
    apt-get -qq -o Dpkg::Use-Pty=0 "$@" >/tmp/log 2>&1 || {
        cat /tmp/log
        fail "apt-get $*"
    }
}
hosts() { # hosts ARCHITECTURE TRIPLET FLAG
    rm -rf /tmp/hosts
    CXXFLAGS=$3 PKG_CONFIG_LIBDIR=/usr/lib/$2/pkgconfig /try/sources/debian/tests/hosts /tmp/hosts
    for program in find_file/find_file cmake_host/build/check_condition make_host/list_sources; do
        ldd "/tmp/hosts/$program" | grep -q "/$2/libkorvane_gen.so.1 " \
            || fail "$program does not use the $1 library"
    done
    CXXFLAGS=$3 /try/sources/debian/tests/dependencies
}
hardened() { # hardened FILE FLAGS: those of the linker, and checked calls of the C library
    readelf --dynamic --wide "$1" | grep -q "FLAGS_1.* $2" || fail "$1 is not linked as $2"
    nm --dynamic "$1" | grep -q '_chk@' || fail "$1 makes no checked calls"
}
tools() { # tools ARCHITECTURE TRIPLET
    apt install ./korvane-gen-tools_*_"$1".deb
    ldd /usr/bin/gen_query | grep -q "/$2/libkorvane_gen.so.1 " || fail "gen_query is not that of $1"
    hardened /usr/bin/gen_query 'NOW PIE'
    /try/sources/debian/tests/tools
}

state >/tmp/before
apt install /try/previous/libkorvane-gen*.deb /try/previous/korvane-gen-tools_*_amd64.deb
apt install ./libkorvane-gen*.deb ./korvane-gen-tools*_amd64.deb ./python3-*.deb ./tcl-*.deb
installed=$(dpkg-query -W -f '${Package}:${Architecture} ${Version}\n' '*korvane-gen*')
[ "$(echo "$installed" | sort -u -k 2,2 | wc -l)" -eq 1 ] || fail "not all are replaced: $installed"
verified=$(dpkg --verify | grep korvane || true)
[ -z "$verified" ] || fail "not as installed: $verified"
for page in man1/gen_query.1.gz man3/korvane_gen.3.gz man3/gen_path_find.3.gz man3/gen_find_file.3.gz; do
    [ -s "/usr/share/man/$page" ] || fail "no manual page $page"
done
for file in bash-completion/completions/gen_query zsh/vendor-completions/_gen_query \
    fish/vendor_completions.d/gen_query.fish \
    doc/libkorvane-gen1/changelog.gz doc/libkorvane-gen-doc/html/index.html; do
    [ -s "/usr/share/$file" ] || fail "no $file"
done
for library in /usr/lib/*/libkorvane_*.so*; do
    hardened "$library" NOW
done

hosts amd64 x86_64-linux-gnu -m64
hosts i386 i386-linux-gnu -m32
tools amd64 x86_64-linux-gnu
/try/sources/debian/tests/scripts
apt purge python3-korvane-gen tcl-korvane-gen
# Neither architecture needs the other.
tools i386 i386-linux-gnu
apt purge libkorvane-gen1:amd64
hosts i386 i386-linux-gnu -m32
tools i386 i386-linux-gnu
apt purge '?narrow(?installed, ?name(korvane-gen))'

state >/tmp/after
diff /tmp/before /tmp/after >&2 || fail "something is left"
! ldconfig -p | grep korvane >&2 || fail "the linker still knows the library"
echo "package: installed side by side, upgraded, used, and removed without a trace"

autopkgtest --no-built-binaries ./*_all.deb ./*_amd64.deb /try/sources/ -- null >/tmp/log 2>&1 || {
    cat /tmp/log
    fail "autopkgtest"
}
grep -E '^[a-z]+ +PASS' /tmp/log || fail "autopkgtest has run nothing"
