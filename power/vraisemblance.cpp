#include "power/vraisemblance.h"

#include <algorithm>
#include <cmath>

#include "power/montage.h"
#include "power/power_bat.h"
#include "power/power_thermique.h"
#include "shell/formats.h"
#include "shell/utilitaires.h"

namespace {

constexpr double arrondi = 1e-9; ///< what rounding may leave beyond a limit

/// A group of temperature nodes, and the surfaces of the settings' table that they radiate by.
struct groupe_noeuds {
    const char* nom;
    int premier, nombre;
    int surface, nb_surfaces;
};

std::array<groupe_noeuds, 4> groupes(const power_record& p) {
    switch (montage_de(p)) {
    case montage::externes:
        return {{{"le panneau solaire", 0, 1, 0, 2},
                 {"une face du corps", 2, 6, 2, 6},
                 {"le nœud interne", 8, 1, 0, 0}}};
    case montage::cylindre:
        return {{{"le cylindre", 0, nb_bandes, 0, 1},
                 {"le dessus", nb_bandes, 1, 1, 1},
                 {"le dessous", nb_bandes + 1, 1, 2, 1},
                 {"le nœud interne", nb_bandes + 2, 1, 0, 0}}};
    default:
        return {{{"une face", 0, p.nb_faces, 0, 1},
                 {"le dessus", 8, 1, 1, 1},
                 {"le dessous", 9, 1, 2, 1},
                 {"le nœud interne", 10, 1, 0, 0}}};
    }
}

double plus_froid(const power_record& p, const groupe_noeuds& g) {
    const auto debut = p.node_t.begin() + g.premier;
    return g.nombre ? *std::min_element(debut, debut + g.nombre) : 0;
}

int cellule_negative(const power_record& p) {
    const int n = nombre_panneaux(p);
    for (int i = 0; i < n; ++i)
        if (p.cell_eff[i] < -arrondi) return i;
    return -1;
}

bool charge_possible(const power_record& p) { return !(p.bat_soc < -arrondi) && !(p.bat_soc > 1 + arrondi); }

bool rendements_possibles(const power_record& p) { return !(p.gst_rend_gs < 0) && !(p.gst_rend_bat < 0); }

std::string nombre(double x) { return format_image(x, "0.####"); }

std::string cause_du_froid(const power_record& p, const groupe_noeuds& g, double date) {
    const bool externes = montage_de(p) == montage::externes;
    const float* a0 = externes ? p.ext_alpha0.data() : p.fac_alpha0.data();
    const float* limite = externes ? p.ext_alpha_lim.data() : p.fac_alpha_lim.data();
    const int32_t* t99 = externes ? p.ext_t99.data() : p.fac_t99.data();
    for (int i = g.surface; i < g.surface + g.nb_surfaces; ++i) {
        if (alpha(p, static_cast<float>(date), a0[i], limite[i], t99[i]) >= 0) continue;
        if (date < p.date_cell)
            return "la date précède celle des revêtements neufs (« Date initiale cellules »)";
        return "l'absorptivité initiale " + nombre(a0[i]) + " est à moins de 1 % de sa limite " +
               nombre(limite[i]) + ", ce qui inverse son vieillissement";
    }
    const auto negatif = [](float x) { return x < 0; };
    if (std::any_of(p.albedo.begin(), p.albedo.end(), negatif)) return "l'albédo est négatif";
    if (std::any_of(p.earth_ir.begin(), p.earth_ir.end(), negatif))
        return "l'infrarouge de la Terre est négatif";
    if (p.p_heat < 0)
        return "la dissipation interne est négative (rendements au-delà de 100 %, ou part dissipée)";
    return "la masse ou la chaleur massique est trop faible, ou la température initiale impossible";
}

std::string cause_de_la_charge(const power_record& p) {
    if (p.gst_charge_init < 0 || p.gst_charge_init > 100) return "l'état de charge initial";
    if (!(bat_cap_temp(p, p.t_bat) > 0))
        return "la capacité devient négative à " + nombre(p.t_bat) +
               " °C (température minimale de la batterie : " + nombre(p.bat_tmin) + " °C)";
    if (!(bat_cap_current(p, p.bat_i / p.bat_c) > 0))
        return "la capacité devient négative à un courant de " + nombre(p.bat_i / p.bat_c) +
               " C (capacité à 10C : " + nombre(p.bat_c10) + ")";
    if (p.gst_k_recharge <= 0) return "le coefficient de recharge " + nombre(p.gst_k_recharge);
    return "la capacité nominale " + nombre(p.bat_c) + " Ah";
}

} // namespace

bool vraisemblable(const power_record& p) {
    if (!charge_possible(p) || !rendements_possibles(p) || cellule_negative(p) >= 0) return false;
    for (const groupe_noeuds& g : groupes(p))
        if (plus_froid(p, g) < 0) return false;
    return true;
}

std::string invraisemblance(const power_record& p, double date) {
    const std::string quand = " le " + date_vers_texte(jour_vers_date(date)) + " : ";
    const std::string suite = ". Les résultats ne sont pas fiables.";
    if (!rendements_possibles(p))
        return "Rendement négatif : " +
               (p.gst_rend_gs < 0 ? "générateur solaire vers charge utile, " + nombre(p.gst_rend_gs)
                                  : "batterie vers charge utile, " + nombre(p.gst_rend_bat)) +
               " %" + suite;
    if (const int i = cellule_negative(p); i >= 0)
        return "Rendement de cellule négatif (" + nombre(100 * p.cell_eff[i]) + " %)" + quand + "cellules " +
               (p.cel_type == 0 ? "AsGa" : "Silicium") + " à " + nombre(p.node_t[i] - zero_celsius) +
               " °C, hors du domaine de leurs coefficients de température" + suite;
    for (const groupe_noeuds& g : groupes(p))
        if (const double t = plus_froid(p, g); t < 0)
            return "Température sous 0 K (" + format_image(t, "0") + " K) pour " + g.nom + quand +
                   cause_du_froid(p, g, date) + suite;
    return std::string("Charge de la batterie ") + (p.bat_soc < 0 ? "sous 0 %" : "au-delà de 100 %") + quand +
           cause_de_la_charge(p) + suite;
}
