#!/usr/bin/env bash
# Installs the packages of build/ci, starts their programs as an ordinary user, and removes them.
set -euo pipefail
cd "$(dirname "$0")/.."
source cmake/ecran.sh

debs=("$PWD"/build/ci/*.deb)
sudo=() simple=()
dossier=$(mktemp -d)
if ((EUID == 0)); then # nobody may write where the program stands
    chown nobody "$dossier"
    simple=(setpriv --reuid nobody --regid nogroup --clear-groups)
else
    sudo=(sudo)
fi
simple+=(env HOME="$dossier" XDG_RUNTIME_DIR="$dossier" LIBGL_ALWAYS_SOFTWARE=1)
nettoie() { "${sudo[@]}" apt-get remove -q -y kestrel kestrel-mpi python3-kestrel >/dev/null; rm -rf "$dossier"; }
trap nettoie EXIT
"${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${debs[@]}"

cd "$dossier"
"${simple[@]}" kestrel_batch --version
lignes=$("${simple[@]}" kestrel_batch attitude --pas 1 --ecriture 60 | wc -l)
((lignes > 10)) || { echo "kestrel_batch attitude : $lignes lignes" >&2; exit 1; }
mpi=$("${simple[@]}" env OMPI_ALLOW_RUN_AS_ROOT=1 OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1 \
    mpirun --oversubscribe -np 2 kestrel_batch_mpi balayage --varie bat_c=10,20)
[[ $mpi == "$("${simple[@]}" kestrel_batch balayage --varie bat_c=10,20)" ]] ||
    { echo "kestrel_batch_mpi : $mpi" >&2; exit 1; }
"${simple[@]}" /usr/bin/python3 -c 'import kestrel; assert len(kestrel.Etude().simule_energie()["bat_soc"]) > 10'
"${simple[@]}" timeout 300 xvfb-run -a -s "-screen 0 1366x768x24" kestrel --essai
echo "Les paquets s'installent et leurs programmes démarrent."
