#include "power/power_champs.h"

#include <cstdio>
#include <cstdlib>

#include "shell/octets.h"

namespace {

constexpr limites positif{.min = 0};
/// Where the models divide by the field (or take its logarithm), 0 itself is refused.
constexpr limites non_nul{.min = 0, .min_inclus = false};
constexpr limites zero_un{.min = 0, .max = 1};
constexpr limites zero_dix{.min = 0, .max = 10};
constexpr limites zero_cent{.min = 0, .max = 100};
constexpr limites non_nul_dix{.min = 0, .max = 10, .min_inclus = false};
constexpr limites non_nul_cent{.min = 0, .max = 100, .min_inclus = false};
constexpr limites pente{.min = -.05, .max = .05};
constexpr limites ratio{.min = 0, .max = 1.02};
constexpr limites ratio_non_nul{.min = 0, .max = 1.02, .min_inclus = false};
constexpr limites incidence{.min = 0, .max = 90};
constexpr limites au_moins_un{.min = 1};
constexpr limites libre{};

/// A decorative line of the file.
constexpr champ ligne(const char* texte) { return {type_champ::commentaire, texte}; }

/// A field with a label behind its value, and an array of bare values. A null label means a bare value.
#define CHAMP(type, membre, label, unite, bornes, sens)                                                      \
    champ { type_champ::type, label, #membre, offsetof(power_record, membre), 1, 0, unite, bornes, sens }
#define TABLEAU(type, membre, unite, bornes, sens)                                                           \
    champ {                                                                                                  \
        type_champ::type, nullptr, #membre, offsetof(power_record, membre),                                  \
            static_cast<int>(std::tuple_size_v<decltype(power_record::membre)>),                             \
            sizeof(power_record::membre[0]), unite, bornes, sens                                             \
    }
/// One of the two values, day or night, of an array.
#define JOUR_NUIT(nom, membre, indice, label, unite, bornes, sens)                                           \
    champ {                                                                                                  \
        type_champ::f32, label, nom, offsetof(power_record, membre) + indice * sizeof(float), 1, 0, unite,   \
            bornes, sens                                                                                     \
    }
/// One coefficient of the four points of a battery curve.
#define COURBE(nom, membre, coefficient, unite, bornes, sens)                                                \
    champ {                                                                                                  \
        type_champ::f32, nullptr, nom, offsetof(power_record, membre) + coefficient * sizeof(float), 4,      \
            sizeof(point_courbe), unite, bornes, sens                                                        \
    }

constexpr champ table[] = {
    ligne("! ---------------"),
    ligne("! Système énergie"),
    ligne("! ---------------"),
    ligne("!"),
    ligne("! Panneaux solaires"),
    ligne("! -----------------"),
    CHAMP(i16, cel_type, "Type cellules", "", zero_un, "Type de cellule : 0 AsGa, 1 Silicium"),
    CHAMP(f32, cel_isc, "Isc", "A", zero_dix, "Courant de court-circuit à la température de référence"),
    CHAMP(f32, cel_imp, "Imp", "A", non_nul_dix, "Courant au point de puissance maximale"),
    CHAMP(f32, cel_voc, "Voc", "V", zero_dix, "Tension en circuit ouvert"),
    CHAMP(f32, cel_vmp, "Vmp", "V", zero_dix, "Tension au point de puissance maximale"),
    CHAMP(f32, cel_disc, "dIsc/dT", "A/°C", pente, "Variation de Isc avec la température"),
    CHAMP(f32, cel_dimp, "dImp/dT", "A/°C", pente, "Variation de Imp avec la température"),
    CHAMP(f32, cel_dvoc, "dVoc/dT", "V/°C", pente, "Variation de Voc avec la température"),
    CHAMP(f32, cel_dvmp, "dVmp/dT", "V/°C", pente, "Variation de Vmp avec la température"),
    CHAMP(f32, cel_radisc, "Isc/Isc0", "", ratio_non_nul, "Rapport de fin de vie de Isc"),
    CHAMP(f32, cel_radimp, "Imp/Imp0", "", ratio_non_nul, "Rapport de fin de vie de Imp"),
    CHAMP(f32, cel_radvoc, "Voc/Voc0", "", ratio_non_nul, "Rapport de fin de vie de Voc"),
    CHAMP(f32, cel_radvmp, "Vmp/Vmp0", "", ratio, "Rapport de fin de vie de Vmp"),
    CHAMP(f32, cel_ns, "Nb série", "", non_nul_cent, "Nombre de cellules en série"),
    CHAMP(f32, cel_np, "Nb parallèle", "", non_nul_cent, "Nombre de branches en parallèle"),
    CHAMP(f32, cel_surface, "Surface cellules", "cm²", non_nul_cent, "Surface d'une cellule"),
    CHAMP(f32, cel_tref, "Température de référence", "°C", libre,
          "Température des quatre valeurs de la cellule"),
    CHAMP(f32, inc_div, "Incidence divergence", "°", incidence,
          "Incidence jusqu'à laquelle la loi en cosinus tient"),
    CHAMP(f32, inc_max, "Incidence max", "°", incidence,
          "Incidence à partir de laquelle la cellule ne donne rien"),
    ligne("!"),

    ligne("! Thermique modèle panneaux externes"),
    ligne("! ----------------------------------"),
    CHAMP(f32, ext_area, "Aire panneau externe", "m²", non_nul, "Aire d'un panneau externe"),
    CHAMP(f32, body_face_area, "Aire face corps central", "m²", positif, "Aire d'une face du corps central"),
    CHAMP(i32, date_cell, "Date initiale cellules", "j", libre,
          "Date à laquelle les revêtements étaient neufs : début du vieillissement"),
    ligne("! Absorptivités initiales"),
    TABLEAU(f32, ext_alpha0, "", zero_un, "Absorptivité à l'état neuf"),
    ligne("! Absorptivités limites"),
    TABLEAU(f32, ext_alpha_lim, "", zero_un, "Absorptivité limite après vieillissement"),
    ligne("! Emissivités"),
    TABLEAU(f32, ext_eps, "", zero_un, "Émissivité infrarouge"),
    ligne("! Temps 99%"),
    TABLEAU(i32, ext_t99, "h", non_nul, "Temps au bout duquel le vieillissement est fait à 99 %"),
    ligne("! Couplages conductifs"),
    TABLEAU(f32, ext_cond, "W/m²/K", positif, "Couplage conductif entre la face et le nœud interne"),
    ligne("! Couplages radiatifs"),
    TABLEAU(f32, ext_rad, "", positif, "Couplage radiatif entre la face et le nœud interne"),
    ligne("! Masses panneaux et faces"),
    TABLEAU(f32, ext_mass, "kg/m²", non_nul, "Masse surfacique (masse en kg pour le nœud interne)"),
    ligne("! Chaleurs spécifiques"),
    TABLEAU(f32, ext_cp, "J/kg/K", non_nul, "Chaleur spécifique"),
    ligne("! Températures initiales"),
    TABLEAU(f32, ext_t_init, "°C", libre, "Température initiale"),
    ligne("!"),

    ligne("! Thermique modèle panneaux sur faces"),
    ligne("! -----------------------------------"),
    ligne("! Conductivités"),
    TABLEAU(f32, fac_cond, "W/m²/K", positif, "Couplage conductif avec le nœud interne"),
    ligne("! Températures initiales faces"),
    TABLEAU(f32, fac_t_init, "°C", libre, "Température initiale"),
    ligne("! Absorptivités initiales faces"),
    TABLEAU(f32, fac_alpha0, "", zero_un, "Absorptivité à l'état neuf"),
    ligne("! Absorptivités limites faces"),
    TABLEAU(f32, fac_alpha_lim, "", zero_un, "Absorptivité limite après vieillissement"),
    ligne("! Temps 99%"),
    TABLEAU(i32, fac_t99, "h", non_nul, "Temps au bout duquel le vieillissement est fait à 99 %"),
    ligne("! Emissivités"),
    TABLEAU(f32, fac_eps, "", zero_un, "Émissivité infrarouge"),
    ligne("! Chaleurs spécifiques faces"),
    TABLEAU(f32, fac_cp, "J/kg/K", non_nul, "Chaleur spécifique"),
    ligne("! Masses faces"),
    TABLEAU(f32, fac_mass, "kg/m²", non_nul, "Masse surfacique"),
    TABLEAU(f32, fac_rad, "", positif, "Couplage radiatif avec le nœud interne"),
    CHAMP(f32, int_mass, "Masse noeud interne", "kg", non_nul, "Masse du nœud interne"),
    CHAMP(f32, int_cp, "Chaleur spécifique noeud interne", "J/kg/K", non_nul,
          "Chaleur spécifique du nœud interne"),
    CHAMP(f32, int_t_init, "Température initiale noeud interne", "°C", libre,
          "Température initiale du nœud interne, et celle de la première tension de la batterie"),
    CHAMP(f32, cyl_cond, "", "W/K", positif, "Conductance entre les bandes de la paroi du cylindre"),
    ligne("!"),

    ligne("! Environnement"),
    ligne("! -------------"),
    ligne("! Albedo"),
    TABLEAU(f32, albedo, "", zero_un, "Albédo de la Terre du mois"),
    ligne("! Infrarouge terre"),
    TABLEAU(f32, earth_ir, "W/m²", positif, "Rayonnement infrarouge de la Terre du mois"),
    CHAMP(puissance_sun, sun_power, "Flux solaire", "W", positif, "Puissance totale rayonnée par le Soleil"),
    ligne("!"),

    ligne("! Gestion énergie"),
    ligne("! ---------------"),
    CHAMP(f32, gst_charge_init, "Charge initiale batterie", "%", zero_cent,
          "Charge de la batterie au départ"),
    CHAMP(f32, gst_vch_max, "Tension de charge max", "V/accu", au_moins_un,
          "Tension maximale de charge, tenue par le régulateur shunt"),
    CHAMP(f32, gst_i_maint, "Courant d'entretien", "A/accu", zero_cent,
          "Courant d'entretien, batterie pleine"),
    CHAMP(f32, gst_ich_max, "Courant de charge max", "A/accu", positif, "Courant maximal de charge"),
    CHAMP(f32, gst_k_recharge, "Coefficient de recharge", "", au_moins_un,
          "Capacité chargée sur capacité déchargée"),
    CHAMP(f32, gst_rend_bat, "Rendement batterie/CU", "%", non_nul_cent,
          "Rendement du transfert de la batterie à la charge utile"),
    CHAMP(f32, gst_rend_gs, "Rendement GS/CU", "%", zero_cent,
          "Rendement du transfert du générateur à la charge utile"),
    CHAMP(f32, gst_vregul, "Tension régulée", "V", (limites{.min = .1, .max = 100}), "Tension du bus régulé"),
    JOUR_NUIT("p_demand_jour", p_demand, 0, "Puissance demandée jour", "W", positif,
              "Puissance demandée par la charge utile, de jour"),
    JOUR_NUIT("p_dissip_jour", p_dissip, 0, "Puissance dissipée jour", "%", zero_cent,
              "Part de la puissance fournie qui est dissipée à bord, de jour"),
    JOUR_NUIT("p_demand_nuit", p_demand, 1, "Puissance demandée nuit", "W", positif,
              "Puissance demandée par la charge utile, en éclipse"),
    JOUR_NUIT("p_dissip_nuit", p_dissip, 1, "Puissance dissipée nuit", "%", zero_cent,
              "Part de la puissance fournie qui est dissipée à bord, en éclipse"),
    CHAMP(i16, gst_regulated, "Gestion régulée (1) ou non régulée (0)", "", libre, "Bus régulé ou non"),

    ligne("! Batterie"),
    ligne("! --------"),
    CHAMP(u8, bat_type, "Type batterie", "", (limites{.min = 0, .max = 3}), "Type d'accumulateur"),
    CHAMP(u8, bat_ns, "Nombre de cellules série", "", non_nul, "Accumulateurs en série (255 au plus)"),
    CHAMP(u8, bat_np, "Nombre de cellules parallèle", "", non_nul,
          "Accumulateurs en parallèle (255 au plus)"),
    CHAMP(f32, bat_c, "Capacité nominale par accu", "Ah", non_nul, "Capacité nominale d'un accumulateur"),
    ligne("! Donnée pour tracé courbes de charge"),
    COURBE("ch_pt_0", ch_pt, 0, "%", libre, "Courbe de charge : état de charge du point"),
    COURBE("ch_pt_1", ch_pt, 1, "%/°C", libre, "Courbe de charge : variation de l'état avec la température"),
    COURBE("ch_pt_2", ch_pt, 2, "%/déc", libre,
           "Courbe de charge : variation de l'état par décade de courant"),
    COURBE("ch_pt_3", ch_pt, 3, "V", libre, "Courbe de charge : tension du point"),
    COURBE("ch_pt_4", ch_pt, 4, "V/°C", libre,
           "Courbe de charge : variation de la tension avec la température"),
    COURBE("ch_pt_5", ch_pt, 5, "V/déc", libre,
           "Courbe de charge : variation de la tension par décade de courant"),
    ligne("! Donnée pour tracé courbes de décharge"),
    COURBE("de_pt_0", de_pt, 0, "%", libre, "Courbe de décharge : profondeur de décharge du point"),
    COURBE("de_pt_1", de_pt, 1, "%/°C", libre,
           "Courbe de décharge : variation de la profondeur avec la température"),
    COURBE("de_pt_2", de_pt, 2, "%/déc", libre,
           "Courbe de décharge : variation de la profondeur par décade de courant"),
    COURBE("de_pt_3", de_pt, 3, "V", libre, "Courbe de décharge : tension du point"),
    COURBE("de_pt_4", de_pt, 4, "V/°C", libre,
           "Courbe de décharge : variation de la tension avec la température"),
    COURBE("de_pt_5", de_pt, 5, "V/déc", libre,
           "Courbe de décharge : variation de la tension par décade de courant"),
    CHAMP(f32, bat_cmax, "Influence courant de décharge : Cmax/Cnom", "", (limites{.min = 1, .max = 2}),
          "Rapport de capacité à faible courant"),
    CHAMP(f32, bat_c10, "Influence courant de décharge : C10/Cnom à courant 10C", "", zero_un,
          "Rapport de capacité au courant 10C"),
    // The model takes the logarithm of what 100 % would leave.
    CHAMP(f32, bat_cmin_pct, "Influence température : Cmin % à Tref", "%",
          (limites{.min = 0, .max = 100, .max_inclus = false}), "Capacité à la température minimale"),
    CHAMP(f32, bat_t999, "Influence température : Température 99.9%", "°C", libre,
          "Température à laquelle la capacité atteint 99,9 %"),
    CHAMP(f32, bat_tmin, "Influence température : Température min", "°C", libre, "Température minimale"),
    CHAMP(f32, bat_tau0, "Autodécharge : constante de temps à 0° jours", "j", libre,
          "Constante de temps d'autodécharge à 0 °C (enregistrée ; la simulation ne l'applique pas)"),
    CHAMP(f32, bat_tau50, "Autodécharge : constante de temps à 50° jours", "j", positif,
          "Constante de temps d'autodécharge à 50 °C (enregistrée ; la simulation ne l'applique pas)"),

    ligne("! Géométrie"),
    ligne("! ---------"),
    CHAMP(booleen, opt_panel_ext, "Option panneaux externes", "", libre,
          "Panneaux externes, ou panneaux sur les faces"),
    CHAMP(i16, opt_faces, "Option 4/6 faces ou cylindre", "", (limites{.min = 0, .max = 2}),
          "0 prisme carré, 1 prisme hexagonal, 2 cylindre"),
    CHAMP(f32, body_height, "Hauteur", "m", positif, "Hauteur du corps"),
    CHAMP(f32, body_width, "Largeur", "m", non_nul, "Côté de la section, ou diamètre du cylindre"),
    CHAMP(booleen, pan_fixed, "Panneaux externes : Liberté de basculement", "", libre,
          "Panneaux fixes : ils ne suivent pas le Soleil"),
    CHAMP(f32, pan_angle_init, "Panneaux externes : Orientation initiale", "°",
          (limites{.min = -180, .max = 180}), "Angle initial des panneaux"),
    // The labels of the next two lines stand crossed in the file: that is meant.
    CHAMP(f32, pan_tolerance, "Panneaux externes : Retard réponse", "°", positif,
          "Écart à partir duquel les panneaux se réorientent"),
    CHAMP(i32, pan_delay, "Panneaux externes : Décalage admissible", "s", positif,
          "Attente entre l'écart constaté et le mouvement"),
    CHAMP(f32, pan_speed, "Panneaux externes : Vitesse angulaire", "°/s", positif,
          "Vitesse de rotation des panneaux"),
    ligne("!"),

    ligne("! Données de simulation"),
    ligne("! ---------------------"),
    champ{type_champ::date_debut, nullptr, "j_debut", 0, 1, 0, "j", libre, "Début de la simulation"},
    champ{type_champ::date_fin, nullptr, "j_fin", 0, 1, 0, "j", libre, "Fin de la simulation"},
    champ{type_champ::pas, nullptr, "pas_sim", 0, 1, 0, "s", au_moins_un, "Pas de la simulation"},
};

constexpr champ beol = CHAMP(i16, cel_opt_beol, "", "", (limites{.min = 0, .max = 1}),
                             "Cellules en début (0) ou en fin (1) de vie");

#undef CHAMP
#undef TABLEAU
#undef JOUR_NUIT
#undef COURBE

} // namespace

std::span<const champ> power_champs() { return table; }

const champ& champ_beol() { return beol; }

const champ& champ_de(std::string_view nom) {
    for (const champ& c : table)
        if (nom == c.nom) return c;
    std::fprintf(stderr, "champ inconnu : %.*s\n", static_cast<int>(nom.size()), nom.data());
    std::abort();
}

double valeur(const power_record& p, const champ& c, int element) {
    const char* place = reinterpret_cast<const char*>(&p) + c.place + element * c.pas;
    switch (c.type) {
    case type_champ::i16:
    case type_champ::booleen: return lit_octets<int16_t>(place);
    case type_champ::i32: return lit_octets<int32_t>(place);
    case type_champ::u8: return lit_octets<uint8_t>(place);
    case type_champ::f32: return lit_octets<float>(place);
    case type_champ::f64:
    case type_champ::puissance_sun: return lit_octets<double>(place);
    default: return 0;
    }
}

void change(power_record& p, const champ& c, double x, int element) {
    char* place = reinterpret_cast<char*>(&p) + c.place + element * c.pas;
    switch (c.type) {
    case type_champ::i16: ecrit_octets<int16_t>(place, x); break;
    case type_champ::booleen: ecrit_octets<int16_t>(place, x != 0 ? vrai : faux); break;
    case type_champ::i32: ecrit_octets<int32_t>(place, x); break;
    case type_champ::u8: ecrit_octets<uint8_t>(place, x); break;
    case type_champ::f32: ecrit_octets<float>(place, x); break;
    case type_champ::f64:
    case type_champ::puissance_sun: ecrit_octets<double>(place, x); break;
    default: break;
    }
}
