# What `run` and `test` share: packages, build, Wine prefix. Sourced, never run.

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
bench_home=$(realpath -m "${VEK_BENCH_HOME:-$root/build/bench}")
out_dir="$root/out"
export VEK_BENCH_HOME="$bench_home"

say() { printf '%s\n' "$*"; }
fail() {
  printf '%s\n' "$*" >&2
  exit 1
}

packages=(
  g++-mingw-w64-x86-64-posix wine wine64 clang libclang-rt-14-dev llvm cmake ninja-build ccache
  libocct-foundation-dev libocct-modeling-data-dev libocct-modeling-algorithms-dev libocct-data-exchange-dev
  libslvs1-dev libfreetype-dev libjpeg-dev libtiff-dev fonts-dejavu-core nlohmann-json3-dev rapidjson-dev googletest curl jq procps librsvg2-bin
  nsis python3 mono-mcs mono-runtime libmono-system-net-http4.0-cil libmono-system-runtime-serialization4.0-cil
)
# The bridge's tests need these, and many machines have them from elsewhere than Debian.
command -v node >/dev/null || packages+=(nodejs)
command -v npm >/dev/null || packages+=(npm)

# Installs those of the packages that are missing, with apt-get.
install_packages() {
  local missing
  missing=$(comm -23 <(printf '%s\n' "${packages[@]}" | sort) \
    <(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "${packages[@]}" 2>/dev/null |
      awk '$2 == "installed" { print $1 }' | sort -u))
  [ -z "$missing" ] && return
  command -v apt-get >/dev/null || fail "This needs Debian 12, or these packages installed by hand:" $missing
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || fail "Run this as root once, or install these packages:" $missing
    as_root=(sudo)
  fi
  say "Installing" $missing
  mkdir -p "$root/build"
  # shellcheck disable=SC2086
  { "${as_root[@]}" apt-get update &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing; } \
    >"$root/build/install.log" 2>&1 </dev/null ||
    fail "The packages could not be installed; build/install.log tells why."
}

# Configures and builds the given presets; quiet unless something is wrong.
build() {
  mkdir -p "$root/build"
  local preset log
  for preset in "$@"; do
    log="$root/build/$preset.log"
    say "Building $preset"
    if ! { cd "$root" && { [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset"; } &&
      cmake --build --preset "$preset"; } >"$log" 2>&1 </dev/null; then
      tail -n 60 "$log" >&2
      fail "The $preset build failed; the whole of it is in build/$preset.log."
    fi
  done
}

# The bench's own Windows: a Wine prefix with drive D for the log and drive O for what a job writes.
prepare_wine() {
  getent hosts localhost >/dev/null ||
    say "The name localhost means nothing here: requests to the companion application will fail. Give it 127.0.0.1 in /etc/hosts."
  local prefix="$bench_home/prefix"
  mkdir -p "$bench_home/drive_d" "$bench_home/work" "$out_dir"
  if [ ! -f "$prefix/.ready" ]; then
    say "Making the Wine prefix"
    rm -rf "$prefix"
    mkdir -p "$prefix"
    WINEPREFIX="$prefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" \
      wine wineboot --init >"$bench_home/wine.log" 2>&1 </dev/null ||
      fail "Wine could not make its prefix; ${bench_home}/wine.log tells why."
    touch "$prefix/.ready"
  fi
  ln -sfn "$bench_home/drive_d" "$prefix/dosdevices/d:"
  ln -sfn "$out_dir" "$prefix/dosdevices/o:"
  install_products
}

# The bench's installation, the companion application, and the add-in as it would be installed: its page lies beside it.
install_products() {
  local built="$root/build/windows" installation="$bench_home/installation"
  local companion="$bench_home/prefix/drive_c/Program Files/Vek"
  rm -rf "$installation"
  mkdir -p "$installation/bin" "$companion" "$bench_home/addin"
  cp -r "$root/bench/installation/." "$installation/"
  cp -r "$root/deploy/text" "$installation/"
  cp "$built/bench/second_session/parametric.exe" "$installation/bin/"
  cp -u "$built/bench/companion/Vek.exe" "$companion/"
  cp -u "$built/addin/VekCreoAddin.dll" "$root/deploy/welcome.html" "$bench_home/addin/"
}

prepare() {
  install_packages
  build "$@"
  prepare_wine
}
