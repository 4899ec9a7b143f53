#include "project/etude_champs.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "attitude/att_champs.h"
#include "orbit/orb_champs.h"
#include "orbit/orb_trajecto.h"
#include "shell/formats.h"
#include "shell/utilitaires.h"

namespace {

using acces = champ_etude::acces;

/// A single as the decimal number that is written for it: 0.1f is 0.1.
double decimale(float x) {
    double d = 0;
    const std::string t = format_court(x);
    return std::isfinite(x) && lit_nombre(t, d) ? d : x;
}

/// The value as the field's type holds it.
double arrondi(genre_nombre g, double x) {
    if (g == genre_nombre::simple) return decimale(static_cast<float>(x));
    if (g == genre_nombre::drapeau) return x != 0 ? vrai : faux;
    return x;
}

/// The value of a single, before it is a decimal number, and of the other types.
double brute(const etude& e, const element_etude& x) {
    const champ_etude& c = *x.champ;
    if (c.controle) return e.modele.controle.*c.controle;
    if (c.de_station) return e.stations[static_cast<std::size_t>(x.rang)].*c.de_station;
    if (c.critere) return criteres_en_vigueur(e).*c.critere->valeur;
    if (c.lit) return c.lit(e, x.rang);
    const acces& a = c.elements[x.element];
    if (a.attitude) return valeur(e.attitude, *a.attitude, a.element);
    if (a.orbite) return valeur(e.orbit, *a.orbite, a.element);
    if (a.energie) return valeur(e.power, *a.energie, a.element);
    return 0;
}

/// Degrees of the settings windows: each by its window's own conversion.
double en_degres(const champ_etude& c, double x) {
    return c.dans == rubrique::pointage ? radians_vers_degres(x) : x * 180 / pi;
}
double en_radians(const champ_etude& c, double x) {
    return c.dans == rubrique::pointage ? degres_vers_radians(x) : x * pi / 180;
}

std::string refus(double x, const limites& b) {
    const std::string t = texte_bornes(b);
    return format_court(x) + " n'est pas permis" + (t.empty() ? "" : " (" + t + ")");
}

bool dans(const limites& b, double x) {
    const bool bas = b.min_inclus ? x >= b.min : x > b.min;
    const bool haut = b.max_inclus ? x <= b.max : x < b.max;
    return bas && haut;
}

bool juge(const champ_etude& c, const limites& b, double x, std::string& raison) {
    if (!std::isfinite(x)) {
        raison = "un nombre est attendu";
        return false;
    }
    if (c.genre == genre_nombre::entier && x != std::nearbyint(x)) {
        raison = format_court(x) + " n'est pas permis (nombre entier)";
        return false;
    }
    const double stocke = arrondi(c.genre, x);
    if (!std::isfinite(stocke)) {
        raison = "nombre trop grand";
        return false;
    }
    if (dans(b, stocke)) return true;
    raison = refus(x, b);
    return false;
}

/// What follows from an entry; what needs the whole étude is left to the caller.
void suite(etude& e, const champ_etude& c, int element) {
    record_orbite& o = e.orbit.orbite;
    if (c.nom == "orb_demi") o.orb_moy_mvt = moy_mvt_de_demi(o.orb_demi);
    if (c.nom == "orb_moy_mvt") o.orb_demi = demi_de_moy_mvt(o.orb_moy_mvt);
    if (c.nom == "dim") {
        const double demi = std::abs(e.attitude.dim[element]) / 2;
        e.attitude.cm[element] = borne(e.attitude.cm[element], -demi, demi);
    }
    if (c.dans == rubrique::energie) recalcule_faces(e.power);
    if (c.dans == rubrique::attitude) {
        bilan_masses(e.attitude);
        e.attitude.dip_tot = e.attitude.dip_res;
    }
    if (c.nom == "inertiel") saisie_inertielle(e.orbit);
    if (c.nom == "roulis" || c.nom == "tangage" || c.nom == "lacet") saisie_orbitale(e.orbit);
}

/// Reads "[3]" at the start of a text; false when it is none.
bool lit_indice(std::string_view& t, int& n) {
    if (t.empty() || t[0] != '[') return false;
    const auto [fin, erreur] = std::from_chars(t.data() + 1, t.data() + t.size(), n);
    if (erreur != std::errc{} || fin == t.data() + t.size() || *fin != ']' || n < 0) return false;
    t.remove_prefix(static_cast<std::size_t>(fin + 1 - t.data()));
    return true;
}

int longueur(const etude& e, rubrique r) {
    return static_cast<int>(r == rubrique::modes ? e.modes.size() : e.stations.size());
}

const champ_etude* champ_nomme(std::string_view nom, bool avec_rubrique, rubrique r, bool liste) {
    for (const champ_etude& c : etude_champs())
        if ((nom == c.nom || (!c.autre_nom.empty() && nom == c.autre_nom)) && c.liste == liste &&
            (!avec_rubrique || c.dans == r))
            return &c;
    return nullptr;
}

/// Lower case without accents, for comparing words.
std::string plie(std::string_view t) {
    constexpr std::string_view bases = "aaaaaaaceeeeiiiidnooooo*ouuuuypy"; // of U+00E0 to U+00FF
    std::string r;
    for (std::size_t i = 0; i < t.size(); ++i) {
        const auto c = static_cast<unsigned char>(t[i]);
        if (c == 0xC3 && i + 1 < t.size())
            r += bases[static_cast<unsigned char>(t[++i]) & 0x1Fu];
        else
            r += static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    }
    return r;
}

/// " ; il y a bat_c (capacité nominale)": the fields that the text may have meant, by name or caption.
std::string champs_proches(std::string_view texte) {
    constexpr std::size_t moins_long = 3;
    constexpr int nombre_max = 5;
    if (texte.size() < moins_long) return {};
    const std::string mot = plie(texte);
    std::string r;
    int n = 0;
    for (const champ_etude& c : etude_champs()) {
        if (c.annexe || c.liste || plie(c.nom + ' ' + c.titre).find(mot) == std::string::npos) continue;
        if (++n > nombre_max) return r + "…";
        r += (n == 1 ? " ; il y a " : ", ") + c.nom + (c.titre.empty() ? "" : " (" + c.titre + ")");
    }
    return r;
}

/// Takes "energie." off the front of a text.
bool prend_rubrique(std::string_view& t, rubrique& r) {
    for (int i = 0; i <= static_cast<int>(rubrique::criteres); ++i) {
        const std::string_view nom = nom_rubrique(static_cast<rubrique>(i));
        if (!t.starts_with(nom) || t.size() <= nom.size() || (t[nom.size()] != '.' && t[nom.size()] != '['))
            continue;
        r = static_cast<rubrique>(i);
        t.remove_prefix(nom.size());
        if (t[0] == '.') t.remove_prefix(1);
        return true;
    }
    return false;
}

/// The indices behind a field's name, as its dimensions ask for.
bool lit_indices(std::string_view t, element_etude& x, std::string& raison) {
    const champ_etude& c = *x.champ;
    int i = 0, j = 0;
    const bool lus =
        (c.dims[0] == 0 || lit_indice(t, i)) && (c.dims[1] == 0 || lit_indice(t, j)) && t.empty();
    if (lus && (c.dims[0] == 0 || i < c.dims[0]) && (c.dims[1] == 0 || j < c.dims[1])) {
        x.element = c.dims[1] ? i * c.dims[1] + j : i;
        return true;
    }
    raison = c.dims[0] == 0
                 ? "un seul nombre, sans indice"
                 : "éléments " + nom_element({&c, 0, 0}) + " à " + nom_element({&c, 0, c.nombre() - 1});
    return false;
}

template <class C>
element_etude cherche_acces(const C* acces::*table, const C& entree, int element) {
    for (const champ_etude& c : etude_champs())
        for (int i = 0; i < c.nombre(); ++i)
            if (c.elements[i].*table == &entree && c.elements[i].element == element) return {&c, 0, i};
    return {};
}

} // namespace

