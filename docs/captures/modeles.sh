#!/usr/bin/env bash
# Draws docs/images/modeles_attitude.png: the pitch of a satellite with a gravity-gradient mast, by both models.
# modeles.sh KESTREL_BATCH; needs ImageMagick.
set -euo pipefail
batch=$(realpath "$1")
cd "$(dirname "$0")/../.."
options=(attitude --orb data/exemples/microsatellite.orb --debut "2024-03-20 12:00:00" --fin "2024-03-20 18:00:00"
         --tangage 15 --champ "omega_init[1]=0.0607" --champ "I_corps[0][0]=60" --champ "I_corps[1][1]=62"
         --champ "I_corps[2][2]=3" --champ "dip_res[0]=0" --champ "dip_res[1]=0" --champ "dip_res[2]=0")
temporaire=$(mktemp -d)
trap 'rm -rf "$temporaire"' EXIT
colonnes="j_courant,yd(2) * (180 / pi)"
"$batch" "${options[@]}" --pas 2 --ecriture 30 --colonnes "$colonnes" > "$temporaire/reference.csv"
"$batch" "${options[@]}" --pas 60 --modele physique --colonnes "$colonnes" > "$temporaire/physique.csv"
awk -F, '
    function x(h) { return 70 + h * 110 }
    function y(a) { return 170 - a * 4.5 }
    function ligne(x1, y1, x2, y2, c) {
        printf "<line x1=\"%g\" y1=\"%g\" x2=\"%g\" y2=\"%g\" stroke=\"%s\"/>\n", x1, y1, x2, y2, c
    }
    function texte(px, py, ancre, c, t) {
        printf "<text x=\"%g\" y=\"%g\" text-anchor=\"%s\" stroke=\"none\" fill=\"%s\">%s</text>\n", px, py, ancre, c, t
    }
    BEGIN {
        print "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"760\" height=\"360\" font-family=\"sans-serif\" font-size=\"13\">"
        print "<rect width=\"760\" height=\"360\" fill=\"white\"/>"
        for (a = -30; a <= 30; a += 15) { ligne(70, y(a), 730, y(a), "#e0e0e0"); texte(62, y(a) + 4, "end", "#404040", a) }
        for (h = 0; h <= 6; h++) { ligne(x(h), 35, x(h), 305, "#e0e0e0"); texte(x(h), 322, "middle", "#404040", h) }
        texte(400, 346, "middle", "#404040", "heures"); texte(20, 24, "start", "#404040", "tangage (°)")
        texte(730, 24, "end", "#404040", "modèle physique"); ligne(590, 19, 615, 19, "#1f5fa8")
        texte(560, 24, "end", "#404040", "modèle de référence"); ligne(395, 19, 420, 19, "#c06a10")
    }
    FNR == 1 { if (NR > 1) print "\"/>"; couleur = FILENAME ~ /reference/ ? "#c06a10" : "#1f5fa8"
               printf "<polyline fill=\"none\" stroke-width=\"2\" stroke=\"%s\" points=\"", couleur; next }
    { if (FNR == 2) debut = $1; printf "%.1f,%.1f ", x(($1 - debut) * 24), y($2) }
    END { print "\"/></svg>" }' "$temporaire/reference.csv" "$temporaire/physique.csv" > "$temporaire/dessin.svg"
convert -font DejaVu-Sans "$temporaire/dessin.svg" docs/images/modeles_attitude.png
