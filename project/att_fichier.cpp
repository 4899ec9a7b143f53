#include "project/att_fichier.h"

#include <array>
#include <cstring>

#include "attitude/att_champs.h"
#include "project/enregistrement.h"

bool sauve_attitude(const std::string& chemin, const attitude_record& a, std::string& raison) {
    std::array<char, taille_att> tampon{};
    for (const champ_att& c : att_champs())
        for (int i = 0; i < c.nombre; ++i) {
            const double x = valeur(a, c, i);
            if (c.type == type_att::f64) {
                std::memcpy(tampon.data() + c.decalage + 8 * i, &x, 8);
            } else {
                const auto entier = static_cast<int16_t>(x);
                std::memcpy(tampon.data() + c.decalage + 2 * i, &entier, 2);
            }
        }
    return ecrit_enregistrement(chemin, tampon.data(), tampon.size(), true, raison);
}

bool charge_attitude(const std::string& chemin, attitude_record& a, std::string& raison) {
    std::array<char, taille_att> tampon{};
    if (!lit_enregistrement(chemin, tampon.data(), tampon.size(), raison)) return false;
    for (const champ_att& c : att_champs())
        for (int i = 0; i < c.nombre; ++i) {
            double x;
            if (c.type == type_att::f64) {
                std::memcpy(&x, tampon.data() + c.decalage + 8 * i, 8);
            } else {
                int16_t entier;
                std::memcpy(&entier, tampon.data() + c.decalage + 2 * i, 2);
                x = entier;
            }
            change(a, c, x, i);
        }
    faces_recalcul(a);
    return true;
}