const char* nom_rubrique(rubrique r) {
    constexpr const char* noms[] = {"orbite", "pointage", "energie",  "attitude", "periode",
                                    "modele", "modes",    "stations", "criteres"};
    return noms[static_cast<int>(r)];
}

bool cherche_champ(std::string_view texte, const etude& e, element_etude& x, std::string& raison) {
    rubrique r{};
    std::string_view t = texte;
    const bool avec = prend_rubrique(t, r);
    x = {};
    const bool liste = avec && lit_indice(t, x.rang);
    if (liste && t.starts_with('.')) t.remove_prefix(1);
    const std::string_view nom = t.substr(0, t.find('['));
    x.champ = champ_nomme(nom, avec, r, liste);
    if (!x.champ) {
        raison = "champ inconnu" + champs_proches(nom);
        return false;
    }
    if (x.champ->annexe) {
        raison = "ce champ se calcule, il ne se donne pas";
        return false;
    }
    if (liste && x.rang >= longueur(e, r)) {
        raison = "l'étude n'a que " + std::to_string(longueur(e, r)) + " " + nom_rubrique(r);
        return false;
    }
    return lit_indices(t.substr(nom.size()), x, raison);
}

element_etude element_de(const champ& entree, int element) {
    return cherche_acces(&acces::energie, entree, element);
}
element_etude element_de(const champ_att& entree, int element) {
    return cherche_acces(&acces::attitude, entree, element);
}
element_etude element_de(const champ_orb& entree, int element) {
    return cherche_acces(&acces::orbite, entree, element);
}

