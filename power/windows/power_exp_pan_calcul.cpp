/// The run of the generator study, and what it gives away.
#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSaveFile>
#include <QTableView>

#include <algorithm>

#include "power/windows/lancement.h"
#include "power/windows/power_exp_pan.h"
#include "project/exp_variables.h"
#include "project/windows/table_resultats.h"
#include "project/windows/trace_graph.h"
#include "shell/surveillance.h"
#include "shell/windows/course.h"
#include "shell/windows/verifications.h"

using std::size_t;

void power_exp_pan::etat_boutons(bool en_cours) {
    en_cours_ = en_cours;
    cmd_stopcalcul_->setEnabled(en_cours);
    cmd_saisir_->setEnabled(!en_cours);
    cmd_save_->setEnabled(!en_cours);
}

void power_exp_pan::montre_avancement(double fraction) {
    const double pour_cent = std::min(100.0, 100 * fraction);
    statusbar_->setValue(static_cast<int>(pour_cent * 10));
    lab_status_->setText(QString::fromStdString(texte_fixe(pour_cent, 1)) + " %");
}

bool power_exp_pan::peut_lancer() {
    if (en_cours_ || !verifie_date_cellules(this, s_)) return false;
    if (!pas_valide(s_)) return message(this, gravite::avertissement, message_pas), false;
    if (s_.calcul_en_cours) return message(this, gravite::avertissement, message_calcul_en_cours), false;
    return true;
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
    debut_ = s_.periode.j_debut;
    fin_ = s_.periode.j_fin;
    recommence();
    if (!deroule()) return;
    for (table_resultats* t : tables_) t->publie();
    note_resultats(s_);
    etat_boutons(false);
    form_load();
    montre(grandeur_);
}

/// False when the window went away meanwhile.
bool power_exp_pan::deroule() {
    const QPointer<power_exp_pan> moi(this);
    course c(s_);
    stop_ = courbe_signalee_ = false;
    montre_bandeau({});
    etat_boutons(true);
    surveillance veille;
    etude_panneaux etude(s_.power, s_.orbit, s_.periode);
    ligne_panneaux l;
    bool complet = true;
    while (etude.reste() && !stop_) {
        veille.efface();
        etude.pas(l);
        if (veille.faute()) {
            const QString raison = QString::fromStdString(surveillance::description());
            rapporte_faute("la simulation des panneaux solaires", l.date, raison);
            complet = false;
            break;
        }
        range(l);
        signale_courbe();
        if (!c.a_servir()) continue;
        if (c.a_montrer()) {
            montre_avancement(fin_ > debut_ ? (l.date - debut_) / (fin_ - debut_) : 1.0);
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
    if (complet && !stop_ && fin_ >= debut_) montre_avancement(1);
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

void power_exp_pan::signale_courbe() {
    if (courbe_signalee_ || !s_.power.courbe_charge_incompatible) return;
    courbe_signalee_ = true;
    message(this, gravite::arret, message_charge_incompatible);
    emit demande_fenetre("power_conf", 3);
}

bool power_exp_pan::enregistre_table(const QString& chemin) {
    const table_resultats& table = *tables_[grandeur_];
    QSaveFile fichier(chemin);
    bool ecrit = fichier.open(QIODevice::WriteOnly);
    if (ecrit) {
        fichier.write(("Date\t" + titres(grandeur_).join('\t') + "\n\n").toUtf8());
        for (int l = 0; l < table.lignes(); ++l)
            fichier.write(QByteArray::fromStdString(table.ligne_texte(l) + '\n'));
        ecrit = fichier.commit();
    }
    if (!ecrit)
        message(this, gravite::arret,
                QString("« %1 » n'a pas pu être enregistré.\n%2\nLes résultats restent dans la fenêtre : "
                        "choisissez un autre dossier.")
                    .arg(chemin, fichier.errorString()));
    return ecrit;
}

void power_exp_pan::demande_et_enregistre() {
    if (en_cours_) return;
    QFileDialog d(this, "Enregistrement des résultats", QString::fromStdString(s_.dossier_depart),
                  "Fichiers de texte (*.txt);;All Files (*.*)");
    d.setAcceptMode(QFileDialog::AcceptSave);
    d.setDefaultSuffix("txt");
    if (d.exec() == QDialog::Accepted && !d.selectedFiles().isEmpty())
        enregistre_table(d.selectedFiles().first());
}

void power_exp_pan::copie_table() {
    const table_resultats& table = *tables_[grandeur_];
    QString t = "Date\t" + titres(grandeur_).join('\t') + "\n";
    const auto* choix = grid_->selectionModel();
    for (int l = 0; l < table.lignes(); ++l)
        if (!choix->hasSelection() || choix->isRowSelected(l))
            t += QString::fromStdString(table.ligne_texte(l) + '\n');
    QGuiApplication::clipboard()->setText(t);
}
