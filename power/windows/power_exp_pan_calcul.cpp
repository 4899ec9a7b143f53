/// The run of the generator study, and what it gives away.
#include <QPointer>

#include <algorithm>
#include <new>
#include <utility>

#include "power/diagnostic.h"
#include "power/windows/power_exp_pan.h"
#include "project/exp_variables.h"
#include "shell/lancement.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"
#include "widgets/course.h"
#include "widgets/fichiers.h"
#include "widgets/pied_calcul.h"
#include "widgets/table_resultats.h"
#include "widgets/trace_graph.h"
#include "widgets/verifications.h"

using std::size_t;

void power_exp_pan::etat_boutons(bool en_cours) {
    en_cours_ = en_cours;
    pied_->etat(en_cours);
}

bool power_exp_pan::peut_lancer() {
    if (en_cours_ || !exige(cellules_posees(s_), message_date_cellules)) return false;
    if (!exige(pas_valide(s_), message_pas) || !exige(periode_ordonnee(s_), message_periode)) return false;
    if (!exige(tension_regulee_posee(s_), message_tension_regulee, "power_conf", page_gestion)) return false;
    return exige(!s_.calcul_en_cours, message_calcul_en_cours);
}

/// A long study is asked for first.
bool power_exp_pan::accepte_la_taille() {
    const simulation_period& per = s_.periode;
    qsizetype colonnes = 0;
    montage_ = montage_de(s_.power);
    panneaux_ = nombre_panneaux(s_.power);
    for (int g = 0; g < nombre_grandeurs; ++g) colonnes += titres(static_cast<grandeur>(g)).size();
    return accepte_taille(this, (per.j_fin - per.j_debut) * secondes_par_jour / per.pas_sim + 1,
                          static_cast<int>(colonnes));
}

/// Empty tables with the columns of the record in force.
void power_exp_pan::recommence() {
    montage_ = montage_de(s_.power);
    panneaux_ = nombre_panneaux(s_.power);
    form_load();
    if (montage_ != montage::externes && grandeur_ == angles) grandeur_ = temperature;
    for (int g = 0; g < nombre_grandeurs; ++g) {
        const QStringList t = titres(static_cast<grandeur>(g));
        tables_[static_cast<size_t>(g)]->recommence(static_cast<int>(t.size()), s_.periode.j_debut,
                                                    s_.periode.pas_sim, t);
    }
    montre(grandeur_);
}

void power_exp_pan::cmd_saisir_clic() {
    if (!peut_lancer()) return;
    const auto [montage, panneaux] = std::pair(montage_, panneaux_);
    if (!accepte_la_taille()) {
        montage_ = montage; // of the results, which stay
        panneaux_ = panneaux;
        montre_bandeau("Le calcul n'a pas été lancé.");
        return;
    }
    recommence();
    if (!deroule()) return;
    for (table_resultats* t : tables_) t->publie();
    resultats_calcules();
    etat_boutons(false);
    form_load();
    montre(grandeur_);
}

/// False when the window went away meanwhile.
bool power_exp_pan::deroule() {
    const QPointer<power_exp_pan> moi(this);
    course c(s_, s_.periode);
    stop_ = courbe_signalee_ = false;
    montre_bandeau({});
    etat_boutons(true);
    surveillance veille;
    etude_panneaux etude(s_.power, s_.orbit, s_.periode);
    ligne_panneaux l;
    // The axis ends at the last row of a run that stops before its end.
    const double fin = s_.periode.j_fin;
    debut_ = fin_ = s_.periode.j_debut;
    bool complet = true;
    while (etude.reste() && !stop_) {
        veille.efface();
        etude.pas(l);
        if (veille.faute()) {
            const QString raison = QString::fromStdString(surveillance::description());
            const std::string cause = cause_de_faute(s_.power, s_.orbit, s_.periode);
            rapporte_faute("la simulation des panneaux solaires", l.date, raison,
                           QString::fromStdString(cause));
            complet = false;
            break;
        }
        try {
            range(l);
        } catch (const std::bad_alloc&) {
            message(this, gravite::arret, message_memoire);
            complet = false;
            break;
        }
        fin_ = l.date;
        if (s_.power.courbe_charge_incompatible)
            signale_une_fois(courbe_signalee_, message_charge_incompatible, "power_conf", page_batteries);
        if (!c.a_servir()) continue;
        if (c.a_montrer()) {
            pied_->avance(fin > debut_ ? (l.date - debut_) / (fin - debut_) : 1.0);
            tables_[grandeur_]->publie();
        }
        course::sert_evenements();
        if (!moi) return false;
        if (c.reglages_changes()) {
            montre_bandeau(message_reglages_changes);
            complet = false;
            break;
        }
    }
    if (complet && !etude.reste()) {
        fin_ = fin;
        pied_->avance(1);
    }
    return true;
}

void power_exp_pan::range(const ligne_panneaux& l) {
    const bool eclipse = l.eclipse == vrai;
    const auto n = static_cast<size_t>(l.nombre);
    std::vector<std::string> t;
    const auto ajoute = [&](grandeur g) {
        tables_[g]->ajoute(t, eclipse);
        t.clear();
    };
    const auto textes = [&](const auto& x, double decalage, int decimales) {
        for (size_t i = 0; i < n; ++i) t.push_back(texte_fixe(x[i] - decalage, decimales));
    };
    textes(l.temperature, zero_celsius, 3);
    if (n > 0) {
        const auto [min, max] = std::minmax_element(l.temperature.begin(), l.temperature.begin() + l.nombre);
        t.push_back(texte_fixe(*max - zero_celsius, 3));
        t.push_back(texte_fixe(*min - zero_celsius, 3));
    } else {
        t.resize(2);
    }
    ajoute(temperature);
    textes(l.puissance, 0, 2);
    ajoute(puissance);
    if (montage_ != montage::externes) {
        textes(l.flux_cellules, 0, 1);
        return ajoute(flux);
    }
    for (const double x : {l.flux_solaire, l.flux_albedo, l.flux_total, l.flux_cellules[0]})
        t.push_back(texte_fixe(x, 1));
    ajoute(flux);
    // Without a target the panel stays where it is.
    const double meilleur = l.meilleur_angle == sans_cible ? l.angle : l.meilleur_angle;
    for (const double x : {l.incidence_soleil, l.incidence_terre, l.angle, meilleur})
        t.push_back(texte_fixe(radians_vers_degres(x), 2));
    ajoute(angles);
}

QString power_exp_pan::tete() const { return "Date\t" + titres(grandeur_).join('\t') + "\n"; }

bool power_exp_pan::enregistre_table(const QString& chemin) {
    return enregistre_texte(this, chemin, tete() + "\n", *tables_[grandeur_]);
}

void power_exp_pan::demande_et_enregistre() {
    if (en_cours_) return;
    const QString chemin =
        demande_nom(this, "Enregistrement des résultats", QString::fromStdString(s_.dossier_depart),
                    "Fichiers de texte (*.txt);;All Files (*.*)");
    if (!chemin.isEmpty()) enregistre_table(chemin);
}

void power_exp_pan::copie_table() { copie_texte(grid_, *tables_[grandeur_], tete()); }
