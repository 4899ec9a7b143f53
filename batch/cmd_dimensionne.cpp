#include <cmath>

#include "analysis/dimensionne.h"
#include "batch/commandes.h"
#include "batch/donnees.h"

namespace {

void ecrit_essai(long numero, const essai_dimension& x, csv& sortie) {
    sortie.valeur(numero);
    sortie.valeur(x.valeur);
    if (std::isfinite(x.mesure))
        sortie.valeur(x.mesure);
    else
        sortie.mot("");
    sortie.valeur(x.atteint ? -1L : 0L);
    sortie.fin_de_ligne();
}

statut refuse(const std::string& raison) {
    signale(raison);
    return usage_incorrect;
}

} // namespace

statut cmd_dimensionne(const options& o, session& s, csv& sortie) {
    std::string nom, raison;
    for (const std::string& texte : o.champs)
        if (texte.find('=') == std::string::npos) {
            if (!nom.empty())
                return refuse("--champ : un seul champ à dimensionner, pas " + nom + " et " + texte);
            nom = texte;
        }
    element_etude champ;
    but_bilan but;
    if (nom.empty()) return refuse("--champ NOM manque : le champ à dimensionner");
    if (!cherche_champ(nom, s, champ, raison)) return refuse("--champ " + raison);
    if (!o.de || !o.a) return refuse("--de et --a sont nécessaires : les bouts de la recherche");
    if (!(*o.de < *o.a)) return refuse("--de doit être plus petit que --a");
    if (o.but.empty()) return refuse("--but manque, comme \"soc_min>=0.7\"");
    if (!lit_but(o.but, but, raison)) return refuse("--but : " + raison);
    const genre_nombre g = champ.champ->genre;
    const bool entier = o.entier || g == genre_nombre::entier;
    for (const double x : {*o.de, *o.a}) {
        if (entier && x != std::floor(x)) return refuse("--de et --a doivent être entiers");
        etude essai = s;
        if (!change_champ(essai, champ, x, raison)) return refuse("--champ " + nom + " : " + raison);
    }
    if (o.orbites && *o.orbites < 1) return refuse("--orbites doit être au moins 1");

    sortie.entete({"essai", nom, but.quoi.nom, "atteint"});
    long numero = 0;
    const dimensionnement d =
        dimensionne(s, champ, *o.de, *o.a, entier, but,
                    {.orbites = o.orbites.value_or(0), .dossier_donnees = dossier_donnees()},
                    [&](const essai_dimension& x) { ecrit_essai(numero++, x, sortie); });
    if (!d.reponse) {
        signale("le but " + o.but + " n'est atteint ni au premier bout ni au dernier : pas de réponse");
        return ne_tient_pas;
    }
    if (d.aux_deux_bouts)
        signale("le but " + o.but + " est atteint aux deux bouts : la réponse est le premier");
    ecrit_essai(numero, *d.reponse, sortie);
    return reussi;
}
