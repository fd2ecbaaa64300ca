# Sourced by run, test and .ci/run: installs what is missing, and nothing else. For Debian 12.

build_packages=(
  g++ cmake ninja-build pkgconf ccache
  qt6-base-dev
  libmupdf-dev libmujs-dev libgumbo-dev libopenjp2-7-dev libjbig2dec0-dev libjpeg-dev
  libfreetype-dev libharfbuzz-dev zlib1g-dev
  fonts-dejavu-core
)
test_packages=(
  libgtest-dev libgmock-dev libqpdf-dev qpdf poppler-utils openssl man-db
  dbus-daemon desktop-file-utils appstream xvfb xdotool libsm-dev qt6-l10n-tools zsh fish
)
lint_packages=(clang clang-format clang-tidy)

# install_missing PACKAGE...: apt-get install for those that are not there yet.
install_missing() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "These packages are missing, and there is no sudo to install them: ${missing[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  echo "Installing ${missing[*]}" >&2
  "${as_root[@]}" apt-get update -qq >&2 &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

# build PRESET [TARGET...]: configures and builds; the compiler's messages go to standard error.
build() {
  local preset=$1
  shift
  local launcher=()
  if command -v ccache >/dev/null; then
    launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    # What one checkout has compiled serves the next.
    export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros
  fi
  cmake --preset "$preset" "${launcher[@]}" >&2 &&
    cmake --build --preset "$preset" ${1:+--target "$@"} >&2
}
