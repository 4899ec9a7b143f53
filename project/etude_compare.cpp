#include "project/etude_compare.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>

#include "shell/formats.h"
#include "shell/utilitaires.h"

namespace {

bool memes_bits(double a, double b) { return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b); }

/// Angles of the integrator are no entry, yet they say what the last entry of angles was.
bool compte(const champ_etude& c) { return !c.annexe || c.dans == rubrique::pointage; }

/// Calls `f` with each element that differs.
template <class F>
void parcourt(const etude& a, const etude& b, F&& f) {
    for (const champ_etude& c : etude_champs()) {
        if (c.liste || c.dans == rubrique::criteres || !compte(c)) continue;
        for (int i = 0; i < c.nombre(); ++i) {
            const element_etude x{&c, 0, i};
            if (!memes_bits(valeur(a, x), valeur(b, x))) f(x);
        }
    }
}

difference de_element(const etude& a, const etude& b, const element_etude& x) {
    const champ_etude& c = *x.champ;
    return {c.dans,
            chemin_element(x),
            c.groupe,
            titre_element(x),
            texte_valeur(a, x),
            texte_valeur(b, x),
            c.choix.empty() && c.unite != "j" ? c.unite : ""};
}

void ajoute_criteres(const etude& a, const etude& b, std::vector<difference>& d) {
    if (a.criteres == b.criteres) return;
    const std::size_t avant = d.size();
    for (const champ_etude& c : etude_champs())
        if (const element_etude x{&c, 0, 0}; c.dans == rubrique::criteres && valeur(a, x) != valeur(b, x))
            d.push_back(de_element(a, b, x));
    if (d.size() == avant) d.push_back({rubrique::criteres, "criteres", "Critères", "", "", "", ""});
}

void ajoute_modele(const etude& a, const etude& b, std::vector<difference>& d) {
    const options_modele &m = a.modele, &n = b.modele;
    const auto texte = [](bool physique) { return physique ? "physique" : "de référence"; };
    if (m.physique != n.physique)
        d.push_back({rubrique::modele, "modele", "Modèle", "", texte(m.physique), texte(n.physique), ""});
    for (const partie_modele& p : parties_modele())
        if (m.*p.sans != n.*p.sans)
            d.push_back({rubrique::modele, "modele.sans", "Modèle", p.sens, m.*p.sans ? "sans" : "avec",
                         n.*p.sans ? "sans" : "avec", ""});
    const auto choix = [&d](const char* nom, const char* titre, auto avant, auto apres, const auto& noms) {
        if (avant != apres)
            d.push_back({rubrique::modele, std::string("modele.controle.") + nom, "Contrôle d'attitude",
                         titre, noms[static_cast<std::size_t>(avant)], noms[static_cast<std::size_t>(apres)],
                         ""});
    };
    constexpr const char* lois[] = {"aucune", "B-dot", "PD"};
    constexpr const char* cibles[] = {"nadir", "Soleil"};
    choix("loi", "loi", m.controle.loi, n.controle.loi, lois);
    choix("cible", "cible", m.controle.cible, n.controle.cible, cibles);
    choix("face", "face", m.controle.face, n.controle.face, noms_face);
}

/// A choice that brings other settings along: it names the step.
bool choix_de_catalogue(const difference& d) {
    return d.nom == "energie.cel_type" || d.nom == "energie.bat_type";
}

/// Of settings that are tied to each other, the one that people enter.
void retire_lies(std::vector<difference>& d) {
    const auto a = [&d](const char* nom) {
        return std::any_of(d.begin(), d.end(), [nom](const difference& x) { return x.nom.starts_with(nom); });
    };
    if (a("orbite.orb_demi"))
        std::erase_if(d, [](const difference& x) { return x.nom == "orbite.orb_moy_mvt"; });
    if (a("pointage.inertiel"))
        std::erase_if(d, [](const difference& x) {
            return x.nom == "pointage.roulis" || x.nom == "pointage.tangage" || x.nom == "pointage.lacet";
        });
}

bool memes_textes(const etude& a, const etude& b, rubrique r) {
    switch (r) {
    case rubrique::orbite:
        return a.nom_orbite == b.nom_orbite && a.orbit.orbite.orb_nom == b.orbit.orbite.orb_nom;
    case rubrique::modele: return a.modele == b.modele;
    case rubrique::modes: return a.modes == b.modes;
    case rubrique::stations: return a.stations == b.stations;
    case rubrique::criteres: return a.criteres == b.criteres;
    default: return true;
    }
}

} // namespace

