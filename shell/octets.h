/// Numbers at their place in a record's bytes, for the tables of fields.
#pragma once

#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

template <class T>
double lit_octets(const void* place) {
    T x;
    std::memcpy(&x, place, sizeof x);
    return x;
}

/// Integers round half to even; beyond the ends of their type they stop there.
template <class T>
void ecrit_octets(void* place, double x) {
    T valeur;
    if constexpr (std::is_integral_v<T>) {
        constexpr auto min = std::numeric_limits<T>::min(), max = std::numeric_limits<T>::max();
        valeur = x >= max ? max : x > min ? static_cast<T>(std::nearbyint(x)) : min;
    } else {
        valeur = static_cast<T>(x);
    }
    std::memcpy(place, &valeur, sizeof valeur);
}
