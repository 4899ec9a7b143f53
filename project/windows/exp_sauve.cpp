/// What a result window gives away: files and clipboard.
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QLabel>
#include <QRadioButton>
#include <QSaveFile>
#include <QTableView>

#include "project/windows/entete_colonne.h"
#include "project/windows/exp_data.h"
#include "project/windows/table_resultats.h"
#include "project/windows/trace_graph.h"
#include "shell/windows/verifications.h"

using std::size_t;

bool exp_data::dit_echec(const QString& chemin, const QString& raison) {
    message(this, gravite::arret,
            QString("« %1 » n'a pas pu être enregistré.\n%2\nLes résultats restent dans la fenêtre : "
                    "choisissez un autre dossier.")
                .arg(chemin, raison));
    return false;
}

bool exp_data::enregistre_table(const QString& chemin) {
    QSaveFile fichier(chemin); // a failure leaves an older file as it was
    if (!fichier.open(QIODevice::WriteOnly)) return dit_echec(chemin, fichier.errorString());
    QString tete = "Date", sous_tete = "\t...";
    for (size_t c = 0; c < nombre_colonnes; ++c) {
        tete += "\t" + lab_col_[c]->text().trimmed();
        sous_tete += "\t" + lab_colp_[c]->text();
    }
    fichier.write((tete + "\n\n" + sous_tete + "\n\n").toUtf8());
    for (int l = 0; l < table_->lignes(); ++l)
        fichier.write(QByteArray::fromStdString(table_->ligne_texte(l) + '\n'));
    return fichier.commit() || dit_echec(chemin, fichier.errorString());
}

bool exp_data::enregistre_image(const QString& chemin) {
    if (pict_graph_->enregistre(chemin)) return true;
    return dit_echec(chemin, "Le fichier ne peut pas être écrit.");
}

void exp_data::copie_table() {
    QString t = "Date";
    for (size_t c = 0; c < nombre_colonnes; ++c)
        t += "\t" + QString(lab_col_[c]->text() + " " + lab_colp_[c]->text()).trimmed();
    t += "\n";
    const auto* choix = grid_->selectionModel();
    for (int l = 0; l < table_->lignes(); ++l)
        if (!choix->hasSelection() || choix->isRowSelected(l))
            t += QString::fromStdString(table_->ligne_texte(l) + '\n');
    QGuiApplication::clipboard()->setText(t);
}

QString exp_data::demande_chemin(const QString& filtre, const QString& suffixe) {
    QFileDialog d(this, "Enregistrement des résultats", QString::fromStdString(s_.dossier_depart), filtre);
    d.setAcceptMode(QFileDialog::AcceptSave);
    d.setDefaultSuffix(suffixe);
    connect(&d, &QFileDialog::filterSelected, &d, [&d](const QString& f) {
        d.setDefaultSuffix(f.contains("*.png") ? "png" : f.contains("*.bmp") ? "bmp" : "txt");
    });
    if (d.exec() != QDialog::Accepted || d.selectedFiles().isEmpty()) return {};
    return d.selectedFiles().first();
}

bool exp_data::demande_et_enregistre_table() {
    const QString chemin = demande_chemin("Fichier texte (*.txt)", "txt");
    return !chemin.isEmpty() && enregistre_table(chemin);
}

bool exp_data::demande_et_enregistre_image() {
    retrace();
    const QString chemin = demande_chemin("Image bitmap (*.bmp);;Image PNG (*.png)", "bmp");
    return !chemin.isEmpty() && enregistre_image(chemin);
}

void exp_data::demande_et_calcule() {
    const QString chemin = demande_chemin("Fichier texte (*.txt)", "txt");
    if (!chemin.isEmpty()) calcule_vers_fichier(chemin);
}

void exp_data::cmd_save_clic() {
    if (en_cours_) return;
    if (opt_view_[1]->isChecked())
        demande_et_enregistre_image();
    else
        demande_et_enregistre_table();
}