element_etude element_nomme(std::string_view nom) {
    element_etude x;
    std::string raison;
    if (!cherche_champ(nom, etude_par_defaut(), x, raison)) std::abort();
    return x;
}

std::string nom_element(const element_etude& x) {
    const champ_etude& c = *x.champ;
    const auto indice = [](int n) { return "[" + std::to_string(n) + "]"; };
    if (c.dims[1]) return c.nom + indice(x.element / c.dims[1]) + indice(x.element % c.dims[1]);
    return c.dims[0] ? c.nom + indice(x.element) : c.nom;
}

std::string chemin_element(const element_etude& x) {
    std::string debut = nom_rubrique(x.champ->dans);
    if (x.champ->liste) debut += "[" + std::to_string(x.rang) + "]";
    return debut + "." + nom_element(x);
}

std::string titre_element(const element_etude& x) {
    const std::string& element = x.champ->elements[x.element].nom;
    if (element.empty()) return x.champ->titre;
    return x.champ->titre + (element[0] == ',' || element[0] == ':' ? "" : " ") + element;
}

double valeur(const etude& e, const element_etude& x) {
    const champ_etude& c = *x.champ;
    if (c.dans == rubrique::periode)
        return c.nom == "debut" ? e.periode.j_debut : c.nom == "fin" ? e.periode.j_fin : e.periode.pas_sim;
    const double v = brute(e, x);
    return c.genre == genre_nombre::simple ? decimale(static_cast<float>(v)) : v;
}

double valeur_montree(const etude& e, const element_etude& x) {
    const double v = valeur(e, x);
    return x.champ->degres ? en_degres(*x.champ, v) : v;
}

limites bornes_element(const etude& e, const element_etude& x) {
    const champ_etude& c = *x.champ;
    limites b = c.bornes;
    if (c.demi_dim) {
        b.max = std::abs(e.attitude.dim[x.element]) / 2;
        b.min = -b.max;
    }
    return b;
}

namespace {

/// A limit in plain digits where it is a whole number.
std::string texte_borne(double x) {
    constexpr double plus_grand = 1e9;
    return x == std::nearbyint(x) && std::abs(x) < plus_grand ? std::to_string(std::lround(x))
                                                              : format_court(x);
}

} // namespace

