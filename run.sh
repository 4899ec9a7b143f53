#!/usr/bin/env bash
# Installs what is missing, builds KESTREL and starts it. Without a display a sample satellite runs through the
# batch program instead.
#   ./run.sh [PROJECT]
#   ./run.sh --python [SCRIPT]    Python with the module kestrel on its path
set -euo pipefail
cd "$(dirname "$0")"
source cmake/installe.sh

if [[ ${1:-} == --python ]]; then
    shift
    installe_paquets construction execution module
    echo "Construction (build/release)..."
    cmake --preset release >/dev/null
    cmake --build --preset release --target kestrel_python
    export PYTHONPATH="$PWD/build/release/python${PYTHONPATH:+:$PYTHONPATH}"
    (($#)) && exec /usr/bin/python3 "$@"
    echo "import kestrel est fait ; help(kestrel) et docs/python.md disent la suite."
    exec /usr/bin/python3 -i -c "import kestrel"
fi

installe_paquets construction execution
echo "Construction (build/release)..."
cmake --preset release >/dev/null
cmake --build --preset release --target kestrel kestrel_batch

if [[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]]; then
    echo "Démarrage de KESTREL."
    exec build/release/cmake/program/kestrel "$@"
fi

exemple=data/exemples/microsatellite
echo
echo "Pas d'écran (DISPLAY et WAYLAND_DISPLAY sont vides) : l'exemple « Microsatellite 3 axes » passe par kestrel_batch"
echo "($exemple.pwr et .orb)."
build/release/batch/kestrel_batch energie --orb $exemple.orb --pwr $exemple.pwr -o resultats.csv \
    --colonnes sim_date,eclipse,gen_power,p_demande,p_payload,p_excess,bat_soc,bat_v,t_bat,node_t_0
LC_ALL=C awk -F, '
    NR == 1 { for (i = 1; i <= NF; ++i) c[$i] = i; next }
    {
        ++n
        fin = $c["sim_date"]
        if (n == 1) { debut = fin; soc_min = soc_max = $c["bat_soc"] }
        if ($c["bat_soc"] < soc_min) soc_min = $c["bat_soc"]
        if ($c["bat_soc"] > soc_max) soc_max = $c["bat_soc"]
        if ($c["eclipse"] != 0) ++nuit
        gs += $c["gen_power"]
        cu += $c["p_payload"]
        demande += $c["p_demande"]
        if ($c["p_payload"] < $c["p_demande"] - 0.01) ++manque
    }
    END {
        if (n == 0) exit 1
        printf "\nMicrosatellite 3 axes : %d pas sur %.0f min\n", n, (fin - debut) * 1440
        printf "  en éclipse               %6.1f %% des pas\n", 100 * nuit / n
        printf "  générateur solaire       %6.1f W en moyenne\n", gs / n
        printf "  charge utile             %6.1f W en moyenne, pour %.1f W demandés\n", cu / n, demande / n
        printf "  charge de la batterie    %6.1f %% à %.1f %%\n", 100 * soc_min, 100 * soc_max
        printf "  charge utile non alimentée %4d pas\n", manque
    }' resultats.csv
echo "Les lignes : resultats.csv"
