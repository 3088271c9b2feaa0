#!/usr/bin/env bash
# install.sh [run|test|bench|fuzz]: installs the Debian packages of that list which are missing, and the German locale.
# Says nothing and needs no rights when all is there.
# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

readonly RUN_PACKAGES=(
    g++ cmake ninja-build pkg-config
    qt6-base-dev qt6-base-dev-tools qt6-translations-l10n libgl-dev
    libxml2-dev libxslt1-dev libfmt-dev libcsv-dev libicu-dev
    xvfb xauth fonts-dejavu-core
    tzdata locales ca-certificates
)
readonly TEST_PACKAGES=(
    libgtest-dev libgmock-dev
    clang clang-format clang-tidy libclang-rt-14-dev llvm
    xdotool openbox x11-utils libxcb-cursor0
    chromium chromium-driver python3 python3-selenium python3-lxml
    git rsync
)
readonly BENCH_PACKAGES=(libbenchmark-dev xsltproc inotify-tools)
readonly FUZZ_PACKAGES=(clang libclang-rt-14-dev llvm)

packages_of() {
    printf '%s\n' "${RUN_PACKAGES[@]}"
    # A desktop without X needs the toolkit's other window system plugin.
    if [[ -n "${WAYLAND_DISPLAY:-}" && -z "${DISPLAY:-}" ]]; then echo qt6-wayland; fi
    case $1 in
        run) ;;
        test) printf '%s\n' "${TEST_PACKAGES[@]}" ;;
        bench) printf '%s\n' "${BENCH_PACKAGES[@]}" ;;
        fuzz) printf '%s\n' "${FUZZ_PACKAGES[@]}" ;;
        *) die "Unknown package list: $1 (known: run, test, bench, fuzz)" ;;
    esac
}

is_installed() { [[ "$(dpkg-query -W -f '${db:Status-Status}\n' "$1" 2>/dev/null)" == installed* ]]; }

has_german_locale() { grep -qiE '^de_DE\.utf-?8$' < <(locale -a 2>/dev/null); }

install_packages() {
    local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o Acquire::Retries=3)
    say "Installing: $*"
    quietly build/log/apt-update.log as_root "${apt[@]}" update
    quietly build/log/apt-install.log as_root "${apt[@]}" install --no-install-recommends "$@"
}

main() {
    local wanted missing=() package
    wanted=$(packages_of "${1:-run}")
    if ! command -v dpkg-query >/dev/null; then
        say "This is no Debian system; please provide: ${wanted//$'\n'/ }"
        return 0
    fi
    for package in $wanted; do
        is_installed "$package" || missing+=("$package")
    done
    if [[ ${#missing[@]} -gt 0 ]]; then
        install_packages "${missing[@]}"
    fi
    if ! has_german_locale; then
        say "Preparing the German locale ..."
        quietly build/log/locale.log as_root localedef -i de_DE -f UTF-8 de_DE.UTF-8
    fi
}

main "$@"
