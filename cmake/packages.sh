# The Debian 12 packages that ./run and ./test stand on; both read this file.
# shellcheck shell=bash

# shellcheck disable=SC2034  # read by the scripts that source this file
build_packages=(g++ cmake ninja-build ccache libsqlite3-dev libcli11-dev nlohmann-json3-dev libicu-dev)
# shellcheck disable=SC2034
test_packages=(libgtest-dev libgmock-dev libbenchmark-dev clang-format clang-tidy binutils locales)

is_installed() {
  [[ "$(dpkg-query --show --showformat '${db:Status-Status}' "$1" 2>/dev/null)" == installed ]]
}

# install_missing PACKAGE...: installs those that are not there yet, as root or through sudo.
install_missing() {
  local missing=() as_root=() package
  # One question about all of them answers the usual case.
  if [[ "$(dpkg-query --show --showformat '${db:Status-Status}\n' "$@" 2>/dev/null |
    grep -cx installed)" == "$#" ]]; then
    return 0
  fi
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  [[ ${#missing[@]} -gt 0 ]] || return 0
  if [[ "$(id -u)" != 0 ]]; then
    if ! command -v sudo >/dev/null; then
      echo "Missing packages, and neither root nor sudo to install them: ${missing[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  echo "Installing ${missing[*]}" >&2
  as_root+=(env DEBIAN_FRONTEND=noninteractive apt-get -qq -o Dpkg::Use-Pty=0)
  if ! { "${as_root[@]}" update &&
    "${as_root[@]}" install --yes --no-install-recommends "${missing[@]}"; } >&2; then
    echo "Could not install: ${missing[*]}" >&2
    return 1
  fi
}
