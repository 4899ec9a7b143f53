#!/usr/bin/env bash
# Draws the pictures of docs/images from the program itself, on a virtual screen: docs/captures.sh [NAME...]
set -euo pipefail
cd "$(dirname "$0")/.."
source cmake/installe.sh
source cmake/ecran.sh

installe_paquets construction execution module essais
cmake --preset ci >/dev/null
cmake --build --preset ci --target kestrel_captures
sous_ecran build/ci/tests/kestrel_captures data docs/images "$@"
ls -l docs/images
