/// The dialog that takes two-line elements, pasted or from a file: what they say is shown, or what is wrong
/// with them, before they are taken.
#pragma once

#include <QDialog>

#include <vector>

#include "project/tle_fichier.h"

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;

class import_tle : public QDialog {
    Q_OBJECT
public:
    explicit import_tle(const QString& dossier, QWidget* parent = nullptr);

    /// The chosen elements; valid once the dialog has been accepted.
    const elements_tle& choisis() const;

private:
    QWidget* cree_boutons();
    void ouvre();
    void lit();
    void montre_choix();

    QString dossier_;
    QPlainTextEdit* texte_;
    QComboBox* satellites_;
    QLabel* mot_;
    QPushButton* importer_;
    std::vector<elements_tle> lus_;
};
