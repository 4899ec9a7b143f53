#include <cmath>
#include <iterator>

#include "batch/cmd_balayage.h"
#include "batch/commandes.h"
#include "batch/donnees.h"
#include "batch/reprise.h"

statut lit_plan(const options& o, const session& s, plan_balayage& plan) {
    const auto refuse = [](const std::string& raison) {
        signale(raison);
        return usage_incorrect;
    };
    if (o.varie.empty()) return refuse("--varie manque : au moins un champ qui varie");
    std::string raison;
    bool tirages = false;
    for (const std::string& texte : o.varie) {
        if (!lit_variation(texte, s, plan.variations.emplace_back(), raison))
            return refuse("--varie " + raison);
        tirages = tirages || plan.variations.back().loi != variation::genre::liste;
    }
    std::vector<std::string> noms = o.mesures;
    if (noms.empty()) noms.assign(std::begin(mesures_par_defaut), std::end(mesures_par_defaut));
    for (const std::string& nom : noms)
        if (!lit_mesure(nom, plan.mesures.emplace_back(), raison)) return refuse("--mesures : " + raison);
    if (tirages != o.tirages.has_value())
        return refuse(tirages
                          ? "--tirages manque : le nombre de tirages au hasard"
                          : "--tirages va avec un champ tiré au hasard (NOM~U(a,b) ou NOM~N(moyenne,écart))");
    if (o.tirages && *o.tirages < 1) return refuse("--tirages doit être au moins 1");
    if (o.graine && (*o.graine < 0 || *o.graine != std::floor(*o.graine)))
        return refuse("--graine doit être un nombre entier, au moins 0");
    if (o.coeurs && *o.coeurs < 1) return refuse("--coeurs doit être au moins 1");
    if (o.orbites && *o.orbites < 1) return refuse("--orbites doit être au moins 1");
    plan.tirages = o.tirages.value_or(1);
    plan.graine = static_cast<uint64_t>(o.graine.value_or(0));
    plan.bilan.orbites = o.orbites.value_or(0);
    plan.bilan.dossier_donnees = dossier_donnees();
    if (nombre_variantes(plan) < 0) return refuse("le balayage a plus de 1e12 variantes");
    return reussi;
}

statut cmd_balayage_par(const options& o, const session& s, csv& sortie, const execution_balayage& balaye) {
    plan_balayage plan;
    if (const statut lu = lit_plan(o, s, plan); lu != reussi) return lu;
    const balayage b(s, std::move(plan));
    long depuis = 0;
    if (const statut repris = commence_lignes(o, b, sortie, depuis); repris != reussi) return repris;
    balaye(b, depuis, [&](const std::string& lignes) {
        sortie.texte(lignes);
        sortie.pousse();
    });
    return reussi;
}

statut cmd_balayage(const options& o, session& s, csv& sortie) {
    return cmd_balayage_par(o, s, sortie, [&](const balayage& b, long depuis, const auto& ecrit) {
        deroule_balayage(b, depuis, o.coeurs.value_or(0), [&](ligne_balayage&& l) {
            ecrit(texte_ligne(b.plan(), l) + "\n");
            return true;
        });
    });
}
