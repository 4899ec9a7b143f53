#!/usr/bin/env bash
# Tries includes across the lines of the house with each target's own compile command: a wrong one must not compile.
# Usage: couches.sh BUILD_FOLDER
set -euo pipefail
base=$1/compile_commands.json
echecs=0

# essaie SOURCE HEADER EXPECTED(oui|non): compiles an include of HEADER as a file of SOURCE's target.
essaie() {
    local commande essai sortie
    commande=$(grep -oP "\"command\": \"\K.*(?= -o [^ ]* -c [^ ]*/$1\")" "$base" | sed 's/\\"/"/g')
    [[ -n "$commande" ]] || { echo "$1 : pas de commande de construction"; exit 1; }
    essai=$(mktemp --suffix=.cpp)
    printf '#include "%s"\n' "$2" >"$essai"
    sortie=non
    eval "$commande -fsyntax-only $essai" >/dev/null 2>&1 && sortie=oui
    rm -f "$essai"
    [[ $sortie == "$3" ]] || { echo "$1 inclut $2 : $sortie, attendu $3"; ((++echecs)); }
}

# A layer sees those below it ...
essaie power/power_step.cpp orbit/math.h oui
essaie project/pwr_fichier.cpp attitude/att_global.h oui
essaie power/windows/vue3d.cpp widgets/fenetre.h oui
# ... and neither those above nor its neighbours.
essaie shell/utilitaires.cpp orbit/math.h non
essaie orbit/math.cpp power/power.h non
essaie power/power_step.cpp attitude/att_global.h non
essaie attitude/att_run.cpp power/power.h non
essaie power/power_step.cpp project/pwr_fichier.h non
essaie power/power_step.cpp widgets/style.h non
essaie widgets/fenetre.cpp shell/session.h non
essaie widgets/fenetre.cpp power/power.h non
essaie power/windows/vue3d.cpp project/windows/exp_data.h non
essaie project/windows/power_conf.cpp power/windows/vue3d.h non
essaie orbit/windows/orbito_conf.cpp shell/windows/menu.h non
((echecs == 0)) && echo "Les lignes de la maison tiennent."
