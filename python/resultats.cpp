#include "resultats.h"

#include <algorithm>

#include "analysis/reglages_etude.h"
#include "attitude/att_run.h"

namespace {

std::vector<voie> choisit(const std::vector<const char*>& defaut, const std::vector<const char*>& plus,
                          unsigned lisibles, const std::vector<std::string>& colonnes,
                          const power_record& p) {
    const std::vector<voie> premieres = voies_de(defaut, p);
    std::vector<voie> toutes = premieres, choix;
    for (const voie& v : voies_de(plus, p)) toutes.push_back(v);
    if (colonnes.empty()) return premieres;
    if (colonnes.size() == 1 && colonnes[0] == "toutes") return toutes;
    for (const std::string& nom : colonnes) {
        const auto v =
            std::find_if(toutes.begin(), toutes.end(), [&](const voie& x) { return x.nom == nom; });
        if (v != toutes.end())
            choix.push_back(*v);
        else if (!ajoute_voies(nom, p, choix))
            throw demande_fausse{"colonne inconnue : « " + nom + " » (kestrel.variables() les donne)"};
        if (choix.back().quoi->lit & ~lisibles)
            throw demande_fausse{"la colonne " + nom + " n'est pas calculée par cet appel"};
    }
    return choix;
}

resultats vides(const std::vector<voie>& choix) {
    resultats r;
    for (const voie& v : choix) {
        r.noms.push_back(v.nom);
        r.entiers.push_back(v.quoi->entier);
        r.colonnes.emplace_back();
    }
    return r;
}

} // namespace

resultats deroule_jeu(etude e, const jeu& j, const std::vector<std::string>& colonnes, int cadence,
                      const std::string& donnees) {
    constexpr unsigned par_dates = besoin::orbite | besoin::sol | besoin::energie | besoin::couples;
    const unsigned lisibles = j.attitude ? par_dates | besoin::attitude | besoin::physique : par_dates;
    const std::vector<voie> choix = choisit(j.defaut, j.plus, lisibles, colonnes, e.power);
    resultats r = vides(choix);
    reglages_calcul reglages = reglages_de(e, {.besoins = besoins_de(voies_de(j.defaut, e.power)),
                                               .dossier_donnees = donnees,
                                               .cadence = cadence,
                                               .couple = j.couple});
    calcul c(modeles_de(e), choix, std::move(reglages));
    while (c.suivant()) {
        for (std::size_t i = 0; i < choix.size(); ++i) r.colonnes[i].push_back(c.ligne()[i]);
        if (c.alerte_a_signaler()) r.avertissements += c.alerte() + "\n";
    }
    if (c.charge_a_signaler()) r.avertissements += std::string(message_charge_incompatible) + "\n";
    if (c.faute() || c.faute_de_donnees()) r.faute = {c.date(), c.raison()};
    return r;
}

resultats deroule_attitude(etude e, const std::vector<std::string>& colonnes, int cadence,
                           const std::string& donnees) {
    const std::vector<const char*> toutes(colonnes_resultats.begin(), colonnes_resultats.end());
    const std::vector<voie> choix = choisit(toutes, {}, besoin::attitude, colonnes, e.power);
    resultats r = vides(choix);
    atmosphere air(donnees);
    etat_calcul etat{e.periode, e.orbit, e.power, e.attitude};
    att_run_rappels rappels;
    rappels.ecrit = [&](const enregistrement_att& x) {
        etat.enregistrement = &x;
        for (std::size_t i = 0; i < choix.size(); ++i) r.colonnes[i].push_back(choix[i].lit(etat));
    };
    rappels.diverge = [&](double) { r.avertissements += std::string(message_divergence) + "\n"; };
    const att_run_bilan fin = att_run(e.attitude, e.orbit, e.periode, cadence, air, rappels);
    if (fin.fin == att_run_fin::faute) r.faute = {fin.date, fin.raison};
    return r;
}

resultats resultats_bilan(const std::vector<tour_bilan>& tours) {
    resultats r;
    for (const colonne_bilan& c : colonnes_bilan()) {
        r.noms.emplace_back(c.nom);
        r.entiers.push_back(c.entier);
        auto& colonne = r.colonnes.emplace_back();
        for (const tour_bilan& t : tours) colonne.push_back(t.*c.valeur);
    }
    return r;
}
