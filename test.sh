#!/usr/bin/env bash
# Installs what is missing, builds everything with warnings as errors, and runs every test on a virtual screen.
set -euo pipefail
cd "$(dirname "$0")"
source cmake/installe.sh

installe_paquets construction execution essais
cmake --preset ci
cmake --build --preset ci

# The windows draw in software, in a session of their own.
XDG_RUNTIME_DIR=$(mktemp -d)
export XDG_RUNTIME_DIR LIBGL_ALWAYS_SOFTWARE=1
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
xvfb-run -a -s "-screen 0 1366x768x24" ctest --preset ci
