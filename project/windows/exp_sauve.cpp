/// What a result window gives away: files and clipboard.
#include <QLabel>
#include <QRadioButton>
#include <QSaveFile>

#include "project/windows/exp_data.h"
#include "widgets/entete_colonne.h"
#include "widgets/fichiers.h"
#include "widgets/marque_modele.h"
#include "widgets/table_resultats.h"
#include "widgets/trace_graph.h"

using std::size_t;

bool exp_data::enregistre_table(const QString& chemin) {
    QString tete = "Date", sous_tete = "\t...";
    for (size_t c = 0; c < nombre_colonnes; ++c) {
        tete += "\t" + lab_col_[c]->text().trimmed();
        sous_tete += "\t" + lab_colp_[c]->text();
    }
    if (!enregistre_texte(this, chemin, tete + "\n\n" + sous_tete + "\n\n", *table_)) return false;
    montre_bandeau("Tableau enregistré dans " + chemin);
    return true;
}

bool exp_data::enregistre_csv(const QString& chemin, forme_csv f) {
    QSaveFile fichier(chemin);
    QByteArray ligne = "date";
    std::vector<int> colonnes;
    for (size_t c = 0; c < nombre_colonnes; ++c) {
        if (!table_->a_valeurs(int(c))) continue;
        colonnes.push_back(int(c));
        const QString modele = physique_ ? QString(" [%1]").arg(mention_physique) : QString();
        const QString titre = lab_col_[c]->text() + " " + lab_colp_[c]->text() + modele;
        ligne += separateur_csv(f) + cellule_csv(titre.simplified(), f);
    }
    bool ecrit = fichier.open(QIODevice::WriteOnly) && fichier.write(ligne + '\n') > 0;
    for (int l = 0; ecrit && l < table_->lignes(); ++l) {
        ligne = QByteArray::fromStdString(table_->date(l));
        for (const int c : colonnes) {
            QByteArray nombre = QByteArray::fromStdString(table_->texte(l, c)).trimmed();
            if (f == forme_csv::point_virgule) nombre.replace('.', ',');
            ligne += separateur_csv(f) + nombre;
        }
        ecrit = fichier.write(ligne + '\n') > 0;
    }
    if (!ecrit || !fichier.commit()) return dit_echec_ecriture(this, chemin, fichier.errorString());
    montre_bandeau("Tableau enregistré dans " + chemin);
    return true;
}

bool exp_data::enregistre_image(const QString& chemin) {
    dessine_graphe(); // it may not have been looked at since the run
    if (!pict_graph_->enregistre(chemin))
        return dit_echec_ecriture(this, chemin, "Le fichier ne peut pas être écrit.");
    montre_bandeau("Graphique enregistré dans " + chemin);
    return true;
}

void exp_data::copie_table() {
    QString t = "Date";
    for (size_t c = 0; c < nombre_colonnes; ++c)
        t += "\t" + QString(lab_col_[c]->text() + " " + lab_colp_[c]->text()).trimmed();
    copie_texte(grid_, *table_, t + "\n");
}

QString exp_data::demande_chemin(const QString& filtres) {
    return demande_nom(this, "Enregistrement des résultats", QString::fromStdString(s_.dossier_depart),
                       filtres);
}

bool exp_data::demande_et_enregistre_table() {
    const QString chemin = demande_chemin("Fichier texte (*.txt)");
    return !chemin.isEmpty() && enregistre_table(chemin);
}

void exp_data::demande_et_enregistre_csv(forme_csv f) {
    const QString chemin = demande_chemin("Valeurs séparées (*.csv)");
    if (!chemin.isEmpty()) enregistre_csv(chemin, f);
}

bool exp_data::demande_et_enregistre_image() {
    const QString chemin = demande_chemin("Image bitmap (*.bmp);;Image PNG (*.png)");
    return !chemin.isEmpty() && enregistre_image(chemin);
}

void exp_data::demande_et_calcule() {
    const QString chemin = demande_chemin("Fichier texte (*.txt)");
    if (!chemin.isEmpty()) calcule_vers_fichier(chemin);
}

void exp_data::cmd_save_clic() {
    if (en_cours_) return;
    if (opt_view_[1]->isChecked())
        demande_et_enregistre_image();
    else
        demande_et_enregistre_table();
}
