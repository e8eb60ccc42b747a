# shellcheck shell=bash
# Shared by the scripts of this project; sourced, not run.

root=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)

# Debian's packages, by what they are for. The names are the same on Debian 12 and 13.
# shellcheck disable=SC2034  # used by the scripts that source this file
{
  build_packages=(g++ cmake ninja-build libncurses-dev)
  test_packages=("${build_packages[@]}" libgtest-dev libvterm-dev pkg-config)
  package_packages=("${build_packages[@]}" dpkg-dev file)
  coverage_packages=("${test_packages[@]}" gcovr)
  fuzz_packages=("${test_packages[@]}" clang libclang-rt-dev)
  abuse_packages=("${build_packages[@]}" bash dash mksh python3 strace valgrind zsh)
  capture_packages=("${build_packages[@]}" python3 tmux)
  measure_packages=("${build_packages[@]}" libbenchmark-dev mawk python3 strace valgrind)
  lint_packages=(clang-format clang-tidy cppcheck fakeroot git groff-base lintian mandoc shellcheck)
  # Whatever the others name, once.
  mapfile -t all_packages < <(printf '%s\n' "${test_packages[@]}" "${package_packages[@]}" \
    "${coverage_packages[@]}" "${fuzz_packages[@]}" "${abuse_packages[@]}" \
    "${capture_packages[@]}" "${measure_packages[@]}" "${lint_packages[@]}" | sort -u)
}

# Debian's own, whatever comes first in the path.
# shellcheck disable=SC2034
python=/usr/bin/python3

die() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

# verdict TEXT: the last line of a script that has done what it is for.
verdict() { printf '%s: %s\n' "${0##*/}" "$*" >&2; }

require_root() {
  ((EUID == 0)) || die "needs root: nobody else may change the configuration"
}

# require_packages PACKAGE...: installs the Debian packages that are missing, or says how and ends.
require_packages() {
  command -v dpkg-query >/dev/null ||
    die "this is not a Debian system; README.md tells how to build without the scripts"

  local package missing=() as_root=()
  for package in "$@"; do
    [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] ||
      missing+=("$package")
  done
  ((${#missing[@]})) || return 0

  local hint="packages are missing; install them as root:
apt-get update && apt-get install --no-install-recommends ${missing[*]}"
  if ((EUID != 0)); then
    command -v sudo >/dev/null || die "$hint"
    as_root=(sudo)
  fi
  echo "Installing: ${missing[*]}" >&2
  as_root+=(env DEBIAN_FRONTEND=noninteractive apt-get)
  { "${as_root[@]}" update && "${as_root[@]}" install -y --no-install-recommends "${missing[@]}"; } \
    </dev/null >&2 || die "$hint"
}

# configure PRESET [OPTION...]: sets up build/PRESET, with further options for cmake.
configure() {
  local place=$root/build/$1 locked
  while [[ ! -e $place ]]; do place=$(dirname -- "$place"); done
  # Not in the sample, which root may have changed.
  locked=$(find "$place" -path "$root/build/release/sample" -prune -o \
    -type d ! -writable -print -quit)
  [[ -z $locked ]] || die "no permission to write to $locked (made by another user?)"
  cmake -S "$root" --preset "$@"
}

# node_name: prints the node that the release build works on; its target node_name must be built.
node_name() { "$root/build/release/src/platform/node_name"; }

# prepare_sample FOLDER: makes a sample installation with a few records there, unless it has one.
prepare_sample() {
  local node directory
  node=$(node_name) || true
  [[ -n $node ]] || die "the node has no name"
  directory=$1/opr/config/$node
  [[ ! -e $directory/actnode.prf ]] || return 0
  mkdir -p -- "$directory"
  cat >"$directory/actnode.prf" <<'END'
#Event external security configuration
#Format: -n=nodemask,usermask,mode(D|E|W)
-n=alpha,root,E
-n=alpha,oper*,W
-n=beta,root,E
-n=test*,*,D
END
}
