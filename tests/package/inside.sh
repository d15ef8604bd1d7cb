#!/bin/sh
# Run by root of a scratch system: installs the packages of both architectures side by side, builds the hosts of
# examples/ against each, runs them and gen_query, removes the packages, and wants nothing to be left.
#   inside.sh PACKAGES
set -eu
cd "$1"
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8
version=$(dpkg-deb -f "$(echo libkorvane-gen1_*_amd64.deb)" Version)

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
    CXXFLAGS=$3 PKG_CONFIG_LIBDIR=/usr/lib/$2/pkgconfig sh /try/hosts.sh "$examples" "/tmp/hosts_$1"
    for program in find_file/find_file cmake_host/build/check_condition make_host/list_sources; do
        ldd "/tmp/hosts_$1/$program" | grep -q "/$2/libkorvane_gen.so.1 " \
            || fail "$program does not use the $1 library"
    done
}
tools() { # tools ARCHITECTURE TRIPLET
    apt install "./korvane-gen-tools_${version}_$1.deb"
    ldd /usr/bin/gen_query | grep -q "/$2/libkorvane_gen.so.1 " || fail "gen_query is not that of $1"
    [ "$(gen_query --version)" = "gen_query $version" ] || fail "$(gen_query --version) is not $version"
    # A tool finds the installation from where it lies, behind a link as well.
    rm -rf "/tmp/suite_$1"
    cp -r "$examples/suite" "/tmp/suite_$1"
    ln -s /usr/bin/gen_query "/tmp/suite_$1/linux"
    (cd "/tmp/suite_$1/project" && PATH=/tmp/suite_$1/linux:$PATH gen_query find mux.sv) >/tmp/found
    [ "$(cat /tmp/found)" = "/tmp/suite_$1/libraries/parablocks/gates/mux.sv" ] || fail "$(cat /tmp/found)"
}

state >/tmp/before
apt install ./libkorvane-gen*.deb "./korvane-gen-tools_${version}_amd64.deb"
verified=$(dpkg --verify libkorvane-gen1:amd64 libkorvane-gen1:i386 \
    libkorvane-gen-dev:amd64 libkorvane-gen-dev:i386 korvane-gen-tools)
[ -z "$verified" ] || fail "not as installed: $verified"
for page in man1/gen_query.1.gz man3/korvane_gen.3.gz man3/gen_path_find.3.gz; do
    [ -s "/usr/share/man/$page" ] || fail "no manual page $page"
done
for file in bash-completion/completions/gen_query zsh/vendor-completions/_gen_query; do
    [ -s "/usr/share/$file" ] || fail "no completion $file"
done
examples=/tmp/examples
mkdir "$examples"
cp -r /usr/share/doc/libkorvane-gen-dev/examples/. /usr/share/doc/korvane-gen-tools/examples/. "$examples"

hosts amd64 x86_64-linux-gnu -m64
hosts i386 i386-linux-gnu -m32
tools amd64 x86_64-linux-gnu
tools i386 i386-linux-gnu
# Neither architecture needs the other.
apt purge libkorvane-gen1:amd64 libkorvane-gen-dev:amd64
hosts i386 i386-linux-gnu -m32
tools i386 i386-linux-gnu
apt purge libkorvane-gen1:i386 libkorvane-gen-dev:i386 korvane-gen-tools:i386

state >/tmp/after
diff /tmp/before /tmp/after >&2 || fail "something is left"
! ldconfig -p | grep korvane >&2 || fail "the linker still knows the library"
echo "package: installed side by side, used, and removed without a trace"
