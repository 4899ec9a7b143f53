#include "batch/modele.h"

#include <charconv>
#include <iterator>

#include "physics/options_modele.h"
#include "shell/formats.h"

namespace {

/// The place of a name in a table of names.
template <class Noms>
bool cherche(const Noms& noms, std::string_view nom, int& rang) {
    for (std::size_t i = 0; i < std::size(noms); ++i)
        if (nom == noms[i]) {
            rang = static_cast<int>(i);
            return true;
        }
    return false;
}

template <class Noms>
std::string liste(const Noms& noms) {
    std::string t;
    for (const auto& n : noms) t += (t.empty() ? "" : ", ") + std::string(n);
    return t;
}

bool refuse(const std::string& texte) {
    signale(texte);
    return false;
}

bool regle_nombre(const champ_controle& c, const std::string& texte, controle_attitude& k) {
    double x = 0;
    const char* fin = texte.data() + texte.size();
    const auto r = std::from_chars(texte.data(), fin, x);
    if (r.ec == std::errc{} && r.ptr == fin && x >= c.min && x <= c.max) {
        k.*c.place = x;
        return true;
    }
    return refuse(std::string("--controle : ") + c.nom + " doit être un nombre de " + format_court(c.min) +
                  " à " + format_court(c.max));
}

bool regle_controle(const std::string& mot, controle_attitude& k) {
    const auto egal = mot.find('=');
    const std::string nom = mot.substr(0, egal), valeur = egal == mot.npos ? "" : mot.substr(egal + 1);
    int rang = 0;
    if (egal == mot.npos) {
        if (!cherche(noms_loi, nom, rang))
            return refuse("--controle : « " + nom + " » n'est pas une loi ; il y a " + liste(noms_loi));
        k.loi = static_cast<loi_controle>(rang);
        return true;
    }
    if (nom == "cible") {
        if (!cherche(noms_cible, valeur, rang))
            return refuse("--controle : cible est l'une de " + liste(noms_cible));
        k.cible = static_cast<cible_controle>(rang);
        return true;
    }
    if (nom == "face") {
        if (!cherche(noms_face, valeur, k.face))
            return refuse("--controle : face est l'une de " + liste(noms_face));
        return true;
    }
    std::string connus = "cible, face";
    for (const champ_controle& c : champs_controle()) {
        if (nom == c.nom) return regle_nombre(c, valeur, k);
        connus += std::string(", ") + c.nom;
    }
    return refuse("--controle : réglage inconnu « " + nom + " » ; il y a " + connus);
}

} // namespace

bool regle_modele(const options& o, options_modele& m) {
    if (!o.modele.empty()) {
        if (o.modele != "reference" && o.modele != "physique")
            return refuse("--modele est « reference » ou « physique », non « " + o.modele + " »");
        m.physique = o.modele == "physique";
    }
    if (o.commande == "couple") {
        if (o.modele == "reference") return refuse("couple est un calcul du modèle physique");
        m.physique = true;
    }
    const bool options_physiques = o.sans_j2 || !o.sans.empty() || !o.controle.empty();
    if (options_physiques && !m.physique)
        return refuse("--sans-j2, --sans et --controle vont avec --modele physique");
    if (o.sans_j2) m.sans_j2 = true;
    for (const std::string& nom : o.sans)
        if (!retire_partie(m, nom)) {
            std::string connues;
            for (const partie_modele& p : parties_modele())
                connues += (connues.empty() ? "" : ", ") + std::string(p.nom);
            return refuse("--sans : partie inconnue « " + nom + " » ; il y a " + connues);
        }
    for (const std::string& mot : o.controle)
        if (!regle_controle(mot, m.controle)) return false;
    return true;
}
