# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

# Sourced by ./demo and ./check: the Debian packages that each needs, and how the missing ones are installed.

build_packages=(ca-certificates ccache cmake g++ gcc libcli11-dev libcpp-httplib-dev libcups2-dev libcupsimage2-dev
  libcurl4-openssl-dev libfmt-dev libpng-dev libpugixml-dev ninja-build nlohmann-json3-dev pkg-config)
demo_packages=("${build_packages[@]}" ghostscript)
check_packages=("${demo_packages[@]}" bash-completion binutils clang clang-format clang-tidy doxygen git libbenchmark-dev
  libclang-rt-14-dev libexpat1-dev libgtest-dev librapidxml-dev libtinyxml2-dev libxml2-dev man-db poppler-utils python3
  valgrind)

as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi; }

is_installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# Installs what is missing of the packages named; elsewhere than on Debian that is the user's to do. $apt_option may hold
# one more option of apt-get's.
install_missing() {
  command -v dpkg-query >/dev/null || return 0
  local package missing=()
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  echo "installing: ${missing[*]}"
  as_root apt-get update -q
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -yq --no-install-recommends \
    ${apt_option:+"$apt_option"} "${missing[@]}"
}
