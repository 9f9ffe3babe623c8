# The scripts of this folder include this file: `. "$(dirname "$0")/common.sh"`. It sets `root` to
# the project's folder and goes there.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

say() { printf '== %s\n' "$*"; }

die() {
  printf 'error: %s\n' "$*" >&2
  exit 1
}

# The packages for every build.
build_packages=(g++ cmake ninja-build pkg-config libcli11-dev libsimpleini-dev nlohmann-json3-dev
  libwxgtk3.2-dev libgtk-3-dev libglib2.0-dev libcurl4-openssl-dev ca-certificates)
test_packages=(libgtest-dev libbenchmark-dev openssl dbus-daemon xvfb openbox xdotool fonts-dejavu-core)
# The packages for building the libraries for Windows, beside the cross compiler.
windows_library_packages=(libz-mingw-w64-dev libcli11-dev nlohmann-json3-dev googletest cmake
  ninja-build make dpkg-dev xz-utils)

# need PACKAGE...: installs the Debian packages that are missing.
need() {
  local package missing=()
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  say "Installing: ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || die "${missing[*]}: not installed, and there is no sudo to do it"
    as_root=(sudo)
  fi
  local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o Dpkg::Use-Pty=0)
  "${apt[@]}" update </dev/null
  "${apt[@]}" install -y --no-install-recommends "${missing[@]}" </dev/null >/dev/null
}

# build PRESET [CMAKE OPTION...]: configures and builds. Prints the log only after a failure.
build() {
  local preset=$1 log
  shift
  say "Building ($preset)"
  log=$(mktemp)
  if ! { cmake --preset "$preset" "$@" && cmake --build --preset "$preset"; } >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    die "the build failed"
  fi
  rm -f "$log"
}
