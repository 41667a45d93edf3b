# Shared by demo, test and bench/run: sourced from the root of the checkout.

packages=(g++ cmake ninja-build ccache python3 libsqlite3-dev unixodbc-dev libpq-dev libgtest-dev libgmock-dev
          libbenchmark-dev libcli11-dev nlohmann-json3-dev libxlsxwriter-dev libzip-dev libpugixml-dev
          libcpp-httplib-dev libssl-dev pkg-config)

jobs=$(nproc)

say() {
  if [[ -t 1 && -z ${NO_COLOR:-} ]]; then printf '\033[1m== %s\033[0m\n' "$*"; else printf '== %s\n' "$*"; fi
}

as_root() {
  if [[ $(id -u) -eq 0 ]]; then "$@"; else sudo "$@"; fi
}

# Installs the Debian packages that are missing, and only those.
install_packages() {
  if ! command -v dpkg-query >/dev/null; then
    say "No Debian package manager here: going on with what is installed"
    return
  fi
  local missing=() package
  for package in "${packages[@]}"; do
    [[ $(dpkg-query -W -f='${Status}' "$package" 2>/dev/null) == *"ok installed" ]] || missing+=("$package")
  done
  if [[ ${#missing[@]} -eq 0 ]]; then
    say "All packages are installed"
    return
  fi
  say "Installing ${missing[*]}"
  as_root apt-get update -q
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# build PRESET [TARGET…]
build() {
  local preset=$1
  shift
  # Compiler-cache hits survive a move of the checkout.
  export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
  say "Configuring preset $preset"
  cmake --preset "$preset" >/dev/null
  say "Building ${*:-everything} with $jobs jobs"
  cmake --build --preset "$preset" --parallel "$jobs" ${*:+--target "$@"}
}
