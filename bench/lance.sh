#!/usr/bin/env bash
# Builds and runs every benchmark, and prints docs/mesures.md: medians of several runs, with machine and compiler.
#   bench/lance.sh > docs/mesures.md
# Times are processor times, so that another load on the machine blurs them less.
# A benchmark that fails, or a run that is not the one meant, ends it without a page.
set -euo pipefail
shopt -s inherit_errexit
export LC_ALL=C.UTF-8 # times and tables are written and read with a decimal point
cd "$(dirname "$0")/.."
source cmake/installe.sh
source cmake/ecran.sh
{
  installe_paquets construction execution module essais
  cmake --preset release -DKESTREL_BENCH=ON
  cmake --build --preset release
} >&2
export LC_ALL=C
batch=$PWD/build/release/batch/kestrel_batch
programme=$PWD/build/release/cmake/program/kestrel
cas=tests/data/cas
page=$(mktemp)
sortie=$(mktemp)
trap 'rm -f "$page" "$sortie"' EXIT

# secondes LIGNES COMMAND...: processor seconds of a whole process that must write so many lines, the median of five.
secondes() {
  local i lignes=$1 temps=()
  shift
  for i in 1 2 3 4 5; do
    temps+=("$({ TIMEFORMAT='%U %S'; time "$@" > "$sortie"; } 2>&1 | awk 'NF == 2 { print $1 + $2; next } { print > "/dev/stderr"; exit 1 }')")
    [ "$(wc -l < "$sortie")" -eq "$lignes" ] || { echo "$* : $(wc -l < "$sortie") lignes au lieu de $lignes" >&2; return 1; }
  done
  printf '%s\n' "${temps[@]}" | sort -n | sed -n 3p
}

# mesure BANC LANCEUR...: the lines of a benchmark, each a median.
mesure() {
  local banc=$1 nom lignes
  shift
  nom=$(basename "$banc" _bench)
  echo "$nom" >&2
  lignes=$("$@" "$banc" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true --benchmark_color=false)
  # Time by the clock where the name says so (second column), processor time otherwise (fourth); then counters.
  awk -v banc="$nom" '
    $1 ~ /_median$/ {
      temps = $1 ~ /\/(manual|real)_time/ ? $2 : $4; unite = $5; compteurs = ""
      for (i = 6; i <= NF; ++i)
        if ($i ~ /^[A-Za-z_]+=/ && $i !~ /^items_/) { sub(/=/, " ", $i); compteurs = compteurs ", " $i }
      gsub(/_median$|\/(min_time:[0-9.]*|iterations:[0-9]*|(manual|real|process)_time)/, "", $1)
      printf "| %s | %s | %s %s%s |\n", banc, $1, temps, unite, compteurs; ++n }
    END { exit n == 0 }' <<< "$lignes"
}

# valeur BANC MESURE [COMPTEUR]: of a line that the page has already: milliseconds, or the counter.
valeur() {
  awk -F' *[|] *' -v banc="$1" -v mesure="$2" -v compteur="${3:-}" '
    $2 == banc && $3 == mesure {
      split($4, mots, /,? /); en_ms["ns"] = 1e-6; en_ms["us"] = 1e-3; en_ms["ms"] = 1; en_ms["s"] = 1000
      if (compteur == "") { print mots[1] * en_ms[mots[2]]; n = 1 }
      for (i = 3; i in mots; i += 2) if (mots[i] == compteur) { print mots[i + 1]; n = 1 } }
    END { if (!n) { print "pas de ligne " banc " " mesure > "/dev/stderr"; exit 1 } }' "$page"
}

# limite QUOI VALEUR LIMITE UNITE [au moins]: what was measured beside what it may be.
limite() {
  awk -v quoi="$1" -v x="$2" -v l="$3" -v u="$4" -v sens="${5:-au plus}" 'BEGIN {
    printf "| %s | %s %s %s | %.3g %s | %.2f |\n", quoi, sens, l, u, x, u, x / l }'
}
quotient() { awk -v a="$1" -v b="$2" 'BEGIN { print a / b }'; }

