#!/usr/bin/env bash
# What takes too long for every change: the thread sanitizer over what runs on several cores, the fuzzers for ten
# minutes a reader, ten thousand gestures over all windows.
#   tests/longues.sh            all of it, about two hours and a half
#   tests/longues.sh court      the smoke run of each change: the threads, and half a minute of fuzzing in all
set -euo pipefail
cd "$(dirname "$0")/.."
source cmake/ecran.sh

fils() {
    cmake --preset tsan >/dev/null
    cmake --build --preset tsan --target kestrel_batch batch_tests analysis_tests
    # Toolkit and system libraries are not built for this sanitizer: the models and studies are, and no more.
    TSAN_OPTIONS=halt_on_error=1 build/tsan/tests/batch_tests --gtest_filter='balayage*'
    TSAN_OPTIONS=halt_on_error=1 build/tsan/tests/analysis_tests
}

if [[ ${1:-} == court ]]; then
    fils
    tests/fuzz/lance.sh 5
    exit
fi
fils
tests/fuzz/lance.sh 600
cmake --preset asan >/dev/null
cmake --build --preset asan --target marche_test
for graine in {20..31}; do
    ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1 KESTREL_GESTES=10000 KESTREL_GRAINE=$graine \
        sous_ecran build/asan/tests/marche_test
done
echo "Les longues épreuves sont passées."
