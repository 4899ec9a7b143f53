#!/usr/bin/env bash
# Draws the pictures of docs/images from the program itself, on a virtual screen: docs/captures.sh [NAME...]
set -euo pipefail
cd "$(dirname "$0")/.."
source cmake/installe.sh
source cmake/ecran.sh

installe_paquets construction execution module essais
cmake --preset release >/dev/null
cmake --build --preset release --target kestrel_captures
sous_ecran build/release/tests/kestrel_captures data docs/images "$@"
ls -l docs/images
