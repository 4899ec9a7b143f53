#include "project/composants.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "power/catalogues.h"
#include "power/montage.h"
#include "project/etude_champs.h"
#include "project/json_texte.h"
#include "shell/ecriture.h"
#include "shell/formats.h"
#include "shell/lecture.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* noms_genre[] = {"cellule", "batterie", "revetement"};
constexpr std::array fichiers = {"cellules.json", "batteries.json", "revetements.json"};

constexpr std::array champs_cellule = {"cel_type",   "cel_isc",    "cel_imp",    "cel_voc",     "cel_vmp",
                                       "cel_disc",   "cel_dimp",   "cel_dvoc",   "cel_dvmp",    "cel_radisc",
                                       "cel_radimp", "cel_radvoc", "cel_radvmp", "cel_surface", "cel_tref"};
constexpr std::array champs_batterie = {"bat_type",       "bat_c",    "gst_vch_max", "gst_ich_max",
                                        "gst_k_recharge", "bat_cmax", "bat_c10",     "bat_cmin_pct",
                                        "bat_t999",       "bat_tmin", "bat_tau0",    "bat_tau50"};
constexpr std::array champs_revetement = {"alpha0", "alpha_lim", "eps", "t99"};

std::string fichier_a_soi(const std::string& dossier) { return dossier + "/mes_composants.json"; }

bool lit_un(const json& j, composant& c) {
    if (!j.is_object()) return false;
    const auto texte = [&j](const char* cle) {
        const auto p = j.find(cle);
        return p != j.end() && p->is_string() ? p->get<std::string>() : std::string();
    };
    const auto genre = std::find(std::begin(noms_genre), std::end(noms_genre), texte("genre"));
    const auto valeurs = j.find("valeurs");
    c.nom = texte("nom"), c.source = texte("source"), c.note = texte("note");
    if (genre == std::end(noms_genre) || c.nom.empty() || valeurs == j.end() || !valeurs->is_object())
        return false;
    c.genre = static_cast<genre_composant>(genre - std::begin(noms_genre));
    for (const auto& [nom, x] : valeurs->items()) {
        if (!x.is_number()) return false;
        c.valeurs.emplace_back(nom, x.get<double>());
    }
    return !c.valeurs.empty();
}

void lit_entrees(const json& j, bool a_soi, const std::string& ou, liste_composants& l) {
    for (std::size_t k = 0; k < j.size(); ++k) {
        composant c;
        c.a_soi = a_soi;
        if (lit_un(j[k], c))
            l.composants.push_back(std::move(c));
        else
            l.defaut = ou + " : l'entrée " + std::to_string(k + 1) + " n'est pas un composant";
    }
}

json json_de(const composant& c) {
    json valeurs = json::object();
    for (const auto& [nom, x] : c.valeurs) valeurs[nom] = nombre_json(x);
    return {{"genre", noms_genre[static_cast<int>(c.genre)]},
            {"nom", c.nom},
            {"source", c.source},
            {"note", c.note},
            {"valeurs", valeurs}};
}

/// The array that a file holds; an empty one where there is no file. False with the reason.
bool lit_liste(const std::string& chemin, json& j, std::string& raison) {
    j = json::array();
    std::error_code erreur;
    if (!fs::exists(chemin, erreur)) return true;
    std::string texte;
    json lu;
    raison.clear();
    if (lit_fichier(chemin, json_taille_max, texte, raison) && lit_json(texte, lu, raison) && !lu.is_array())
        raison = "une liste est attendue";
    if (!raison.empty()) {
        raison = chemin + " : " + raison;
        return false;
    }
    j = std::move(lu);
    return true;
}

void ajoute(const std::string& chemin, bool a_soi, liste_composants& l) {
    json j;
    std::string raison;
    if (lit_liste(chemin, j, raison))
        lit_entrees(j, a_soi, chemin, l);
    else
        l.defaut = raison;
}

/// The list without the entries of that kind and name; what it holds besides stays as it is.
void retire(json& liste, const composant& c) {
    json reste = json::array();
    for (const json& j : liste)
        if (composant lu; !lit_un(j, lu) || lu.genre != c.genre || lu.nom != c.nom) reste.push_back(j);
    liste = std::move(reste);
}

bool ecrit_liste(const std::string& dossier, const json& j, std::string& raison) {
    if (remplace_fichier(fichier_a_soi(dossier), ecrit_json(j), raison)) return true;
    raison = fichier_a_soi(dossier) + " : " + raison;
    return false;
}

/// The étude's name of a coating's figure on a surface.
std::string champ_revetement(const power_record& p, const std::string& nom, int surface) {
    return (montage_de(p) == montage::externes ? "ext_" : "fac_") + nom + "[" + std::to_string(surface) + "]";
}

template <std::size_t n>
bool connu(const std::array<const char*, n>& noms, const std::string& nom) {
    return std::find(noms.begin(), noms.end(), nom) != noms.end();
}

/// A component touches what belongs to its kind, and nothing else.
bool admis(const composant& c, const std::string& nom) {
    switch (c.genre) {
    case genre_composant::cellule: return connu(champs_cellule, nom);
    case genre_composant::batterie:
        return connu(champs_batterie, nom) || nom.starts_with("ch_pt[") || nom.starts_with("de_pt[");
    case genre_composant::revetement: return connu(champs_revetement, nom);
    }
    return false;
}

