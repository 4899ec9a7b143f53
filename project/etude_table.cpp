#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

#include "attitude/att_champs.h"
#include "orbit/orb_champs.h"
#include "project/etude_champs.h"

namespace {

using acces = champ_etude::acces;

/// What a field is about and where it is edited, by the beginning of its name.
struct sujet {
    rubrique dans;
    const char* debut;
    const char* groupe;
    const char* fenetre;
    int page;
};
constexpr sujet sujets[] = {
    {rubrique::orbite, "", "Orbite", "orbito_conf", 0},
    {rubrique::pointage, "", "Pointage", "orbito_conf", 1},
    {rubrique::energie, "cel_", "Cellules", "power_conf", 1},
    {rubrique::energie, "inc_", "Cellules", "power_conf", 1},
    {rubrique::energie, "albedo", "Environnement", "orbito_conf", 2},
    {rubrique::energie, "earth_ir", "Environnement", "orbito_conf", 2},
    {rubrique::energie, "sun_power", "Environnement", "orbito_conf", 2},
    {rubrique::energie, "gst_", "Gestion", "power_conf", 4},
    {rubrique::energie, "p_", "Gestion", "power_conf", 4},
    {rubrique::energie, "bat_", "Batterie", "power_conf", 3},
    {rubrique::energie, "ch_pt", "Batterie", "power_conf", 3},
    {rubrique::energie, "de_pt", "Batterie", "power_conf", 3},
    {rubrique::energie, "opt_", "Panneaux", "power_conf", 0},
    {rubrique::energie, "body_height", "Panneaux", "power_conf", 0},
    {rubrique::energie, "body_width", "Panneaux", "power_conf", 0},
    {rubrique::energie, "pan_", "Panneaux", "power_conf", 0},
    {rubrique::energie, "", "Thermique", "power_conf", 2},
    {rubrique::attitude, "omega_init", "Attitude", "att_sim", -1},
    {rubrique::attitude, "dip_res", "Propriétés", "att_conf", 1},
    {rubrique::attitude, "sn", "Propriétés", "att_conf", 1},
    {rubrique::attitude, "st", "Propriétés", "att_conf", 1},
    {rubrique::attitude, "cr", "Propriétés", "att_conf", 1},
    {rubrique::attitude, "cd", "Propriétés", "att_conf", 1},
    {rubrique::attitude, "dip_act", "Actionneurs", "att_conf", 2},
    {rubrique::attitude, "jets", "Actionneurs", "att_conf", 2},
    {rubrique::attitude, "JR", "Actionneurs", "att_conf", 2},
    {rubrique::attitude, "OM_init", "Actionneurs", "att_conf", 2},
    {rubrique::attitude, "md", "Actionneurs", "att_conf", 2},
    {rubrique::attitude, "ld", "Actionneurs", "att_conf", 2},
    {rubrique::attitude, "cm", "Masses", "att_conf", 0},
    {rubrique::attitude, "c", "Actionneurs", "att_conf", 2},
    {rubrique::attitude, "k", "Actionneurs", "att_conf", 2},
    {rubrique::attitude, "", "Masses", "att_conf", 0},
    {rubrique::periode, "", "Simulation", "menu", -1},
    {rubrique::modele, "", "Contrôle d'attitude", "page_banc", -1},
    {rubrique::modes, "", "Modes", "page_bilan", -1},
    {rubrique::stations, "", "Stations", "page_carte", -1},
    {rubrique::criteres, "", "Critères", "page_bilan", -1},
};

/// Short captions of the fields whose meaning is a sentence.
constexpr const char* titres[][2] = {
    {"cel_isc", "courant Isc"},
    {"cel_imp", "courant Imp"},
    {"cel_voc", "tension Voc"},
    {"cel_vmp", "tension Vmp"},
    {"cel_disc", "variation dIsc/dT"},
    {"cel_dimp", "variation dImp/dT"},
    {"cel_dvoc", "variation dVoc/dT"},
    {"cel_dvmp", "variation dVmp/dT"},
    {"cel_ns", "cellules en série"},
    {"cel_np", "branches en parallèle"},
    {"cel_tref", "température de référence"},
    {"inc_div", "incidence de divergence"},
    {"inc_max", "incidence maximale"},
    {"date_cell", "date des revêtements neufs"},
    {"sun_power", "puissance du Soleil"},
    {"earth_ir", "infrarouge de la Terre"},
    {"gst_vch_max", "tension maximale de charge"},
    {"gst_rend_bat", "rendement batterie/charge utile"},
    {"gst_rend_gs", "rendement générateur/charge utile"},
    {"p_demand", "puissance demandée"},
    {"p_dissip", "part dissipée"},
    {"bat_c", "capacité nominale"},
    {"bat_ns", "accumulateurs en série"},
    {"bat_np", "accumulateurs en parallèle"},
    {"ch_pt", "courbe de charge"},
    {"de_pt", "courbe de décharge"},
    {"int_t_init", "température initiale du nœud interne"},
    {"body_width", "largeur"},
    {"pan_tolerance", "écart admissible"},
    {"pan_delay", "attente avant le mouvement"},
    {"orb_ascension", "ascension droite du nœud"},
    {"orb_argument", "argument du périgée"},
    {"orb_anomalie", "anomalie moyenne"},
    {"orb_moy_mvt", "moyen mouvement"},
    {"orb_inclinaison", "inclinaison"},
    {"orb_excentricite", "excentricité"},
    {"orb_jour", "jour de l'époque"},
    {"orbital", "repère"},
    {"spin", "rotation"},
    {"mode_pointage", "face qui pointe"},
    {"albedo", "albédo"},
    {"cel_opt_beol", "vie des cellules"},
    {"opt_panel_ext", "montage"},
    {"opt_faces", "forme du corps"},
    {"gst_regulated", "bus régulé"},
    {"axe_spin", "axe de rotation"},
    {"vspin", "vitesse de rotation"},
    {"pas", "pas"},
    {"debut", "début"},
    {"fin", "fin"},
};

/// What whole values stand for; flags name their 0 first.
struct choix {
    const char* nom;
    int premier;
    std::array<const char*, 5> valeurs;
};
constexpr choix choix_nommes[] = {
    {"cel_type", 0, {"AsGa", "Silicium"}},
    {"cel_opt_beol", 0, {"début", "fin"}},
    {"opt_panel_ext", 0, {"panneaux sur les faces", "panneaux externes"}},
    {"opt_faces", 0, {"prisme carré", "prisme hexagonal", "cylindre"}},
    {"gst_regulated", 0, {"non", "oui"}},
    {"bat_type", 0, {"Nickel-Cadmium", "Nickel-Hydrogène", "Lithium-Ion", "Générique"}},
    {"orbital", 0, {"inertiel", "orbital local"}},
    {"axe_spin", 0, {"X", "Y", "Z"}},
    {"mode_pointage", 1, {"+X", "+Y", "+Z", "-X", "-Z"}},
};

constexpr const char* mois[] = {"de janvier",   "de février", "de mars",     "d'avril",
                                "de mai",       "de juin",    "de juillet",  "d'août",
                                "de septembre", "d'octobre",  "de novembre", "de décembre"};
constexpr const char* axes_pointage[] = {"X", "Y", "Z"};

/// The meaning up to its first explanation, beginning small.
std::string titre_court(const champ_etude& c) {
    for (const auto& [nom, titre] : titres)
        if (c.nom == nom) return titre;
    std::string t =
        c.sens.substr(0, std::min(c.sens.find(" ("), std::min(c.sens.find(" : "), c.sens.find(" ;"))));
    if (t.starts_with("É")) t.replace(0, 2, "é");
    if (t.size() > 1 && t[0] >= 'A' && t[0] <= 'Z' && !(t[1] >= 'A' && t[1] <= 'Z')) t[0] += 'a' - 'A';
    return t;
}

void range(std::vector<champ_etude>& t, champ_etude c) {
    for (const sujet& s : sujets)
        if (s.dans == c.dans && std::string_view(c.nom).starts_with(s.debut)) {
            c.groupe = s.groupe;
            c.fenetre = s.fenetre;
            c.page = s.page;
            break;
        }
    for (const choix& n : choix_nommes)
        if (c.nom == n.nom) {
            c.premier_choix = n.premier;
            for (const char* valeur : n.valeurs)
                if (valeur) c.choix.push_back(valeur);
        }
    c.titre = titre_court(c);
    t.push_back(std::move(c));
}

/// The limits of an integer's type, where the table has none.
limites bornes_type(limites b, double min, double max) {
    return {std::max(b.min, min), std::max(std::min(b.max, max), min), b.min_inclus, b.max_inclus};
}

void tient_seize_bits(champ_etude& c) {
    c.entier_min = -32768;
    c.entier_max = 32767;
}

// -- Orbit and pointing

void ajoute(std::vector<champ_etude>& t, const champ_orb& o) {
    if (o.type == type_orb::texte) return;
    champ_etude c{.dans = o.pointage ? rubrique::pointage : rubrique::orbite, .nom = o.nom};
    if (o.nombre > 1) c.dims = {o.nombre, 0};
    c.genre = o.type == type_orb::f64       ? genre_nombre::reel
              : o.type == type_orb::drapeau ? genre_nombre::drapeau
                                            : genre_nombre::entier;
    c.bornes = {.min = o.min, .max = o.max};
    if (o.type == type_orb::i16) tient_seize_bits(c);
    c.degres = o.degres;
    c.annexe = !o.controles[0];
    c.unite = o.unite;
    c.sens = o.sens;
    for (int i = 0; i < o.nombre; ++i)
        c.elements.push_back(
            {.orbite = &o, .element = i, .nom = o.nombre == 3 && !c.annexe ? axes_pointage[i] : ""});
    range(t, std::move(c));
}

// -- Power

genre_nombre genre_de(type_champ t) {
    switch (t) {
    case type_champ::f32: return genre_nombre::simple;
    case type_champ::f64:
    case type_champ::puissance_sun: return genre_nombre::reel;
    case type_champ::booleen: return genre_nombre::drapeau;
    default: return genre_nombre::entier;
    }
}

limites bornes_de(const champ& c) {
    constexpr double simple = std::numeric_limits<float>::max();
    switch (c.type) {
    case type_champ::u8: return bornes_type(c.bornes, 0, 255);
    case type_champ::i16: return bornes_type(c.bornes, -32768, 32767);
    case type_champ::i32: return bornes_type(c.bornes, -2147483648., 2147483647.);
    case type_champ::f32:
        return std::isinf(c.bornes.max) && std::isfinite(c.bornes.min)
                   ? c.bornes
                   : bornes_type(c.bornes, -simple, simple);
    default: return c.bornes;
    }
}

champ_etude de_energie(const champ& p) {
    champ_etude c{.dans = rubrique::energie, .nom = p.nom, .genre = genre_de(p.type), .bornes = bornes_de(p)};
    if (p.type == type_champ::i16) tient_seize_bits(c);
    if (p.type == type_champ::u8) c.entier_min = 0, c.entier_max = 255;
    c.unite = p.unite;
    c.sens = p.sens;
    return c;
}

constexpr const char* noeuds[] = {"du panneau, face avant", "du panneau, face arrière",
                                  "de la face X",           "de la face -X",
                                  "de la face Y",           "de la face -Y",
                                  "de la face Z",           "de la face -Z",
                                  "du nœud interne"};
constexpr const char* surfaces[] = {"des panneaux", "de la face supérieure", "de la face inférieure"};

/// Which month, panel or face an element of a list belongs to.
std::string nom_dans(const champ& p, int i) {
    const std::string_view nom = p.nom;
    if (p.nombre == 12) return mois[i];
    if (p.nombre == 1) return "";
    const bool interne = std::string_view(p.sens).ends_with("nœud interne"); // a coupling with it
    const std::string place = nom.starts_with("fac_") ? surfaces[i] : noeuds[i + (p.nombre == 6 ? 2 : 0)];
    return interne ? ", " + place.substr(place.starts_with("des ") ? 4 : std::strlen("de la ")) : place;
}

/// Day and night stand apart in the energy file, and each coefficient of the four points of a curve: here
/// they are the record's arrays. Both tell the entry that begins one.
void ajoute_jour_nuit(std::vector<champ_etude>& t, const champ& jour, const champ& nuit) {
    champ_etude c = de_energie(jour);
    c.nom = std::string(jour.nom).substr(0, std::string_view(jour.nom).rfind('_'));
    c.sens = c.sens.substr(0, c.sens.rfind(", de jour"));
    c.dims = {2, 0};
    c.elements = {{.energie = &jour, .nom = "de jour"}, {.energie = &nuit, .nom = "de nuit"}};
    range(t, std::move(c));
}

void ajoute_courbe(std::vector<champ_etude>& t, const champ* premier) {
    champ_etude c = de_energie(*premier);
    c.nom = c.nom.substr(0, c.nom.size() - 2);
    const bool charge = c.nom.starts_with("ch");
    c.sens = c.sens.substr(0, c.sens.find(" :"));
    c.unite = "";
    c.dims = {4, 6};
    for (int j = 0; j < 4; ++j)
        for (int k = 0; k < 6; ++k) {
            const std::string_view sens = premier[k].sens;
            const std::string point = j < 3 ? "point " + std::to_string(j) : charge ? "surcharge" : "100 %";
            c.elements.push_back(
                {.energie = premier + k,
                 .element = j,
                 .nom = ", " + point + " : " + std::string(sens.substr(sens.find(" : ") + 3))});
        }
    range(t, std::move(c));
}

void ajoute_energie(std::vector<champ_etude>& t) {
    const auto table = power_champs();
    for (const champ& p : table) {
        const std::string_view nom = p.nom;
        if (p.type == type_champ::commentaire || p.type >= type_champ::date_debut || nom.ends_with("_nuit"))
            continue;
        if (nom.ends_with("_jour")) {
            const std::string nuit = std::string(nom.substr(0, nom.rfind('_'))) + "_nuit";
            ajoute_jour_nuit(t, p, champ_de(nuit));
        } else if (nom.starts_with("ch_pt_") || nom.starts_with("de_pt_")) {
            if (nom.ends_with("_0")) ajoute_courbe(t, &p);
        } else {
            champ_etude c = de_energie(p);
            if (p.nombre > 1) c.dims = {p.nombre, 0};
            for (int i = 0; i < p.nombre; ++i)
                c.elements.push_back({.energie = &p, .element = i, .nom = nom_dans(p, i)});
            range(t, std::move(c));
        }
    }
    const champ& beol = champ_beol();
    champ_etude c = de_energie(beol);
    c.elements = {{.energie = &beol}};
    range(t, std::move(c));
}

// -- Attitude

bool calcule(std::string_view nom) {
    for (const char* n : {"dip_tot", "dip_cmd", "jet_cmd", "Mt", "cm_total", "I"})
        if (nom == n) return true;
    return false;
}

void ajoute(std::vector<champ_etude>& t, const champ_att& a) {
    if (a.nom == std::string_view("face_c")) return; // always follows from dimensions and centre
    champ_etude c{.dans = rubrique::attitude, .nom = a.nom};
    const bool matrice = a.nombre == 9;
    if (a.nombre > 1) c.dims = {matrice ? 3 : a.nombre, matrice ? 3 : 0};
    c.genre = a.type == type_att::f64 ? genre_nombre::reel : genre_nombre::entier;
    c.bornes = {.min = a.min, .max = a.max};
    if (a.type == type_att::i16) {
        c.bornes = bornes_type(c.bornes, -32768, 32767);
        tient_seize_bits(c);
    }
    c.symetrique = matrice;
    c.demi_dim = a.demi_dim;
    c.degres = a.degres;
    c.annexe = calcule(a.nom);
    c.unite = a.unite;
    c.sens = a.sens;
    c.elements.resize(a.nombre);
    for (int i = 0; i < a.nombre; ++i) {
        // From the order of the file to that of the record; matrices stand by columns there, by rows here.
        const int record = a.ordre ? a.ordre[i] : i;
        c.elements[matrice ? record % 3 * 3 + record / 3 : record] = {
            .attitude = &a, .element = i, .nom = a.elements ? a.elements[i] : ""};
    }
    range(t, std::move(c));
}

// -- What stands in no table of a file

/// A single number reached by its routines.
champ_etude nombre(rubrique dans, const char* nom, limites bornes, const char* unite, const char* sens) {
    champ_etude c{.dans = dans, .nom = nom, .bornes = bornes};
    c.unite = unite;
    c.sens = sens;
    c.elements.resize(1);
    return c;
}

void ajoute_periode(std::vector<champ_etude>& t) {
    champ_etude c =
        nombre(rubrique::periode, "debut", {}, "j", "Début de la simulation, en jours depuis 1950");
    c.autre_nom = "j_debut";
    range(t, c);
    c = nombre(rubrique::periode, "fin", {}, "j", "Fin de la simulation, en jours depuis 1950");
    c.autre_nom = "j_fin";
    range(t, c);
    c = nombre(rubrique::periode, "pas", {.min = 1, .max = 2147483647.}, "s", "Pas de la simulation");
    c.autre_nom = "pas_sim";
    c.genre = genre_nombre::entier;
    range(t, c);
}

#define MODE(membre)                                                                                         \
    [](const etude& e, int i) -> double { return e.modes[i].membre; },                                       \
        [](etude& e, int i, double x) { e.modes[i].membre = x; }
void ajoute_listes(std::vector<champ_etude>& t) {
    const auto ajoute = [&t](champ_etude c, double (*lit)(const etude&, int),
                             void (*ecrit)(etude&, int, double)) {
        c.liste = true;
        c.lit = lit;
        c.ecrit = ecrit;
        range(t, std::move(c));
    };
    using enum rubrique;
    constexpr limites positif{.min = 0}, non_nul{.min = 0, .min_inclus = false}, latitude{-90, 90};
    ajoute(nombre(modes, "puissance", positif, "W", "Puissance du mode"), MODE(puissance));
    ajoute(nombre(modes, "latitude_min", latitude, "deg", "Latitude la plus au sud"),
           MODE(quand.latitude_min));
    ajoute(nombre(modes, "latitude_max", latitude, "deg", "Latitude la plus au nord"),
           MODE(quand.latitude_max));
    ajoute(nombre(modes, "periode", non_nul, "s", "Durée d'une répétition du mode"), MODE(quand.periode));
    ajoute(nombre(modes, "debut", positif, "s", "Début du mode dans chaque répétition"), MODE(quand.debut));
    ajoute(nombre(modes, "duree", positif, "s", "Durée du mode"), MODE(quand.duree));
    champ_etude n = nombre(modes, "une_orbite_sur", {.min = 1, .max = 1e6}, "", "Une orbite sur tant");
    n.genre = genre_nombre::entier;
    ajoute(
        n, [](const etude& e, int i) -> double { return e.modes[i].quand.une_orbite_sur; },
        [](etude& e, int i, double x) { e.modes[i].quand.une_orbite_sur = static_cast<int>(x); });
    for (const champ_station& s : champs_station()) {
        champ_etude c = nombre(rubrique::stations, s.nom, {s.min, s.max}, s.unite, s.sens);
        c.liste = true;
        c.de_station = s.valeur;
        range(t, std::move(c));
    }
    for (const champ_critere& k : champs_criteres()) {
        champ_etude c = nombre(criteres, k.nom, {k.min, k.max}, k.unite, k.sens);
        c.critere = &k;
        range(t, std::move(c));
    }
    for (const champ_controle& k : champs_controle()) {
        champ_etude c = nombre(modele, k.nom, {k.min, k.max}, k.unite, k.sens);
        c.controle = k.place;
        c.autre_nom = std::string("controle.") + k.nom;
        range(t, std::move(c));
    }
}

#undef MODE

std::vector<champ_etude> construit() {
    std::vector<champ_etude> t;
    for (const champ_orb& o : orb_champs()) ajoute(t, o);
    ajoute_energie(t);
    for (const champ_att& a : att_champs()) ajoute(t, a);
    ajoute_periode(t);
    ajoute_listes(t);
    return t;
}

} // namespace

std::span<const champ_etude> etude_champs() {
    static const std::vector<champ_etude> t = construit();
    return t;
}
