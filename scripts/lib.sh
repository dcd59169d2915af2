# What the scripts share. To be sourced from bash; changes to the repository's root folder.
# shellcheck shell=bash disable=SC2034  # not every script uses every variable
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Debian's packages by purpose.
build_packages=(cmake g++ libcli11-dev ninja-build nlohmann-json3-dev qt6-base-dev)
test_packages=("${build_packages[@]}" libgmock-dev libgtest-dev
  at-spi2-core dbus gir1.2-atspi-2.0 openbox python3-gi xauth xdotool xvfb)  # for the programs on a display
windows_packages=("${test_packages[@]}" g++-mingw-w64-x86-64-posix googletest icoutils
  qt6-base-dev-tools)
clang_packages=("${build_packages[@]}" clang libclang-rt-dev)
icon_packages=(librsvg2-bin)

cores=$(nproc)

# apt_get ARGUMENT...: runs apt-get as root.
apt_get() {
  local root=()
  if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
      echo "There is no sudo, so please do this as root: apt-get $*" >&2
      return 1
    fi
    root=(sudo)
  fi
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=120 "$@" </dev/null
}

# install_packages PACKAGE...: installs those that are missing. Asks no package server anything when
# there is nothing to install, so that the scripts run offline from the second time on.
install_packages() {
  local package missing=()
  for package in "$@"; do
    [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed* ]] ||
      missing+=("$package")
  done
  ((${#missing[@]} > 0)) || return 0
  echo "Installing ${missing[*]}"
  apt_get update
  apt_get install --no-install-recommends "${missing[@]}"
}

# build PRESET [OPTION...]: configures with the options and builds.
build() {
  local preset=$1
  shift
  cmake --preset "$preset" "$@"
  cmake --build --preset "$preset" -j "$cores"
}

# make_scratch: a new folder, removed when the script ends; its path is in $scratch.
make_scratch() {
  scratch=$(mktemp -d)
  trap 'rm -rf "$scratch"' EXIT
}
