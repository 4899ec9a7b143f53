#include "power/environnement.h"

#include <charconv>
#include <cmath>

#include "power/power_step.h"
#include "shell/formats.h"

const std::array<double, 12> distance_mois = {147136383.585747, 147734283.137167, 148774603.47896,
                                              150094009.236035, 151234136.704803, 151964678.668876,
                                              152063368.430357, 151511718.826698, 150436237.556895,
                                              149163195.894725, 147961188.654898, 147231119.143355};

float flux_solaire_page(const power_record& p, double distance) {
    return static_cast<float>(flux_solaire(p.sun_power, distance));
}

double puissance_de_flux(double flux, double distance) {
    return flux * 4.0 * pi * distance * distance * 1000000.0;
}

void modele_isoterre(power_record& p) {
    for (int m = 0; m < 12; ++m) {
        const double absorbe =
            (1 - static_cast<double>(p.albedo[m])) * flux_solaire_page(p, distance_mois[m]);
        p.earth_ir[m] = static_cast<float>(absorbe / 4.0);
    }
}

void modele_sinus(power_record& p, double base, double amplitude, int mois_0) {
    constexpr double mois_en_radians = 0.5235987755982984;
    for (int m = 0; m < 12; ++m) {
        const double albedo = amplitude * std::sin((m - mois_0) * mois_en_radians) + base;
        const std::string texte = format_image(albedo, "0.00");
        std::from_chars(texte.data(), texte.data() + texte.size(), p.albedo[m]);
    }
}
