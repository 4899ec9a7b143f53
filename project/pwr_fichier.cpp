#include "project/pwr_fichier.h"

#include <filesystem>

#include "power/power_champs.h"
#include "project/orb_fichier.h"
#include "project/pwr_lecteur.h"
#include "project/pwr_nombres.h"
#include "shell/ecriture.h"
#include "shell/lecture.h"
#include "shell/utilitaires.h"

namespace {

/// Column behind which a label stands, counted from 0.
constexpr std::size_t colonne_etiquette = 15;
/// Of the new content while it stands beside the old one.
constexpr const char* suffixe_copie = ".nouveau";
/// A longer text cannot be a project: 279 lines of less than a hundred characters.
constexpr std::size_t taille_max = 1 << 20;

/// UTF-8 to the single bytes of code page 1252; the file's texts stay within Latin-1.
std::string vers_1252(std::string_view utf8) {
    std::string octets;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        if (c < 0x80)
            octets += utf8[i];
        else // two-byte sequence, U+0080 to U+00FF
            octets += static_cast<char>(((c & 0x03) << 6) | (static_cast<unsigned char>(utf8[++i]) & 0x3F));
    }
    return octets;
}

std::string valeur_ecrite(const champ& c, int element, const power_record& p,
                          const simulation_period& periode) {
    switch (c.type) {
    case type_champ::commentaire: return {};
    case type_champ::f32: return ecrit_reel(valeur(p, c, element), 7);
    case type_champ::f64: return ecrit_reel(valeur(p, c, element), 15);
    case type_champ::booleen: return ecrit_entier(valeur(p, c) != 0 ? 255 : 0);
    case type_champ::puissance_sun: return ecrit_puissance_sun(p.sun_power);
    case type_champ::date_debut: return ecrit_reel(periode.j_debut, 15);
    case type_champ::date_fin: return ecrit_reel(periode.j_fin, 15);
    case type_champ::pas: return ecrit_entier(periode.pas_sim);
    default: return ecrit_entier(static_cast<long>(valeur(p, c, element)));
    }
}

std::string texte_projet(const power_record& p, const simulation_period& periode) {
    std::string texte;
    for (const champ& c : power_champs()) {
        for (int element = 0; element < c.nombre; ++element) {
            std::string ligne = valeur_ecrite(c, element, p, periode);
            if (c.texte && c.type != type_champ::commentaire && ligne.size() < colonne_etiquette)
                ligne.resize(colonne_etiquette, ' ');
            texte += ligne + (c.texte ? vers_1252(c.texte) : "") + "\r\n";
        }
    }
    return texte;
}

/// Reads one element of a field; a comment in its place leaves it as it is.
bool lit_champ(pwr_lecteur& lecteur, const champ& c, int element, power_record& p,
               simulation_period& periode) {
    // The dates keep their whole token, and with it their 15 digits.
    if (c.type == type_champ::date_debut) return lecteur.lecture_date(periode.j_debut);
    if (c.type == type_champ::date_fin) return lecteur.lecture_date(periode.j_fin);
    double x = 0;
    bool stocke = false;
    if (!lecteur.lecture_ligne(c.type, x, stocke)) return false;
    if (!stocke) return true;
    if (c.type == type_champ::pas)
        periode.pas_sim = static_cast<int32_t>(x);
    else
        change(p, c, x, element);
    return true;
}

} // namespace

std::string erreur_fichier::texte() const {
    if (ligne == 0) return chemin + " : " + raison;
    return chemin + " : ligne " + std::to_string(ligne) + " : " + raison;
}

bool sauve_energie(const std::string& chemin, const power_record& p, const simulation_period& periode) {
    ecriture_sure fichier;
    if (!fichier.ouvre(chemin, suffixe_copie) || !fichier.ecrit(texte_projet(p, periode)) ||
        !fichier.ferme_sur_disque())
        return false;
    // The previous file goes before the new one comes; a stop in between leaves the copy beside.
    const std::string ancien = fichier.destination();
    std::error_code erreur;
    if (fichier_existe(ancien)) std::filesystem::remove(ancien, erreur);
    return !erreur && fichier.pose();
}

bool enregistrement_interrompu(const std::string& chemin) {
    power_record p;
    simulation_period periode;
    erreur_fichier erreur;
    return !fichier_existe(chemin) && fichier_existe(chemin + suffixe_copie) &&
           charge_energie(chemin + suffixe_copie, p, periode, erreur);
}

bool acheve_enregistrement(const std::string& chemin) {
    std::error_code erreur;
    std::filesystem::rename(chemin + suffixe_copie, chemin, erreur);
    return !erreur;
}

bool charge_energie(const std::string& chemin, power_record& p, simulation_period& periode,
                    erreur_fichier& erreur) {
    erreur = {chemin, 0, {}};
    std::string texte;
    if (!lit_fichier(chemin, taille_max, texte, erreur.raison)) return false;

    const champ& option_faces = champ_de("opt_faces");
    pwr_lecteur lecteur(texte);
    for (const champ& c : power_champs()) {
        for (int element = 0; element < c.nombre; ++element) {
            if (lit_champ(lecteur, c, element, p, periode)) continue;
            erreur.ligne = lecteur.ligne();
            erreur.raison = lecteur.raison();
            return false;
        }
        if (&c == &option_faces) recalcule_faces(p);
    }
    erreur = {};
    return true;
}
