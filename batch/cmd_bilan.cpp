#include <charconv>
#include <cmath>

#include "analysis/bilan.h"
#include "analysis/phrase_bilan.h"
#include "batch/commandes.h"
#include "batch/donnees.h"
#include "power/power.h"

namespace {

/// A number of the JSON object; null for one that does not exist.
std::string nombre(double x) {
    if (!std::isfinite(x)) return "null";
    char t[40];
    return {t, std::to_chars(t, t + sizeof t, x + 0.0).ptr};
}

std::string json_verdict(const bilan& b) {
    std::string t = std::string("{\n  \"tient\": ") + (b.tient ? "true" : "false") + ",\n  \"raisons\": [";
    for (const raison_bilan& r : b.raisons)
        t += std::string(&r == &b.raisons[0] ? "\n" : ",\n") + "    {\"critere\": \"" + r.critere +
             "\", \"valeur\": " + nombre(r.valeur) + ", \"limite\": " + nombre(r.limite) +
             ", \"orbite\": " + std::to_string(r.orbite) + "}";
    t += b.raisons.empty() ? "]" : "\n  ]";
    for (const colonne_bilan& c : colonnes_bilan())
        t += std::string(",\n  \"") + c.nom + "\": " + nombre(b.tours.back().*c.valeur);
    return t + "\n}\n";
}

/// The columns asked for, all of them by default; of the year, `avant` and `apres` stand around them.
bool choisit(const options& o, std::vector<const colonne_bilan*>& choix) {
    if (o.colonnes.empty() || (o.colonnes.size() == 1 && o.colonnes[0] == "toutes")) {
        for (const colonne_bilan& c : colonnes_bilan()) choix.push_back(&c);
        return true;
    }
    for (const std::string& nom : o.colonnes) {
        const colonne_bilan* c = cherche_colonne_bilan(nom);
        if (!c) {
            std::string connues;
            for (const colonne_bilan& x : colonnes_bilan())
                connues += (connues.empty() ? "" : ", ") + std::string(x.nom);
            signale("colonne inconnue : « " + nom + " » ; il y a " + connues);
            return false;
        }
        choix.push_back(c);
    }
    return true;
}

void ecrit_tour(const std::vector<const colonne_bilan*>& choix, const tour_bilan& t, csv& sortie) {
    for (const colonne_bilan* c : choix) {
        const double x = t.*c->valeur;
        if (!std::isfinite(x))
            sortie.mot("");
        else if (c->entier)
            sortie.valeur(static_cast<long>(x));
        else
            sortie.valeur(x);
    }
}

/// The last word on a run: its fault, its charge curve, and whether the satellite had to hold.
statut termine(const bilan& b, const options& o) {
    if (b.charge_incompatible) signale(message_charge_incompatible);
    if (b.faute) return signale_faute("bilan", b.faute->date, b.faute->raison, b.faute->cause);
    return o.exige && !b.tient ? ne_tient_pas : reussi;
}

statut annee(const options& o, const session& s, const std::vector<const colonne_bilan*>& choix,
             const reglages_bilan& r, csv& sortie) {
    std::vector<std::string> noms = {"date", "beta"};
    for (const colonne_bilan* c : choix) noms.emplace_back(c->nom);
    noms.emplace_back("tient");
    sortie.entete(noms);
    statut fin = reussi;
    bool charge_dite = false;
    for (date_bilan& d : calcule_annee(s, o.dates.value_or(24), r)) {
        // The message of the charge curve once, however many dates it fails at.
        if (charge_dite) d.resultat.charge_incompatible = false;
        charge_dite |= d.resultat.charge_incompatible;
        if (const statut ici = termine(d.resultat, o); ici != reussi) fin = ici;
        if (d.resultat.faute) return fin;
        sortie.valeur(d.date);
        sortie.valeur(d.beta);
        ecrit_tour(choix, d.resultat.tours.back(), sortie);
        sortie.valeur(d.resultat.tient ? -1L : 0L);
        sortie.fin_de_ligne();
    }
    return fin;
}

bool usage(const options& o) {
    const char* defaut = o.orbites && *o.orbites < 1 ? "--orbites doit être au moins 1"
                         : o.dates && *o.dates < 1   ? "--dates doit être au moins 1"
                         : o.dates && !o.annee       ? "--dates va avec --annee"
                         : o.verdict && o.annee      ? "--verdict et --annee ne vont pas ensemble"
                                                     : nullptr;
    if (defaut) signale(defaut);
    return !defaut;
}

} // namespace

statut cmd_bilan(const options& o, session& s, csv& sortie) {
    std::vector<const colonne_bilan*> choix;
    if (!usage(o) || !choisit(o, choix)) return usage_incorrect;
    if (const std::string avis = avis_pas(s); !avis.empty()) signale(avis);
    reglages_bilan r{.orbites = o.orbites.value_or(0), .dossier_donnees = dossier_donnees()};
    if (o.annee) return annee(o, s, choix, r, sortie);

    const bilan b = calcule_bilan(s, r);
    if (o.verdict) {
        if (!b.faute) sortie.texte(json_verdict(b));
        return termine(b, o);
    }
    std::vector<std::string> noms;
    for (const colonne_bilan* c : choix) noms.emplace_back(c->nom);
    sortie.entete(noms);
    for (const tour_bilan& t : b.tours) {
        ecrit_tour(choix, t, sortie);
        sortie.fin_de_ligne();
    }
    return termine(b, o);
}
