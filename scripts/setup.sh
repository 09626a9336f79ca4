#!/usr/bin/env bash
# Installs what Tarnwick needs on Debian 12 or later, and says what it does. Elsewhere it lists the
# packages by their Debian names and looks for the commands that a build calls.
#
#   scripts/setup.sh             what building and running take
#   scripts/setup.sh --test      also what the tests and scripts/check take
#   scripts/setup.sh --interop   also the foreign programs that some tests compare us with
#   scripts/setup.sh --package   also what making a package takes
#   scripts/setup.sh --fuzz      also what the fuzz preset takes
#   scripts/setup.sh --list      only prints the packages that the other options stand for
set -euo pipefail
export LC_ALL=C

build=(
  g++ cmake ninja-build ccache mold pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-declarative-dev qt6-declarative-dev-tools qt6-svg-dev
  libgl-dev libopengl-dev libegl-dev libexpected-dev libsqlite3-dev libbenchmark-dev
)
run=(
  qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript
  qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-dialogs
  qml6-module-qtquick-layouts qml6-module-qtquick-templates qml6-module-qtquick-window
  qml6-module-qt-labs-folderlistmodel
  qt6-wayland fonts-inter python3
)
test=(
  locales qml6-module-qttest xvfb dbus-daemon at-spi2-core gir1.2-atspi-2.0 python3-gi libx11-6 zsh
  strace
)
check=(
  git clang-format clang-tidy cppcheck shellcheck
  appstream desktop-file-utils lintian mandoc
)
package=(dpkg-dev file gzip)
interop=(python3-mutagen libtag1-dev libxml2-utils sqlite3)
fuzz=(clang libclang-rt-dev)

# What a build and the checks call by name, for systems whose packages are named otherwise.
commands=(c++ cmake ninja python3 git)
os_release=${OS_RELEASE:-/etc/os-release}

wanted=("${build[@]}" "${run[@]}")
list_only=no
for argument in "$@"; do
  case $argument in
    --test) wanted+=("${test[@]}" "${check[@]}" "${package[@]}") ;;
    --interop) wanted+=("${test[@]}" "${check[@]}" "${package[@]}" "${interop[@]}") ;;
    --package) wanted+=("${package[@]}") ;;
    --fuzz) wanted+=("${fuzz[@]}") ;;
    --list) list_only=yes ;;
    *)
      echo "setup.sh: unknown option $argument (known: --test, --interop, --package, --fuzz, --list)" >&2
      exit 2
      ;;
  esac
done
mapfile -t wanted < <(printf '%s\n' "${wanted[@]}" | sort -u)

# Debian's testing and unstable releases carry no VERSION_ID; they are newer than 12.
is_debian_12_or_later() {
  [ -r "$os_release" ] || return 1
  # shellcheck disable=SC1090
  (. "$os_release" && [ "${ID:-}" = debian ] && [ "${VERSION_ID:-99}" -ge 12 ])
}

missing_packages() {
  comm -23 <(printf '%s\n' "${wanted[@]}") <(
    dpkg-query -W -f '${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null |
      sed -n 's/^installed //p' | sort -u
  )
}

if [ $list_only = yes ]; then
  printf '%s\n' "${wanted[@]}"
  exit 0
fi

if ! is_debian_12_or_later; then
  echo "This is not Debian 12 or later, so nothing is installed. Needed, by Debian's names:"
  printf '  %s\n' "${wanted[@]}"
  status=0
  for command in "${commands[@]}"; do
    command -v "$command" >/dev/null || { echo "Not found: $command"; status=1; }
  done
  exit $status
fi

mapfile -t missing < <(missing_packages)
if [ ${#missing[@]} -eq 0 ]; then
  echo "All ${#wanted[@]} packages are installed."
  exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "These packages are missing; as root, run:" >&2
    echo "  apt-get install --no-install-recommends ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo)
fi

echo "Installing ${#missing[@]} packages: ${missing[*]}"
"${as_root[@]}" apt-get update -q </dev/null ||
  echo "The package lists could not all be renewed; going on with those at hand."
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends \
  -o DPkg::Lock::Timeout=300 "${missing[@]}" </dev/null
echo "Installed ${#missing[@]} packages."
