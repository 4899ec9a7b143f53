/// The readings of stacked charts as a table: each curve at the cursor, at the marks A and B, and between
/// them. The selection, or all of it, can be copied.
#pragma once

#include <QTableWidget>

#include "widgets/dessin_traces.h"

class lecture_courbes : public QTableWidget {
    Q_OBJECT
public:
    enum colonne { courbe, calcul, curseur, en_a, en_b, difference, minimum, moyenne, maximum, integrale };
    static constexpr int nb_colonnes = 10;

    explicit lecture_courbes(QWidget* parent = nullptr);

    /// Other curves: rows anew.
    void suit(const dessin_traces& d);
    /// The same curves, the cursor elsewhere; `marques`: the marks too.
    void lit(const dessin_traces& d, bool marques);
    void copie();

protected:
    void keyPressEvent(QKeyEvent* e) override;

private:
    void pose(int ligne, int colonne, const QString& texte);
};
