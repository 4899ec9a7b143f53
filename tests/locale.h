/// The tests run in the locale of their environment, as the programs do under the toolkit.
#pragma once

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>

/// Takes the locale of the environment, and ends a run that wanted a decimal comma and has not got it.
inline void prend_la_locale() {
    std::setlocale(LC_ALL, "");
    if (std::getenv("KESTREL_VIRGULE") && std::strcmp(std::localeconv()->decimal_point, ",") != 0) {
        std::fputs("the locale asked for is not there\n", stderr);
        std::exit(1);
    }
}
