#!/usr/bin/env bash
# Builds and runs every benchmark, and prints docs/mesures.md: medians of several runs, with machine and compiler.
#   bench/lance.sh > docs/mesures.md
# Times are processor times, so that another load on the machine blurs them less.
set -euo pipefail
cd "$(dirname "$0")/.."
source cmake/installe.sh
source cmake/ecran.sh
{
  installe_paquets construction execution essais
  cmake --preset release
  cmake --build --preset release
} >&2
export LC_ALL=C
batch=build/release/batch/kestrel_batch
cas=tests/data/cas
sortie=$(mktemp)
trap 'rm -f "$sortie"' EXIT

# secondes COMMAND...: processor seconds of a whole process, the median of five.
secondes() {
  local i
  for i in 1 2 3 4 5; do
    { TIMEFORMAT='%U %S'; time "$@" > "$sortie" 2> /dev/null; } 2>&1 | awk '{ print $1 + $2 }'
  done | sort -n | sed -n 3p
}

cat << ENTETE
# Mesures

Faites par \`bench/lance.sh\` (qui écrit cette page) : médianes de cinq passages, en temps de processeur.

- Machine : $(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1), $(nproc) cœurs
- Compilateur : $(c++ --version | head -n 1), \`-O2 -ffp-contract=off\`
- Dessin : OpenGL par logiciel (Mesa), écran virtuel

| banc | mesure | temps |
|---|---|---|
ENTETE
for banc in build/release/bench/*_bench; do
  nom=$(basename "$banc" _bench)
  echo "$nom" >&2
  lanceur=()
  case "$nom" in fenetre* | vue*) lanceur=(sous_ecran) ;; esac
  "${lanceur[@]}" "$banc" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true \
    --benchmark_format=csv 2> /dev/null |
    awk -F, -v banc="$nom" '/_median"/ { gsub(/"/, "", $1); sub(/_median/, "", $1)
      printf "| %s | %s | %.4g %s |\n", banc, $1, $4, $5 }'
done
echo "| kestrel_batch | un an d'énergie à 60 s, colonnes par défaut | $(secondes "$batch" energie --pwr $cas/p01_leo_ext_tracking.pwr --orb $cas/p01_leo_ext_tracking.orb --fin 19842.25 --pas 60) s |"
echo "| kestrel_batch | 1 000 000 pas d'attitude, \`--ecriture 1000\` | $(secondes "$batch" attitude --att $cas/att_08_amort_012.att --orb $cas/att_08_amort_012.orb --debut 19477.25 --fin 19488.824074 --pas 1 --ecriture 1000) s |"
