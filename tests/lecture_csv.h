/// Rows of numbers of a reference file of tests/data; lines that begin with '#' tell their provenance.
#pragma once

#include <gtest/gtest.h>

#include <charconv>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

/// A number with a point, whatever the locale; 0 for a text.
inline double nombre_csv(const std::string& mot) {
    double x = 0;
    std::from_chars(mot.data() + mot.find_first_not_of(' '), mot.data() + mot.size(), x);
    return x;
}

inline std::vector<std::vector<double>> lit_reference(const std::string& nom) {
    std::ifstream f(std::string(DONNEES_TEST) + "/" + nom);
    EXPECT_TRUE(f) << nom;
    std::vector<std::vector<double>> lignes;
    for (std::string ligne; std::getline(f, ligne);) {
        if (ligne.empty() || ligne.front() == '#') continue;
        std::vector<double> nombres;
        std::stringstream flux(ligne);
        for (std::string mot; std::getline(flux, mot, ',');) nombres.push_back(nombre_csv(mot));
        lignes.push_back(nombres);
    }
    return lignes;
}
