/// The variables of the catalogue, found by typing part of a name; those lately used first. A double click
/// or Enter chooses one, and it can be dragged onto a chart.
#pragma once

#include <QWidget>

#include "project/etude.h"

class QComboBox;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

class choix_variables : public QWidget {
    Q_OBJECT
public:
    explicit choix_variables(QWidget* parent = nullptr);

    struct ligne {
        QString nom, texte, bulle, cle;
    };
    /// The variables that a run of the étude can show, one line an element.
    static QList<ligne> lignes_de(const etude& e);

    /// The elements that the mounting has, and the variables that the model in force computes.
    void suit(const etude& e);
    void note_usage(const QString& nom);

signals:
    void choisie(const QString& nom);
    void jeu_choisi(int jeu); ///< place in `jeux_courbes`

private:
    void filtre();
    void ajoute(const ligne& l);
    void titre(const QString& texte);

    QList<ligne> lignes_;
    int montage_ = -1; ///< what the lines were made for
    QComboBox* cbo_jeu_;
    QLineEdit* txt_cherche_;
    QListWidget* liste_;
};