bool pose_valeur(etude& e, const std::string& champ, double x, std::string& raison) {
    element_etude place;
    if (cherche_champ(champ, e, place, raison) && permis(e, place, x, raison)) {
        pose(e, place, x);
        return true;
    }
    raison = champ + " : " + raison;
    return false;
}

std::string francais(double x) {
    std::string s = format_general(x, 4);
    std::replace(s.begin(), s.end(), '.', ',');
    return s;
}

} // namespace

liste_composants lit_composants(std::string_view texte) {
    liste_composants l;
    json j;
    if (!lit_json(texte, j, l.defaut)) return l;
    if (j.is_array())
        lit_entrees(j, true, "liste", l);
    else
        l.defaut = "une liste est attendue";
    return l;
}

liste_composants charge_composants(const std::string& dossier) {
    liste_composants l;
    for (const char* nom : fichiers) ajoute(dossier + "/composants/" + nom, false, l);
    ajoute(fichier_a_soi(dossier), true, l);
    return l;
}

bool garde_composant(const std::string& dossier, const composant& c, std::string& raison) {
    json liste;
    if (!lit_liste(fichier_a_soi(dossier), liste, raison)) return false;
    retire(liste, c);
    liste.push_back(json_de(c));
    return ecrit_liste(dossier, liste, raison);
}

bool retire_composant(const std::string& dossier, const composant& c, std::string& raison) {
    json liste;
    if (!lit_liste(fichier_a_soi(dossier), liste, raison)) return false;
    retire(liste, c);
    return ecrit_liste(dossier, liste, raison);
}

std::vector<std::string> surfaces_a_revetir(const power_record& p) {
    if (montage_de(p) == montage::externes)
        return {"Panneau, face avant",
                "Panneau, face arrière",
                "Face X",
                "Face -X",
                "Face Y",
                "Face -Y",
                "Face Z",
                "Face -Z"};
    return {"Panneaux (côtés)", "Face supérieure", "Face inférieure"};
}

bool pose_composant(etude& e, const composant& c, int surface, std::string& raison) {
    if (surface < 0 || surface >= static_cast<int>(surfaces_a_revetir(e.power).size())) {
        raison = "il n'y a pas de surface de ce rang";
        return false;
    }
    etude neuve = e;
    // The type brings along what its catalogue holds; the component's own figures go over it.
    for (const auto& [nom, x] : c.valeurs) {
        if (!(x >= 0 && x <= batterie_generique)) continue; // no type: judged below
        if (nom == "cel_type") choisit_cellule(neuve.power, static_cast<int>(x));
        if (nom == "bat_type") choisit_batterie(neuve.power, static_cast<int>(x));
    }
    for (const auto& [nom, x] : c.valeurs) {
        if (!admis(c, nom)) {
            raison = nom + " : ce n'est pas un réglage de ce genre de composant";
            return false;
        }
        const bool revetement = c.genre == genre_composant::revetement;
        if (!pose_valeur(neuve, revetement ? champ_revetement(e.power, nom, surface) : nom, x, raison))
            return false;
    }
    e = std::move(neuve);
    return true;
}

composant composant_en_place(const etude& e, genre_composant g, int surface) {
    composant c;
    c.genre = g;
    c.a_soi = true;
    const auto note = [&](const std::string& nom, const std::string& champ) {
        c.valeurs.emplace_back(nom, valeur_montree(e, element_nomme(champ)));
    };
    if (g == genre_composant::cellule)
        for (const char* nom : champs_cellule) note(nom, nom);
    if (g == genre_composant::revetement)
        for (const char* nom : champs_revetement) note(nom, champ_revetement(e.power, nom, surface));
    if (g == genre_composant::batterie) {
        for (const char* nom : champs_batterie) note(nom, nom);
        for (const char* courbe : {"ch_pt", "de_pt"})
            for (int i = 0; i < 4; ++i)
                for (int k = 0; k < 6; ++k) {
                    const std::string nom =
                        std::string(courbe) + "[" + std::to_string(i) + "][" + std::to_string(k) + "]";
                    note(nom, nom);
                }
    }
    return c;
}

std::string resume_composant(const composant& c) {
    struct figure {
        const char *nom, *titre, *unite;
    };
    static constexpr figure montrees[] = {
        {"cel_isc", "Isc", " A"},    {"cel_voc", "Voc", " V"},    {"cel_vmp", "Vmp", " V"},
        {"cel_surface", "", " cm²"}, {"bat_c", "", " Ah"},        {"gst_vch_max", "charge", " V"},
        {"alpha0", "α neuf", ""},    {"alpha_lim", "limite", ""}, {"eps", "ε", ""}};
    std::string t;
    for (const figure& f : montrees)
        for (const auto& [nom, x] : c.valeurs)
            if (nom == f.nom)
                t += (t.empty() ? "" : " · ") + std::string(f.titre) + (*f.titre ? " " : "") + francais(x) +
                     f.unite;
    return t;
}