{
cat << ENTETE
# Mesures

Faites par \`bench/lance.sh\` (qui écrit cette page) : médianes de cinq passages, en temps de processeur sauf
mention contraire.

- Machine : $(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1), $(nproc) cœurs
- Compilateur : $(c++ --version | head -n 1), \`-O2 -ffp-contract=off\`
- Dessin : OpenGL par logiciel (Mesa), écran virtuel

| banc | mesure | temps |
|---|---|---|
ENTETE
for banc in build/release/bench/*_bench; do
  case "$banc" in
    */fenetre* | */vue* | */courbes*) mesure "$banc" sous_ecran ;;
    *) mesure "$banc" env ;;
  esac
done
exemple=data/exemples/microsatellite
un_an=$(secondes 525602 "$batch" energie --pwr $exemple.pwr --orb $exemple.orb --champ orb_inclinaison=10 --debut 27107.5 --fin 27472.5 --pas 60)
attitude=$(secondes 1002 "$batch" attitude --att $cas/att_08_amort_012.att --orb $cas/att_08_amort_012.orb --debut 19477.25 --fin 19488.824074 --pas 1 --ecriture 1000)
# balayage OPTION...: elapsed seconds of a sweep of 1,000 variants of a day, the median of five.
balayage() {
  local i temps=()
  for i in 1 2 3 4 5; do
    temps+=("$({ TIMEFORMAT=%R; time "$batch" balayage --etude $exemple.kestrel --orbites 15 --varie 'bat_c=10.01:20:0.01' \
      --pas 60 "$@" > "$sortie"; } 2>&1)")
    [ "$(wc -l < "$sortie")" -eq 1001 ] || { echo "balayage : $(wc -l < "$sortie") lignes" >&2; return 1; }
  done
  printf '%s\n' "${temps[@]}" | sort -n | sed -n 3p
}
un_coeur=$(balayage --coeurs 1)
tous=$(balayage)
python=$(PYTHONPATH=build/release/python /usr/bin/python3 - << PYTHON
import time, kestrel
e = kestrel.Etude("$exemple.kestrel")
e["orb_inclinaison"] = 10
temps = []
for _ in range(5):
    t = time.process_time()
    r = e.simule_energie(debut=27107.5, fin=27472.5, pas=60, colonnes=["sim_date", "bat_soc"])
    temps.append(time.process_time() - t)
    assert len(r["bat_soc"]) == 525601
print(f"{sorted(temps)[2]:.2f}")
PYTHON
)
# The whole functions go along as text: the shell in between hands no function on.
depart=$(sous_ecran bash -c "$(declare -f secondes); sortie='$sortie'; secondes 0 '$programme' --essai")
echo "| kestrel | du lancement à la première image, puis la fin | $depart s |"
echo "| kestrel_batch | un an d'énergie à 60 s, colonnes par défaut | $un_an s |"
echo "| python | un an d'énergie à 60 s, deux colonnes | $python s |"
echo "| kestrel_batch | \`balayage\` de 1 000 variantes de 15 tours à 60 s, un cœur (temps écoulé) | $un_coeur s |"
echo "| kestrel_batch | le même sur tous les cœurs (temps écoulé) | $tous s |"
echo "| kestrel_batch | 1 000 000 pas d'attitude, \`--ecriture 1000\` | $attitude s |"
cat << 'LIMITES'

## Limites

Ce que le programme s'impose, ce qui a été mesuré, et le rapport de l'un à l'autre.

| quoi | limite | mesuré | rapport |
|---|---|---|---|
LIMITES
limite "bilan de seize tours" "$(valeur bilan seize_tours)" 15 ms
limite "année de 24 dates" "$(valeur bilan annee_de_24_dates)" 400 ms
limite "attente pendant la frappe, le verdict suivant" "$(valeur fenetre_menu frappe)" 20 ms
limite "ouverture de la simulation complète (temps écoulé)" "$(valeur fenetre_menu simulation_complete)" 100 ms
limite "tableau de 864 001 lignes, montré en graphique" "$(valeur fenetre_exploitation grand_graphique/0)" 100 ms
limite "le même à une autre taille" "$(valeur fenetre_exploitation grand_graphique/1)" 100 ms
limite "un an du cylindre dans l'étude des panneaux" "$(valeur fenetre_exploitation etude_annee Mo)" 150 Mo
limite "y changer de grandeur" "$(valeur fenetre_exploitation etude_annee grandeur_ms)" 100 ms
limite "courbes : première image d'un an, aux pas du modèle" \
  "$(quotient "$(valeur courbes premiere_image)" "$(valeur courbes pas_seuls)")" 1.3 fois
for heures in 8760 720 24 4; do
  limite "courbes : image suivante, $heures h sur un an, 18 courbes" "$(valeur courbes "image_suivante/$heures")" 16 ms
done
limite "courbes : un an et deux gardés" "$(valeur courbes image_suivante/8760 memoire_Mio)" 400 Mio
limite "carte de 1200 x 600 à une autre date" "$(valeur vue_carte carte/date)" 16 ms
limite "image 3D, satellite seul" "$(valeur vue3d image/satellite)" 5 ms
limite "image 3D, tout montré" "$(valeur vue3d image/tout)" 10 ms
limite "passages de dix stations sur trente jours" "$(valeur passages dix_stations_trente_jours)" 500 ms
limite "balayage de 1 000 variantes d'un jour" "$tous" 1.5 s
limite "balayage, tous les cœurs plutôt qu'un" "$(quotient "$un_coeur" "$tous")" 1.9 fois "au moins"
limite "un an par Python, aux pas du modèle" \
  "$(quotient "$(valeur python "un an d'énergie à 60 s, deux colonnes")" "$(valeur courbes pas_seuls)")" 1.2 fois
cat << 'LEGENDE'

## Ce que disent les lignes

- `attitude` : `pas_complet` est un pas de l'intégrateur avec les quatre couples, trois amortisseurs et ses appels à
  l'orbite ; `champ_synthese` une synthèse du champ au degré 6 ; `heure` une heure de pas de 1 s.
- `physics` : le modèle physique. `pas_rk4_complet/s:4` est un pas de Runge-Kutta avec les quatre couples, trois
  roues, trois amortisseurs et tout l'entourage calculé deux fois (champ de degré 13, air, orbite, ombre) ; `s:1`
  partage cet entourage entre quatre pas. `jour_a_60s/couple` : un jour, avec ou sans l'énergie, aux pas du
  mouvement ; `jour_couple_par_1s` : le même avec 86 400 pas d'attitude.
- `banc_attitude` : le calcul de la page « Banc d'attitude », un jour à 60 s avec toutes ses colonnes, pour le
  satellite à mât et pour le CubeSat qui culbute ; `seuil` la recherche de la phrase.
- `fenetre_exploitation` : 10 000 lignes de six colonnes, les pas du modèle seuls puis dans la fenêtre, pour les
  panneaux externes (0), le prisme carré (1), l'hexagone (2) et le cylindre (3) ; `graphique` un tracé de ces lignes,
  `grand_graphique` un tracé de 864 001 lignes, montré (0) puis à une autre taille (1) ; `etude_annee` un an du
  cylindre à 2 min dans l'étude des panneaux.
- `fenetre_attitude` : 100 000 pas, les pas du modèle seuls, puis le calcul entier de la fenêtre avec son fichier.
- `bilan` : le bilan de seize tours à 60 s, et l'année de 24 dates.
- `courbes` : la page « Courbes » sur un an à 60 s et six variables : les pas du modèle seuls, puis avec la première image,
  puis une image de plus avec deux calculs gardés (18 courbes) et tant d'heures en vue.
- `fenetre_menu` : la suite d'une modification ; `frappe` la plus longue attente des événements pendant que l'on tape une
  capacité et que le verdict suit ; `simulation_complete` de l'appel à la première image. `kestrel` : le programme entier, lancé à neuf.
- Les satellites sont les exemples du programme, leur année devant eux ; leur batterie se charge et se décharge.
- `power` : `orbite` est `orb_position` avec `sous_point` ; `pas_…/N` un pas d'énergie de N secondes ;
  `thermique_externe/N` sa part thermique à neuf nœuds ; `noyau_surfaces` mille passes de ce noyau.
- `vue3d` : une image de 400 x 400, relecture comprise.

Les rapports vieillissent mieux que les temps : un pas d'énergie de 120 s vaut environ huit orbites, un pas
d'attitude environ trois, et la fenêtre d'exploitation coûte un quart de plus que les pas de son modèle.
LEGENDE
} > "$page"
cat "$page"
