#include "resultats.h"

#include "analysis/reglages_etude.h"

namespace {

std::vector<voie> choisit(const jeu& j, const std::vector<std::string>& colonnes, const power_record& p) {
    std::string refus;
    std::vector<voie> choix = choisit_voies(j, colonnes, p, refus);
    if (!refus.empty()) throw demande_fausse{refus};
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
    const std::vector<voie> choix = choisit(j, colonnes, e.power);
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

resultats deroule_attitude_reference(etude e, const std::vector<std::string>& colonnes, int cadence,
                                     const std::string& donnees) {
    const std::vector<voie> choix = choisit(jeu_attitude(e), colonnes, e.power);
    resultats r = vides(choix);
    atmosphere air(donnees);
    const att_run_bilan fin = deroule_attitude(
        e, choix, cadence, air,
        [&](const std::vector<double>& ligne) {
            for (std::size_t i = 0; i < choix.size(); ++i) r.colonnes[i].push_back(ligne[i]);
        },
        [&](double) { r.avertissements += std::string(message_divergence) + "\n"; });
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
