/// The columns of a result window: which variable each holds, and what it held before.
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTableView>

#include "project/windows/exp_data.h"
#include "widgets/entete_colonne.h"
#include "widgets/table_resultats.h"

using std::size_t;

void exp_data::form_load() {
    {
        const QSignalBlocker muet(scroll_);
        scroll_->setRange(1, static_cast<int>(positions().size()));
        scroll_->setPageStep(1);
    }
    // What the satellite has no more is emptied in all columns before any of them is shown; none of it is
    // kept.
    std::vector<int> videes;
    const auto vide = [&](int c) {
        table_->vide_colonne(c);
        col_variable_[static_cast<size_t>(c)] = col_position_[static_cast<size_t>(c)] = 0;
        videes.push_back(c);
    };
    if (configuration() != configuration_) {
        if (en_cours_) stop_ = true; // the variables of the run are no longer those of the list
        configuration_ = configuration();
        for (int c = 0; c < nombre_colonnes; ++c)
            if (col_variable_[static_cast<size_t>(c)] > variables_communes()) vide(c);
        gardees_.clear(); // they count by the old list
        liste_ = variables();
        list_var_->clear();
        for (const variable_liste& v : liste_) {
            auto* i = new QListWidgetItem(v.texte, list_var_);
            i->setToolTip(v.signification());
        }
    }
    // A prism of six faces may have become one of four.
    const auto perdue = [n = positions().size()](int position) { return position >= n; };
    for (int c = 0; c < nombre_colonnes; ++c)
        if (perdue(col_position_[static_cast<size_t>(c)])) vide(c);
    std::erase_if(gardees_, [&](const colonne_gardee& g) { return perdue(g.position); });
    for (const int c : videes) montre_colonne(c);
    montre_selecteur();
}

void exp_data::active_colonne(int colonne) {
    colonne_active_ = colonne;
    for (int c = 0; c < nombre_colonnes; ++c) lab_col_[static_cast<size_t>(c)]->marque_active(c == colonne);
    montre_selecteur();
}

void exp_data::choisit_variable(int colonne) {
    if (en_cours_) return; // the columns of a run stay
    const auto c = static_cast<size_t>(colonne);
    const int variable = list_var_->currentRow() + 1;
    const bool selecteur = variable > 0 && liste_[static_cast<size_t>(variable - 1)].avec_selecteur;
    const int position = selecteur ? scroll_->value() - 1 : 0;
    if (variable != col_variable_[c] || position != col_position_[c]) garde_colonne(colonne);
    col_variable_[c] = variable;
    col_position_[c] = position;
    montre_colonne(colonne);
}

void exp_data::vide_colonne(int colonne) {
    const auto c = static_cast<size_t>(colonne);
    garde_colonne(colonne);
    col_variable_[c] = col_position_[c] = 0;
    montre_colonne(colonne);
}

/// Header, sub-header, their tooltip, the selector and the graph after a column has changed.
void exp_data::montre_colonne(int colonne) {
    const auto c = static_cast<size_t>(colonne);
    const variable_liste* v =
        col_variable_[c] > 0 ? &liste_[static_cast<size_t>(col_variable_[c] - 1)] : nullptr;
    lab_col_[c]->setText(v ? QString(v->texte) : QString());
    lab_col_[c]->montre_sens(v ? QString(v->signification()) : QString());
    lab_colp_[c]->setText(v && v->avec_selecteur ? sous_titre(positions().value(col_position_[c]))
                                                 : QString());
    montre_selecteur();
    retrace();
}

/// Empties the values of a column that is about to change, and keeps it for `rend_colonne`. A column without
/// values is not worth a step where its last one with values can be brought back.
void exp_data::garde_colonne(int colonne) {
    constexpr size_t pas_gardes = 12;
    const auto c = static_cast<size_t>(colonne);
    if (col_variable_[c] == 0) return;
    const bool valeurs = table_->a_valeurs(colonne);
    if (!valeurs && !gardees_.empty() && gardees_.back().colonne == colonne) return;
    gardees_.push_back({colonne, col_variable_[c], col_position_[c], table_->vide_colonne(colonne)});
    if (gardees_.size() > pas_gardes) gardees_.erase(gardees_.begin());
    if (valeurs)
        montre_bandeau(QString("Les valeurs de « %1 » ont quitté la colonne %2 : Ctrl+Z les ramène.")
                           .arg(lab_col_[c]->text())
                           .arg(colonne + 1));
}

void exp_data::rend_colonne() {
    colonne_gardee g = std::move(gardees_.back());
    gardees_.pop_back();
    const auto c = static_cast<size_t>(g.colonne);
    table_->vide_colonne(g.colonne);
    table_->rend_colonne(g.colonne, std::move(g.valeurs));
    col_variable_[c] = g.variable;
    col_position_[c] = g.position;
    montre_bandeau({});
    montre_colonne(g.colonne);
    active_colonne(g.colonne);
}

/// The selector shows only while the active column holds a variable that needs it.
void exp_data::montre_selecteur() {
    const int v = col_variable_[static_cast<size_t>(colonne_active_)];
    const bool utile = v > 0 && liste_[static_cast<size_t>(v - 1)].avec_selecteur;
    if (utile) {
        const QSignalBlocker muet(scroll_);
        scroll_->setValue(col_position_[static_cast<size_t>(colonne_active_)] + 1);
        txt_selecteur_->setText(positions().value(scroll_->value() - 1));
    }
    for (QWidget* w : std::initializer_list<QWidget*>{lab_selecteur_, txt_selecteur_, scroll_}) {
        w->setVisible(utile);
        w->setEnabled(utile);
    }
}

void exp_data::change_position(int position) {
    const auto c = static_cast<size_t>(colonne_active_);
    if (en_cours_) return montre_selecteur();
    if (col_position_[c] == position - 1) return;
    garde_colonne(colonne_active_);
    col_position_[c] = position - 1;
    montre_colonne(colonne_active_);
}

/// Gives the grid's columns the widths of their headers.
void exp_data::aligne_colonnes() {
    auto* h = grid_->horizontalHeader();
    for (int c = 0; c < nombre_colonnes && c + 1 < h->count(); ++c)
        h->resizeSection(c + 1, lab_col_[static_cast<size_t>(c)]->width());
}
