/// The run of the generator study, and what it gives away.
#include <QPointer>

#include <new>

#include "analysis/reglages_etude.h"
#include "power/diagnostic.h"
#include "power/windows/power_exp_pan.h"
#include "shell/lancement.h"
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
    std::size_t colonnes = 0;
    for (int g = 0; g < nombre_grandeurs; ++g)
        colonnes += liste_panneaux(static_cast<grandeur_panneaux>(g), s_.power).size();
    return accepte_taille(this, (per.j_fin - per.j_debut) * secondes_par_jour / per.pas_sim + 1,
                          static_cast<int>(colonnes));
}

/// Empty tables with the columns of the record in force.
void power_exp_pan::recommence() {
    montage_ = montage_de(s_.power);
    panneaux_ = nombre_panneaux(s_.power);
    form_load();
    if (montage_ != montage::externes && grandeur_ == angles) grandeur_ = temperature;
    for (size_t g = 0; g < nombre_grandeurs; ++g) {
        colonnes_[g] = liste_panneaux(static_cast<grandeur_panneaux>(g), s_.power);
        const QStringList noms = titres(static_cast<grandeur>(g));
        std::vector<colonne_table> t;
        for (const variable_liste& v : colonnes_[g])
            t.push_back({.ecriture = {v.decimales},
                         .vide = panneaux_ == 0,
                         .titre = noms[static_cast<int>(t.size())]});
        tables_[g]->recommence(t, s_.periode.j_debut, s_.periode.pas_sim);
    }
    montre(grandeur_);
}

void power_exp_pan::cmd_saisir_clic() {
    if (!peut_lancer()) return;
    if (!accepte_la_taille()) {
        montre_bandeau("Le calcul n'a pas été lancé.");
        return;
    }
    recommence();
    if (!deroule()) return;
    etat_boutons(false);
    form_load();
    montre(grandeur_);
}

/// The columns of all tables, and the eclipse last.
std::vector<voie> power_exp_pan::voies() const {
    std::vector<voie> v;
    for (const auto& colonnes : colonnes_)
        for (const variable_liste& c : colonnes) v.push_back(c.quoi());
    ajoute_voies("eclipse", s_.power, v);
    return v;
}

/// False when the window went away meanwhile.
bool power_exp_pan::deroule() {
    const QPointer<power_exp_pan> moi(this);
    course c(s_, s_.periode);
    stop_ = false;
    montre_bandeau({});
    etat_boutons(true);
    // The axis ends at the last row of a run that stops before its end.
    const double fin = s_.periode.j_fin;
    debut_ = s_.periode.j_debut;
    calcul pas(modeles_de(s_), voies(), reglages_de(s_));
    bool complet = false;
    try {
        while (!stop_) {
            complet = !pas.suivant();
            if (complet) break;
            range(pas);
            if (pas.alerte_a_signaler()) montre_bandeau(QString::fromStdString(pas.alerte()));
            if (pas.charge_a_signaler()) renvoie(message_charge_incompatible, "power_conf", page_batteries);
            if (!c.a_servir()) continue;
            if (c.a_montrer()) {
                pied_->avance(fin > debut_ ? (pas.date() - debut_) / (fin - debut_) : 1.0);
                tables_[grandeur_]->publie();
            }
            course::sert_evenements();
            if (!moi) return false;
            if (c.reglages_changes()) {
                montre_bandeau(message_reglages_changes);
                break;
            }
        }
        for (table_resultats* t : tables_) t->publie();
    } catch (const std::bad_alloc&) {
        complet = false;
        publie_ce_qui_tient(tables_);
        message(this, gravite::arret, message_memoire);
    }
    if (pas.faute())
        rapporte_faute("la simulation des panneaux solaires", pas.date(),
                       QString::fromStdString(pas.raison()),
                       QString::fromStdString(cause_de_faute(s_.power, s_.orbit, s_.periode)));
    if (!moi) return false;
    complet = complet && !pas.faute();
    fin_ = complet ? fin : pas.date_ligne();
    if (complet) pied_->avance(1);
    if (!c.reglages_changes()) resultats_calcules();
    return true;
}

/// The row of each table.
void power_exp_pan::range(const calcul& c) {
    const bool eclipse = c.ligne().back() == vrai;
    auto x = c.ligne().begin();
    for (size_t g = 0; g < nombre_grandeurs; ++g) {
        ligne_.clear();
        for (const variable_liste& v : colonnes_[g]) ligne_.push_back(convertit(*x++, v.vers));
        if (!colonnes_[g].empty()) tables_[g]->ajoute(ligne_, eclipse);
    }
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
