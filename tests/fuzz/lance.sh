#!/usr/bin/env bash
# Fuzzes each file reader for a number of seconds (60 unless told) from the reference runs' files.
#   tests/fuzz/lance.sh [SECONDS]
set -euo pipefail
cd "$(dirname "$0")/../.."
secondes=${1:-60}
cmake --preset fuzz > /dev/null
cmake --build --preset fuzz
corpus=build/fuzz/corpus
for cible in pwr att orb lecture_ligne tle stations etude composants; do
  mkdir -p "$corpus/$cible"
  case $cible in
    lecture_ligne) cp tests/data/cas/*.pwr "$corpus/$cible" ;;
    tle) cp tests/data/*.tle "$corpus/$cible" ;;
    etude) cp tests/data/*.kestrel "$corpus/$cible" ;;
    composants) cp data/composants/*.json "$corpus/$cible" ;;
    stations) cp data/stations.txt "$corpus/$cible" ;;
    *) cp tests/data/cas/*."$cible" "$corpus/$cible" ;;
  esac
  build/fuzz/tests/fuzz/${cible}_fuzz "$corpus/$cible" -max_total_time="$secondes" -timeout=5 \
    -rss_limit_mb=512 -malloc_limit_mb=64 -max_len=20000 -print_final_stats=1 2>&1 |
    grep -E "SUMMARY|ERROR|Done|stat::(number|peak)" || true
  if compgen -G "crash-*" > /dev/null || compgen -G "timeout-*" > /dev/null || compgen -G "oom-*" > /dev/null; then
    echo "$cible : défaut trouvé" >&2
    exit 1
  fi
done
echo "aucun défaut"