std::string texte_valeur(const etude& e, const element_etude& x) {
    const champ_etude& c = *x.champ;
    const double v = valeur_montree(e, x);
    if (c.genre == genre_nombre::drapeau && c.choix.empty()) return v != 0 ? "oui" : "non";
    const int rang = static_cast<int>(c.genre == genre_nombre::drapeau ? std::abs(v) : v - c.premier_choix);
    if (rang >= 0 && rang < std::ssize(c.choix)) return c.choix[rang];
    if (c.unite == "j" && std::abs(v) < 1e6 && c.nom != "bat_tau0" && c.nom != "bat_tau50")
        return date_vers_texte(jour_vers_date(v + .5 / secondes_par_jour));
    return format_general(v + 0., 10); // no negative zero
}

std::vector<difference> differences(const etude& a, const etude& b) {
    std::vector<difference> d;
    if (a.nom_orbite != b.nom_orbite)
        d.push_back({rubrique::orbite, "orbite.nom", "Orbite", "nom", "« " + a.nom_orbite + " »",
                     "« " + b.nom_orbite + " »", ""});
    parcourt(a, b, [&](const element_etude& x) {
        if (!x.champ->annexe) d.push_back(de_element(a, b, x));
    });
    ajoute_modele(a, b, d);
    const auto autre = [&d](bool egal, rubrique r, const char* nom, const char* sujet) {
        if (!egal) d.push_back({r, nom, sujet, "", "", "", ""});
    };
    autre(a.modes == b.modes, rubrique::modes, "modes", "Modes de consommation");
    autre(a.stations == b.stations, rubrique::stations, "stations", "Stations");
    ajoute_criteres(a, b, d);
    autre(a.courbes == b.courbes, rubrique::criteres, "courbes", "Courbes enregistrées");
    autre(a.notes == b.notes, rubrique::criteres, "notes", "Notes");
    return d;
}

std::string libelle(const difference& d) {
    std::string t = d.sujet;
    if (!d.titre.empty()) t += " : " + d.titre;
    if (!d.avant.empty()) t += " " + d.avant + " → " + d.apres;
    if (!d.unite.empty()) t += " " + d.unite;
    return t;
}

std::string libelle_etape(const etude& avant, const etude& apres) {
    std::vector<difference> d = differences(avant, apres);
    retire_lies(d);
    if (d.empty()) return "Modification";
    for (const difference& x : d)
        if (choix_de_catalogue(x)) return libelle(x);
    std::vector<std::string> sujets;
    for (const difference& x : d)
        if (std::find(sujets.begin(), sujets.end(), x.sujet) == sujets.end()) sujets.push_back(x.sujet);
    if (sujets.size() == 1 && d.size() <= 2) {
        std::string t = libelle(d[0]);
        if (d.size() == 2) t += ", " + libelle(d[1]).substr(d[1].sujet.size() + (d[1].titre.empty() ? 0 : 3));
        return t;
    }
    const std::string compte = std::to_string(d.size()) + " réglages";
    if (sujets.size() == 1) return sujets[0] + " : " + compte;
    std::string t = compte + " (" + sujets[0];
    for (std::size_t i = 1; i < sujets.size() && i < 3; ++i) t += ", " + sujets[i];
    return t + (sujets.size() > 3 ? "…)" : ")");
}

bool meme_section(const etude& a, const etude& b, rubrique r) {
    if (!memes_textes(a, b, r)) return false;
    bool meme = true;
    parcourt(a, b, [&](const element_etude& x) { meme = meme && x.champ->dans != r; });
    return meme;
}

bool meme_etude(const etude& a, const etude& b) {
    bool meme = a.courbes == b.courbes && a.notes == b.notes && a.inconnus == b.inconnus;
    for (int i = 0; i <= static_cast<int>(rubrique::criteres); ++i)
        meme = meme && memes_textes(a, b, static_cast<rubrique>(i));
    if (meme) parcourt(a, b, [&meme](const element_etude&) { meme = false; });
    return meme;
}

void copie_section(const etude& de, etude& vers, rubrique r) {
    for (const champ_etude& c : etude_champs()) {
        if (c.dans != r || !c.de_table() || !compte(c)) continue;
        for (int i = 0; i < c.nombre(); ++i) pose(vers, {&c, 0, i}, valeur(de, {&c, 0, i}));
    }
    if (r == rubrique::orbite) {
        vers.nom_orbite = de.nom_orbite;
        vers.orbit.orbite.orb_nom = de.orbit.orbite.orb_nom;
    }
    if (r == rubrique::modele) vers.modele = de.modele;
    if (r == rubrique::modes) vers.modes = de.modes;
    if (r == rubrique::stations) vers.stations = de.stations;
    if (r == rubrique::criteres) vers.criteres = de.criteres;
}
