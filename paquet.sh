#!/usr/bin/env bash
# Installs what is missing, builds KESTREL and makes its Debian package; prints its path.
#   ./paquet.sh [PRESET]      release, or another preset whose build stands already
set -euo pipefail
cd "$(dirname "$0")"
source cmake/installe.sh

preset=${1:-release}
installe_paquets construction execution paquet
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
rm -f "build/$preset"/kestrel_*.deb
(cd "build/$preset" && cpack)
deb=$(echo "build/$preset"/kestrel_*.deb)
dpkg-deb --field "$deb" Depends | grep -q libqt6widgets6 || { echo "$deb : dépendances incomplètes." >&2; exit 1; }
echo "Paquet : $deb"
