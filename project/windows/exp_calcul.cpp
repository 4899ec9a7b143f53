/// The run of a result window.
#include <QAction>
#include <QLineEdit>
#include <QPointer>

#include <algorithm>
#include <fstream>
#include <new>

#include "project/windows/exp_data.h"
#include "shell/formats.h"
#include "shell/lancement.h"
#include "shell/surveillance.h"
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
    for (QAction* a : {copier_, table_action_, image_action_, vers_fichier_}) a->setEnabled(!en_cours);
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

bool exp_data::un_pas(surveillance& veille, std::vector<std::string>& valeurs) {
    veille.efface();
    pas();
    for (size_t c = 0; c < valeurs.size(); ++c)
        if (col_variable_[c] > 0) valeurs[c] = texte(col_variable_[c], col_position_[c]);
    if (!veille.faute()) return true;
    faute_ = true;
    rapporte_faute(nom_calcul(), s_.periode.j_courant, raison_faute());
    return false;
}

QString exp_data::raison_faute() const { return QString::fromStdString(surveillance::description()); }

bool exp_data::deroule(const ligne_prete& ligne) {
    const QPointer<exp_data> moi(this);
    course c(s_, s_.periode);
    stop_ = faute_ = memoire_pleine_ = false;
    montre_bandeau({});
    etat_boutons(true);
    simulation_period& per = s_.periode;
    const double debut = debut_ = per.j_debut, fin = per.j_fin;
    const int32_t pas = per.pas_sim;
    per.j_courant = debut;
    surveillance veille;
    initialise();
    std::vector<std::string> valeurs(nombre_colonnes);
    fin_ = debut; // the axis ends at the last row of a run that stops before its end
    for (int n = 0; per.j_courant <= fin + 0.1 / secondes_par_jour && !stop_; ++n) {
        if (!un_pas(veille, valeurs)) break;
        if (!ligne(n, valeurs)) break;
        fin_ = per.j_courant;
        apres_pas();
        const double fraction = fin > debut ? (per.j_courant - debut) / (fin - debut) : 1.0;
        per.j_courant += pas / secondes_par_jour;
        if (!c.a_servir()) continue;
        if (c.a_montrer()) {
            pied_->avance(fraction);
            table_->publie();
        }
        course::sert_evenements();
        if (!moi) return false;
        if (c.reglages_changes()) {
            montre_bandeau(message_reglages_changes);
            break;
        }
    }
    if (per.j_courant > fin + 0.1 / secondes_par_jour) fin_ = fin;
    table_->publie();
    if (!stop_ && fin >= debut) pied_->avance((per.j_courant - debut) / std::max(fin - debut, 1e-9));
    resultats_calcules();
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
    echelle_ = {};
    gardees_.clear(); // their rows go
    table_->recommence(nombre_colonnes, per.j_debut, per.pas_sim);
    const bool reste = deroule([this](int, const std::vector<std::string>& valeurs) {
        try {
            table_->ajoute(valeurs, eclipse());
        } catch (const std::bad_alloc&) {
            memoire_pleine_ = true;
            return false;
        }
        for (size_t c = 0; c < valeurs.size(); ++c)
            if (col_variable_[c] > 0) echelle_.etend(nombre_de(valeurs[c]));
        return true;
    });
    if (!reste) return;
    if (memoire_pleine_) message(this, gravite::arret, message_memoire);
    echelle_.arrondit();
    limites_ = {echelle_.min, echelle_.max};
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
    const bool reste = deroule([&](int n, const std::vector<std::string>& valeurs) {
        fichier << date_ligne(s_.periode.j_debut, n, s_.periode.pas_sim);
        for (size_t c = 0; c < valeurs.size(); ++c)
            fichier << "  " << (col_variable_[c] > 0 ? valeurs[c] : "-1");
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
