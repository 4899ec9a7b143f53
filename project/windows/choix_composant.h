/// "Choisir un composant…": the lists with the source of each figure, and the user's own.
#pragma once

#include <QDialog>

#include "project/composants.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

class choix_composant : public QDialog {
    Q_OBJECT
public:
    /// Of one kind, from the lists of a data folder; for a coating also which surface it goes on.
    choix_composant(genre_composant g, std::string dossier, const QStringList& surfaces, int surface,
                    QWidget* parent);

    /// What has been chosen; nullptr without a choice.
    const composant* choisi() const;
    int surface() const;

private:
    void prepare_table();
    QWidget* cree_boutons();
    void relit();
    void filtre();
    void montre();
    void retire();

    genre_composant genre_;
    std::string dossier_;
    std::vector<composant> composants_;
    QLineEdit* recherche_;
    QTableWidget* table_;
    QLabel *source_, *defaut_;
    QComboBox* surfaces_ = nullptr;
    QPushButton *choisir_, *retirer_;
};

/// "Ajouter à mes composants…": asks for name and source; false when the user gives up.
bool demande_nom_composant(QWidget* parent, composant& c);
