#!/usr/bin/env bash
# Installs the package of build/ci, starts both of its programs as an ordinary user, and removes it.
set -euo pipefail
cd "$(dirname "$0")/.."
source cmake/ecran.sh

deb=$(echo "$PWD"/build/ci/kestrel_*.deb)
sudo=() simple=()
dossier=$(mktemp -d)
if ((EUID == 0)); then # nobody may write where the program stands
    chown nobody "$dossier"
    simple=(setpriv --reuid nobody --regid nogroup --clear-groups)
else
    sudo=(sudo)
fi
simple+=(env HOME="$dossier" XDG_RUNTIME_DIR="$dossier" LIBGL_ALWAYS_SOFTWARE=1)
nettoie() { "${sudo[@]}" apt-get remove -q -y kestrel >/dev/null; rm -rf "$dossier"; }
trap nettoie EXIT
"${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "$deb"

cd "$dossier"
"${simple[@]}" kestrel_batch --version
lignes=$("${simple[@]}" kestrel_batch attitude --pas 1 --ecriture 60 | wc -l)
((lignes > 10)) || { echo "kestrel_batch attitude : $lignes lignes" >&2; exit 1; }
"${simple[@]}" timeout 300 xvfb-run -a -s "-screen 0 1366x768x24" kestrel --essai
echo "Le paquet s'installe et ses deux programmes démarrent."
