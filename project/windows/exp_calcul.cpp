/// The run of a result window.
#include <QAction>
#include <QLineEdit>
#include <QPointer>

#include <algorithm>
#include <fstream>
#include <new>

#include "analysis/reglages_etude.h"
#include "project/windows/exp_data.h"
#include "shell/echelle.h"
#include "shell/lancement.h"
#include "shell/utilitaires.h"
#include "widgets/course.h"
#include "widgets/fichiers.h"
#include "widgets/pied_calcul.h"
#include "widgets/table_resultats.h"
#include "widgets/verifications.h"

using std::size_t;

void exp_data::etat_boutons(bool en_cours) {
    en_cours_ = en_cours;
    pied_->etat(en_cours);
    for (QAction* a : {copier_, table_action_, csv_[0], csv_[1], image_action_, vers_fichier_})
        a->setEnabled(!en_cours);
}

bool exp_data::peut_lancer() {
    if (en_cours_) return false;
    form_load();
    if (!verifie_dates()) return false;
    if (std::all_of(col_variable_.begin(), col_variable_.end(), [](int v) { return v == 0; })) return false;
    if (!exige(pas_valide(s_), message_pas)) return false;
    if (s_.calcul_en_cours) {
        message(this, gravite::avertissement, message_calcul_en_cours);
        return false;
    }
    return true;
}

ecriture_nombre exp_data::ecriture(size_t colonne) const {
    const int v = col_variable_[colonne];
    return {v > 0 ? liste_[static_cast<size_t>(v - 1)].decimales : 0, image_nombres()};
}

/// The variables of the columns in use, and the eclipse last.
std::vector<voie> exp_data::voies() const {
    std::vector<voie> v;
    for (size_t c = 0; c < nombre_colonnes; ++c)
        if (col_variable_[c] > 0)
            v.push_back(liste_[static_cast<size_t>(col_variable_[c] - 1)].quoi(col_position_[c]));
    ajoute_voies(nom_eclipse(), s_.power, v);
    return v;
}

/// The values of the columns in use, as they are shown; 0 in the others.
void exp_data::convertit_ligne(const calcul& c, std::vector<double>& valeurs) const {
    auto x = c.ligne().begin();
    for (size_t col = 0; col < nombre_colonnes; ++col)
        if (const int v = col_variable_[col]; v > 0)
            valeurs[col] = convertit(*x++, liste_[static_cast<size_t>(v - 1)].vers);
}

bool exp_data::deroule(const ligne_prete& ligne) {
    const QPointer<exp_data> moi(this);
    course c(s_, s_.periode);
    stop_ = faute_ = memoire_pleine_ = false;
    montre_bandeau({});
    etat_boutons(true);
    const double debut = debut_ = s_.periode.j_debut, fin = s_.periode.j_fin;
    const auto part = [=](double date) { return fin > debut ? (date - debut) / (fin - debut) : 1.0; };
    calcul pas(modeles_de(s_), voies(),
               reglages_de(s_, {.besoins = besoins(), .dossier_donnees = s_.dossier_depart}));
    std::vector<double> valeurs(nombre_colonnes);
    bool complet = false;
    try {
        for (int n = 0; !stop_; ++n) {
            complet = !pas.suivant();
            if (complet) break;
            convertit_ligne(pas, valeurs);
            if (!ligne(n, valeurs, pas.ligne().back() == vrai)) break;
            apres_pas(pas);
            if (pas.alerte_a_signaler()) montre_bandeau(QString::fromStdString(pas.alerte()));
            if (!c.a_servir()) continue;
            if (c.a_montrer()) {
                pied_->avance(part(pas.date()));
                table_->publie();
            }
            course::sert_evenements();
            if (!moi) return false;
            if (c.reglages_changes()) {
                montre_bandeau(message_reglages_changes);
                break;
            }
        }
        table_->publie();
    } catch (const std::bad_alloc&) {
        memoire_pleine_ = true;
        complet = false;
        publie_ce_qui_tient({&table_, 1});
    }
    faute_ = pas.faute();
    if (faute_) rapporte_faute(nom_calcul(), pas.date(), QString::fromStdString(pas.raison()), conseil());
    if (!moi) return false;
    complet = complet && !faute_;
    // The axis ends at the last row of a run that stops before its end.
    fin_ = complet ? fin : pas.date_ligne();
    if (!stop_ && fin >= debut) pied_->avance(complet ? 1 : part(pas.date()));
    if (!c.reglages_changes()) resultats_calcules();
    etat_boutons(false);
    return true;
}

void exp_data::cmd_saisir_clic() {
    if (!peut_lancer()) return;
    const simulation_period& per = s_.periode;
    if (!accepte_taille(this, (per.j_fin - per.j_debut) * secondes_par_jour / per.pas_sim + 1,
                        nombre_colonnes)) {
        montre_bandeau("Le calcul n'a pas été lancé.");
        return;
    }
    limites_ = {0, 0};
    gardees_.clear(); // their rows go
    std::vector<colonne_table> colonnes;
    for (size_t c = 0; c < nombre_colonnes; ++c)
        colonnes.push_back({.ecriture = ecriture(c), .vide = col_variable_[c] == 0});
    table_->recommence(colonnes, per.j_debut, per.pas_sim);
    physique_ = s_.modele.physique;
    const bool reste = deroule([this](int, const std::vector<double>& valeurs, bool eclipse) {
        table_->ajoute(valeurs, eclipse);
        return true;
    });
    if (!reste) return;
    if (memoire_pleine_) message(this, gravite::arret, message_memoire);
    echelle e;
    for (int c = 0; c < nombre_colonnes && table_->lignes() > 0; ++c) {
        const auto [min, max] = table_->extremes(c, 0, table_->lignes());
        e.etend(min);
        e.etend(max);
    }
    e.arrondit();
    limites_ = {e.min, e.max};
    for (size_t i = 0; i < 2; ++i)
        txt_lim_[i]->setText(QString::fromStdString(texte_limite(limites_[i], image_limites())));
    retrace();
}

bool exp_data::calcule_vers_fichier(const QString& chemin) {
    if (!peut_lancer()) return false;
    std::ofstream fichier(chemin.toStdString(), std::ios::binary | std::ios::trunc);
    if (!fichier) return dit_echec_ecriture(this, chemin, "Le fichier ne peut pas être créé.");
    bool ecrit = true;
    const double debut = debut_, fin = fin_; // those of the table, which stays
    const bool reste = deroule([&](int n, const std::vector<double>& valeurs, bool) {
        fichier << date_ligne(s_.periode.j_debut, n, s_.periode.pas_sim);
        for (size_t c = 0; c < valeurs.size(); ++c)
            fichier << "  " << (col_variable_[c] > 0 ? ecriture(c).texte(valeurs[c]) : "-1");
        fichier << '\n';
        ecrit = static_cast<bool>(fichier);
        return ecrit;
    });
    if (!reste) return false;
    debut_ = debut;
    fin_ = fin;
    fichier.close();
    if (!ecrit || !fichier) return dit_echec_ecriture(this, chemin, "L'écriture s'est arrêtée avant la fin.");
    if (faute_) return false; // the rows before it are in the file
    montre_bandeau("Résultats écrits dans " + chemin);
    return true;
}
