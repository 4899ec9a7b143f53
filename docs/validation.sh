#!/usr/bin/env bash
# Runs every outside check of the models and writes docs/validation.md with its drawings.
#   docs/validation.sh [--essai] [--releves FILE]
# --essai writes nothing in docs/: it fails when a check is missing or has left its tolerance, or when the page says
# something else than docs/validation.md (digits apart: the last ones may differ from machine to machine).
# --releves takes what an earlier run of the tests has noted (KESTREL_RELEVES=FILE ctest) instead of running them.
set -euo pipefail
cd "$(dirname "$0")/.."
essai= releves=
while [ $# -gt 0 ]; do
  case "$1" in
    --essai) essai=1 ;;
    --releves) releves=$2; shift ;;
    *) sed -n 's/^# \{0,1\}//p' "$0" | sed 1d; exit 2 ;;
  esac
  shift
done

travail=$(mktemp -d)
trap 'rm -rf "$travail"' EXIT
if [ -z "$releves" ]; then
  releves=$travail/releves.tsv
  dossiers="orbit power attitude physics project analysis batch"
  cmake --preset ci >/dev/null
  # shellcheck disable=SC2086
  cmake --build --preset ci --target $(printf '%s_tests ' $dossiers)
  for d in $dossiers; do
    LC_ALL=C KESTREL_RELEVES=$releves "build/ci/tests/${d}_tests" --gtest_brief=1
  done
fi

ecrit() { python3 -B docs/validation/page.py "$releves" docs/validation/fiches.toml "$1"; }
if [ -z "$essai" ]; then
  ecrit docs
  exit
fi
ecrit "$travail"
sans_chiffres() { sed 's/[0-9⁰¹²³⁴⁵⁶⁷⁸⁹,·⁻]//g' "$1"; }
if ! diff <(sans_chiffres docs/validation.md) <(sans_chiffres "$travail/validation.md"); then
  echo "docs/validation.md n'est plus à jour : docs/validation.sh la récrit" >&2
  exit 1
fi