std::string texte_bornes(const limites& b) {
    const bool bas = std::isfinite(b.min), haut = std::isfinite(b.max);
    if (bas && haut && b.min_inclus && b.max_inclus)
        return "de " + texte_borne(b.min) + " à " + texte_borne(b.max);
    std::string t;
    if (bas) t = (b.min_inclus ? "au moins " : "supérieur à ") + texte_borne(b.min);
    if (bas && haut) t += ", ";
    if (haut) t += (b.max_inclus ? "au plus " : "inférieur à ") + texte_borne(b.max);
    return t;
}

void pose(etude& e, const element_etude& x, double v) {
    const champ_etude& c = *x.champ;
    if (c.dans == rubrique::periode) {
        if (c.nom == "debut")
            e.periode.j_debut = v;
        else if (c.nom == "fin")
            e.periode.j_fin = v;
        else
            e.periode.pas_sim = static_cast<int32_t>(v);
    } else if (c.controle) {
        e.modele.controle.*c.controle = v;
    } else if (c.de_station) {
        e.stations[static_cast<std::size_t>(x.rang)].*c.de_station = v;
    } else if (c.critere) {
        e.criteres.*c.critere->place = v;
    } else if (c.ecrit) {
        c.ecrit(e, x.rang, v);
    } else {
        const acces& a = c.elements[x.element];
        if (a.attitude) change(e.attitude, *a.attitude, v, a.element);
        if (a.orbite) change(e.orbit, *a.orbite, v, a.element);
        if (a.energie) change(e.power, *a.energie, v, a.element);
    }
}

bool permis(const etude& e, const element_etude& x, double v, std::string& raison) {
    const champ_etude& c = *x.champ;
    limites b = bornes_element(e, x);
    // The converse of a pointing given in the inertial frame takes whole turns.
    if (c.nom == "roulis" || c.nom == "tangage" || c.nom == "lacet") b = {.min = -360, .max = 360};
    return juge(c, b, c.degres ? en_degres(c, v) : v, raison);
}

bool change_champ(etude& e, const element_etude& x, double montre, std::string& raison) {
    const champ_etude& c = *x.champ;
    if (!juge(c, bornes_element(e, x), montre, raison)) return false;
    const double v = c.degres ? en_radians(c, montre) : montre;
    pose(e, x, v);
    if (c.symetrique) pose(e, {&c, x.rang, x.element % c.dims[1] * c.dims[1] + x.element / c.dims[1]}, v);
    suite(e, c, x.element);
    return true;
}

bool change_champs(etude& e, std::span<const std::string> entrees, std::string& raison) {
    struct entree {
        element_etude x;
        double valeur;
        std::string_view nom;
    };
    std::vector<entree> lues;
    for (const std::string& t : entrees) {
        const std::size_t egal = t.find('=');
        const std::string nom = t.substr(0, egal), texte = egal < t.size() ? t.substr(egal + 1) : "";
        entree n{{}, 0, std::string_view(t).substr(0, nom.size())};
        if (!cherche_champ(nom, e, n.x, raison)) {
            raison = nom + " : " + raison;
            return false;
        }
        const bool drapeau = n.x.champ->genre == genre_nombre::drapeau;
        if (drapeau && (texte == "true" || texte == "false")) {
            n.valeur = texte == "true" ? vrai : faux;
        } else if (!lit_nombre(texte, n.valeur)) {
            raison = nom + " : « " + texte + " » n'est pas un nombre";
            return false;
        }
        lues.push_back(n);
    }
    const auto rang = [](const entree& n) { return std::pair(n.x.champ->dans, n.x.champ->demi_dim); };
    std::stable_sort(lues.begin(), lues.end(),
                     [&](const entree& a, const entree& b) { return rang(a) < rang(b); });
    for (const entree& n : lues)
        if (!change_champ(e, n.x, n.valeur, raison)) {
            raison = std::string(n.nom) + " : " + raison;
            return false;
        }
    return true;
}
