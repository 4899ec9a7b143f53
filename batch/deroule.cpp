#include "batch/deroule.h"

#include <algorithm>

#include "analysis/reglages_etude.h"
#include "batch/donnees.h"

namespace {

constexpr unsigned par_dates = besoin::orbite | besoin::sol | besoin::energie | besoin::couples;

/// The columns of one name.
bool ajoute(const std::string& nom, const power_record& p, const std::vector<voie>& defaut,
            const std::vector<voie>& toutes, unsigned lisibles, std::vector<voie>& choix) {
    const auto v = std::find_if(toutes.begin(), toutes.end(), [&](const voie& x) { return x.nom == nom; });
    if (v != toutes.end()) {
        choix.push_back(*v);
        return true;
    }
    if (!ajoute_voies(nom, p, choix)) {
        std::string connues;
        for (const voie& c : defaut) connues += c.nom + ", ";
        signale("colonne inconnue : « " + nom + " » ; il y a " + connues +
                "et celles que donne kestrel_batch variables");
        return false;
    }
    if ((choix.back().quoi->lit & ~lisibles) == 0) return true;
    signale("la colonne " + nom + " n'est pas calculée par cette commande");
    return false;
}

} // namespace

bool choisit_voies(const options& o, const power_record& p, const std::vector<voie>& defaut,
                   const std::vector<voie>& toutes, unsigned lisibles, std::vector<voie>& choix) {
    choix.clear();
    if (o.colonnes.empty())
        choix = defaut;
    else if (o.colonnes.size() == 1 && o.colonnes[0] == "toutes")
        choix = toutes;
    else
        for (const std::string& nom : o.colonnes)
            if (!ajoute(nom, p, defaut, toutes, lisibles, choix)) return false;
    return true;
}

void ecrit_noms(const std::vector<voie>& choix, csv& sortie) {
    std::vector<std::string> noms;
    for (const voie& v : choix) noms.push_back(v.nom);
    sortie.entete(noms);
}

void ecrit_valeurs(const std::vector<voie>& choix, const std::vector<double>& valeurs, csv& sortie) {
    for (std::size_t c = 0; c < choix.size(); ++c)
        choix[c].quoi->entier ? sortie.valeur(static_cast<long>(valeurs[c])) : sortie.valeur(valeurs[c]);
    sortie.fin_de_ligne();
}

statut deroule(const char* nom, const std::vector<const char*>& defaut, const std::vector<const char*>& plus,
               const options& o, session& s, csv& sortie) {
    const std::vector<voie> premieres = voies_de(defaut, s.power);
    std::vector<voie> toutes = premieres, choix;
    for (const voie& v : voies_de(plus, s.power)) toutes.push_back(v);
    if (!choisit_voies(o, s.power, premieres, toutes, par_dates, choix)) return usage_incorrect;
    ecrit_noms(choix, sortie);

    reglages_calcul r;
    r.besoins = besoins_de(premieres); // faults of the command's own models show whatever the columns
    r.dossier_donnees = dossier_donnees();
    calcul c(modeles_de(s), choix, reglages_de(s, r));
    while (c.suivant()) ecrit_valeurs(choix, c.ligne(), sortie);
    if (c.faute_de_donnees()) {
        signale(nom + (" : " + c.raison()));
        return faute_numerique;
    }
    if (c.faute())
        return signale_faute(nom + std::string(c.faute_initiale() ? " (état initial)" : ""), c.date(),
                             c.raison());
    if (c.charge_a_signaler()) signale(message_charge_incompatible);
    return reussi;
}
