# Shared by the scripts that build; sourced by bash with the checkout as working directory.

# What building and running needs on Debian 12.
RUN_PACKAGES=(g++ cmake ninja-build ccache qt6-base-dev qtkeychain-qt6-dev libsecret-1-0 libgl-dev firebird-dev firebird3.0-server-core
    firebird3.0-utils libqt6sql6-odbc libqt6svg6 breeze-icon-theme qt6-translations-l10n
    fonts-dejavu-core fonts-liberation2)
# What the tests need besides.
TEST_PACKAGES=(git dbus-daemon python3 clang-format clang-tidy poppler-utils firebird3.0-server libqt6sql6-ibase
    libxml2-utils python3-a38)

say() {
    printf '%s\n' "$*" >&2
}

# The database engine takes file names in the locale's character set: without UTF-8 it refuses accented letters in them.
# Remote logins, containers and scheduled jobs often have no locale at all.
use_utf8() {
    [ "$(locale charmap 2>/dev/null)" = UTF-8 ] || export LC_ALL=C.UTF-8
}

# An account without a home of its own still needs a place for the compiler cache.
prepare_environment() {
    if [ ! -w "${HOME:-/nonexistent}" ] && [ -z "${CCACHE_DIR:-}" ]; then
        export CCACHE_DIR="$PWD/build/.ccache"
    fi
}

is_installed() {
    # A virtual package (libgl-dev) counts when another one provides it.
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ] ||
        dpkg-query -W -f '${db:Status-Status} ${Provides}\n' 2>/dev/null |
        grep -Eq "^installed .*\b${1//+/\\+}( |,|\$)"
}

# Prints the command that gives root's rights, nothing for root itself; fails when there is none.
root_command() {
    if [ "$(id -u)" = 0 ]; then
        return 0
    fi
    command -v sudo >/dev/null || return 1
    # Without a terminal nobody could type a password.
    sudo -n true 2>/dev/null || [ -t 0 ] || return 1
    echo sudo
}

# Debian starts a server right after installing it. The tests run a private one, so the packaged one must not start,
# neither now nor at the next boot. A subshell, so that its trap also cleans up after an interruption: a policy file
# left behind would keep every later package from starting its service. What apt says is shown only when it fails.
install_quietly() (
    as_root=$1 policy=/usr/sbin/policy-rc.d made_policy= result=0
    shift
    log=$(mktemp)
    clean() {
        rm -f "$log"
        [ -z "$made_policy" ] || $as_root rm -f "$policy"
    }
    trap clean EXIT
    if [ ! -e "$policy" ]; then
        made_policy=yes
        printf '#!/bin/sh\nexit 101\n' | $as_root tee "$policy" >/dev/null
        $as_root chmod +x "$policy"
    fi
    # A fresh machine may still be updating itself: wait for the package manager rather than fail.
    { $as_root apt-get update -qq &&
        $as_root env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 install -y -qq \
            --no-install-recommends "$@"; } >"$log" 2>&1 || result=$?
    [ "$result" -eq 0 ] || cat "$log" >&2
    case " $* " in
    *" firebird3.0-server "*) $as_root update-rc.d firebird3.0 disable >/dev/null 2>&1 || true ;;
    esac
    exit "$result"
)

# Installs those of the named packages that are missing; touches nothing when none is.
need_packages() {
    if ! command -v dpkg-query >/dev/null; then
        say "Not a Debian system: the needed packages are taken as present."
        return 0
    fi
    local missing=() package as_root
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if ! as_root=$(root_command); then
        say "Missing packages: ${missing[*]}"
        say "They can only be installed by root or with sudo. Please run:  apt-get install ${missing[*]}"
        say "Pacchetti mancanti: possono essere installati solo da root o con sudo. Eseguire il comando qui sopra."
        return 1
    fi
    say "Installing / installazione: ${missing[*]}"
    if ! install_quietly "$as_root" "${missing[@]}"; then
        say "The packages could not be installed (is the network reachable?)."
        say "Non è stato possibile installare i pacchetti (la rete è raggiungibile?)."
        return 1
    fi
}

is_writable_checkout() {
    if [ -d build ]; then [ -w build ]; else [ -w . ]; fi
}

say_read_only() {
    say "The folder $PWD is read-only for this account: the program cannot be built here."
    say "La cartella $PWD è di sola lettura per questo utente: il programma non può essere compilato qui."
}

# Configures and builds a preset, or one target of it; the output is shown only when it fails.
build_preset() {
    local preset=$1 target=${2:-all} log
    log=$(mktemp)
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" -j "$(nproc)" --target "$target"; } >"$log" 2>&1
    then
        cat "$log" >&2
        rm -f "$log"
        say "Build failed / compilazione non riuscita ($preset)."
        return 1
    fi
    rm -f "$log"
}

has_display() {
    [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]
}
