#!/usr/bin/env bash
# Installs what is missing, builds KESTREL and makes its Debian packages; prints their paths: the program, and the
# Python module and the MPI program where they are built.
#   ./paquet.sh [PRESET]      release, or another preset whose build stands already
set -euo pipefail
cd "$(dirname "$0")"
source cmake/installe.sh

preset=${1:-release}
installe_paquets construction execution module paquet
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
rm -f "build/$preset"/*.deb
(cd "build/$preset" && cpack)
# Without its tools cpack makes packages that install, and do not start.
declare -A lie=([kestrel]=libqt6widgets6 [kestrel-mpi]=libopenmpi [python3-kestrel]=libstdc++)
for deb in "build/$preset"/*.deb; do
    nom=$(dpkg-deb --field "$deb" Package)
    dpkg-deb --field "$deb" Depends | grep -qF "${lie[$nom]}" ||
        { echo "$deb : dépendances incomplètes." >&2; exit 1; }
    echo "Paquet : $deb"
done
