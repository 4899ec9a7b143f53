#!/usr/bin/env bash
# Installs what is missing, builds KESTREL and starts it. Without a display the default project runs through
# the batch program instead.
set -euo pipefail
cd "$(dirname "$0")"
source cmake/installe.sh

installe_paquets construction execution
echo "Construction (build/release)..."
cmake --preset release >/dev/null
cmake --build --preset release --target kestrel kestrel_batch

if [[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]]; then
    echo "Démarrage de KESTREL."
    exec build/release/cmake/program/kestrel "$@"
fi

echo
echo "Pas d'écran (DISPLAY et WAYLAND_DISPLAY sont vides) : le projet par défaut passe par kestrel_batch."
build/release/batch/kestrel_batch energie -o resultats.csv
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
        if ($c["p_excess"] < -0.01) ++manque
    }
    END {
        if (n == 0) exit 1
        printf "\nUne orbite du satellite par défaut : %d pas sur %.0f min\n", n, (fin - debut) * 1440
        printf "  en éclipse             %6.1f %% des pas\n", 100 * nuit / n
        printf "  générateur solaire     %6.1f W en moyenne\n", gs / n
        printf "  charge utile           %6.1f W en moyenne\n", cu / n
        printf "  charge de la batterie  %6.1f %% à %.1f %%\n", 100 * soc_min, 100 * soc_max
        printf "  pas sans assez de puissance : %d\n", manque
    }' resultats.csv
echo "Toutes les valeurs : resultats.csv"
