#include <ctime>
#include <filesystem>

#include "analysis/rapport.h"
#include "batch/commandes.h"
#include "batch/donnees.h"

namespace {

std::string aujourd_hui() {
    const std::time_t t = std::time(nullptr);
    std::tm local{};
    localtime_r(&t, &local);
    char texte[32];
    return {texte, std::strftime(texte, sizeof texte, "%d/%m/%Y", &local)};
}

/// The étude's name: that of its file, or of the energy project.
std::string nom_etude(const options& o) {
    for (const std::string& chemin : {o.etude, o.pwr})
        if (!chemin.empty()) return std::filesystem::path(chemin).stem().string();
    return reglages_rapport{}.titre;
}

} // namespace

statut cmd_rapport(const options& o, session& s, csv& sortie) {
    if (std::filesystem::path(o.sortie).extension() == ".pdf") {
        signale(
            "le rapport s'écrit ici en HTML (-o NOM.html) ; le PDF se fait dans le programme, menu Fichier");
        return usage_incorrect;
    }
    if (o.orbites && *o.orbites < 1) {
        signale("--orbites doit être au moins 1");
        return usage_incorrect;
    }
    const rapport r = fait_rapport(s, {.titre = nom_etude(o),
                                       .date = aujourd_hui(),
                                       .version = VERSION_KESTREL,
                                       .orbites = o.orbites.value_or(0),
                                       .dossier_donnees = dossier_donnees()});
    sortie.texte(rapport_html(r));
    const bilan& b = r.resultat;
    if (b.charge_incompatible) signale(message_charge_incompatible);
    return b.faute ? signale_faute("rapport", b.faute->date, b.faute->raison) : reussi;
}
