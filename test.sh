#!/usr/bin/env bash
# Installs what is missing, builds everything with warnings as errors, and runs every test on a virtual screen,
# those of files, formats and windows under a French locale too.
set -euo pipefail
cd "$(dirname "$0")"
source cmake/installe.sh
source cmake/ecran.sh

installe_paquets construction execution module essais
cmake --preset ci
cmake --build --preset ci
sous_ecran ctest --preset ci
