#!/usr/bin/env bash
# Draws docs/images/modeles_attitude.png: the pitch of a satellite with a gravity-gradient mast and
# its rate, by both models.
# modeles.sh KESTREL_BATCH; needs ImageMagick.
set -euo pipefail
batch=$(realpath "$1")
cd "$(dirname "$0")/../.."
options=(attitude --orb data/exemples/microsatellite.orb --debut "2024-03-20 12:00:00" --fin "2024-03-20 18:00:00"
         --tangage 15 --champ "omega_init[1]=0.0607" --champ "I_corps[0][0]=60" --champ "I_corps[1][1]=62"
         --champ "I_corps[2][2]=3" --champ "dip_res[0]=0" --champ "dip_res[1]=0" --champ "dip_res[2]=0")
temporaire=$(mktemp -d)
trap 'rm -rf "$temporaire"' EXIT
colonnes="j_courant,yd(2) * (180 / pi),omega(1) * (180 / pi)"
"$batch" "${options[@]}" --pas 2 --ecriture 30 --colonnes "$colonnes" > "$temporaire/reference.csv"
"$batch" "${options[@]}" --pas 60 --modele physique --colonnes "$colonnes" > "$temporaire/physique.csv"
LC_ALL=C awk -F, '
    function x(h) { return 70 + h * 110 }
    function haut(a) { return 145 - a * 3.4 }
    function bas(w) { return 300 - w * 180 }
    function ligne(x1, y1, x2, y2, c) {
        printf "<line x1=\"%g\" y1=\"%g\" x2=\"%g\" y2=\"%g\" stroke=\"%s\"/>\n", x1, y1, x2, y2, c
    }
    function texte(px, py, ancre, c, t) {
        printf "<text x=\"%g\" y=\"%g\" text-anchor=\"%s\" stroke=\"none\" fill=\"%s\">%s</text>\n", px, py, ancre, c, t
    }
    function trace(modele, points) {
        printf "<polyline fill=\"none\" stroke-width=\"2\" stroke=\"%s\"%s points=\"%s\"/>\n", modele ? "#1f5fa8" : "#c06a10", modele ? "" : " stroke-dasharray=\"6,3\"", points
    }
    FNR == 1 { ++modele; next }
    { if (FNR == 2) debut = $1
      h = sprintf("%.1f", x(($1 - debut) * 24))
      tangage[modele] = tangage[modele] sprintf("%s,%.1f ", h, haut($2))
      vitesse[modele] = vitesse[modele] sprintf("%s,%.1f ", h, bas($3)) }
    END {
        print "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"760\" height=\"540\" font-family=\"sans-serif\" font-size=\"13\">"
        print "<rect width=\"760\" height=\"540\" fill=\"white\"/>"
        for (a = -30; a <= 30; a += 15) { ligne(70, haut(a), 730, haut(a), "#e0e0e0"); texte(62, haut(a) + 4, "end", "#404040", a) }
        for (w = 0; w >= -.91; w -= .3) { ligne(70, bas(w), 730, bas(w), "#e0e0e0"); texte(62, bas(w) + 4, "end", "#404040", w == 0 ? "0" : sprintf("%.1f", w)) }
        for (h = 0; h <= 6; h++) {
            ligne(x(h), 43, x(h), 247, "#e0e0e0"); ligne(x(h), 285, x(h), 490, "#e0e0e0")
            texte(x(h), 507, "middle", "#404040", h)
        }
        texte(400, 530, "middle", "#404040", "heures")
        texte(20, 24, "start", "#404040", "tangage (°)"); texte(20, 272, "start", "#404040", "vitesse en tangage (°/s)")
        texte(730, 24, "end", "#404040", "modèle physique"); ligne(590, 19, 615, 19, "#1f5fa8")
        texte(560, 24, "end", "#404040", "modèle de référence")
        print "<line x1=\"385\" y1=\"19\" x2=\"420\" y2=\"19\" stroke-dasharray=\"6,3\" stroke=\"#c06a10\"/>"
        for (m = 0; m < 2; ++m) { trace(m, tangage[m + 1]); trace(m, vitesse[m + 1]) }
        print "</svg>"
    }' "$temporaire/reference.csv" "$temporaire/physique.csv" > "$temporaire/dessin.svg"
convert -font DejaVu-Sans "$temporaire/dessin.svg" -colors 32 png8:docs/images/modeles_attitude.png
