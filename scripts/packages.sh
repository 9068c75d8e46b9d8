# shellcheck shell=bash
# The Debian packages the commands need, and why. Sourced, never run; needs common.sh.
# shellcheck disable=SC2034,SC2154 # ./run, ./test, ./package and ./bench read the lists, common.sh sets the places

# One line per package: name, then what it is for.
run_packages='
cmake                       the build
ninja-build                 the build
g++-mingw-w64-x86-64-posix  compiles Windows programs
googletest                  the configured build holds the tests too
python3                     so that it finds what its tests are run by
wine                        runs Windows programs
wine64                      runs Windows programs
fp-utils                    compiles the help pages
fonts-wine                  the marks on caption buttons and the system fonts
fonts-lato                  stands in for Segoe UI with its proportions
fonts-dejavu-core           what Wine prints with; an OpenType face makes its PostScript driver crash
xvfb                        the screen when there is none
x11-utils                   asks a screen whether it is usable
imagemagick                 takes the picture of the window
'

package_packages='
wixl                        makes the package for the Windows installer
msitools                    completes its tables, and reads them in the tests
zip                         packs the files for those who copy them
osslsigncode                signs, when a certificate is given
python3                     the bill of materials and the tables of the package
'

bench_packages='
g++                         the native builds
ccache                      makes repeated builds quick
libgtest-dev                unit tests; the configured build holds them
libgmock-dev                unit tests; the configured build holds them
python3                     makes the tables
libbenchmark-dev            benchmarks, compiled by the native builds
pkg-config                  finds the libraries that the store is measured beside
libsimpleini-dev            the store is measured beside it
libinih-dev                 the store is measured beside it
libglib2.0-dev              the store is measured beside its key files
libboost-dev                the store is measured beside its property trees
'

test_packages='
clang                       the second compiler, and the fuzzers
lld                         links what clang compiles
libclang-rt-14-dev          sanitizers and fuzzers of clang
clang-format                the format tier
clang-tidy                  the tidy tier
valgrind                    runs the rules once more
gcovr                       gathers the lines that were counted
xdotool                     mouse and keys in the end-to-end tests
liblnk-utils                reads shortcuts in the end-to-end tests
ghostscript                 makes a PDF of what the end-to-end tests print
poppler-utils               reads the words of that PDF
python3                     counts the results, and is the web server of the tests
unzip                       reads the zip of the package
python3-yaml                reads the manifests of the package
openssl                     makes the certificate of that server, and one to sign with
'

package_names() {
    awk 'NF { print $1 }' <<<"$1"
}

# The names of $1's packages that are not installed, one on a line.
missing_packages() {
    local names installed
    mapfile -t names < <(package_names "$1")
    # dpkg-query fails when it does not know a name; what it prints is complete all the same.
    # shellcheck disable=SC2016 # the braces are dpkg-query's
    installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${names[@]}" 2>/dev/null || true)
    comm -23 <(printf '%s\n' "${names[@]}" | sort -u) <(awk '$2 == "installed" { print $1 }' <<<"$installed" | sort -u)
}

as_root() {
    if ((EUID == 0)); then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "needs root, and sudo is not installed: $*"
        return 1
    fi
}

apt_install() {
    local apt=(apt-get -o DPkg::Lock::Timeout=500 -q)
    as_root env DEBIAN_FRONTEND=noninteractive "${apt[@]}" update
    as_root env DEBIAN_FRONTEND=noninteractive "${apt[@]}" install -y --no-install-recommends "$@"
}

say_missing() {
    local name
    echo 'These Debian packages are missing and will be installed:'
    for name in "${@:2}"; do
        awk -v name="$name" '$1 == name { print "  " $0; exit }' <<<"$1"
    done
}

# Installs what is missing of the listed packages, and says nothing when nothing is.
ensure_packages() {
    local wanted=$1 missing
    if ! command -v dpkg-query >/dev/null; then
        echo 'This is not a Debian system: the tools named in scripts/packages.sh must be there already.'
        return
    fi
    mapfile -t missing < <(missing_packages "$wanted")
    ((${#missing[@]} > 0)) || return 0
    say_missing "$wanted" "${missing[@]}"
    # A password is asked for here, where the terminal can answer; the step itself has no input.
    if ((EUID != 0)) && command -v sudo >/dev/null; then
        sudo -n true 2>/dev/null || sudo -v || fail 'root rights are needed to install packages'
    fi
    step 'Installing packages' "$log_dir/packages.log" apt_install "${missing[@]}"
}
