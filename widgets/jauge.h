/// An analogue gauge: an arc with its graduation, a needle that glides to the value, and the number under it.
#pragma once

#include <QVariantAnimation>
#include <QWidget>

#include "widgets/style.h"

class QLabel;

class jauge : public QWidget {
    Q_OBJECT
public:
    /// `nom_nombre` is the object name of the label that holds the number; `unite` stands behind it.
    jauge(const QString& titre, const QString& nom_nombre, const QString& unite, style::role role,
          QWidget* parent = nullptr);

    /// Full scale, from 0. With `croissante`, a value beyond it widens the scale to the next round number.
    void echelle(double max, bool croissante);
    /// The needle goes to x, the number shows `texte`. An inactive gauge rests at 0, in grey, without
    /// its unit.
    void montre(double x, const QString& texte, bool active = true);
    /// Full scale in force.
    double pleine_echelle() const { return max_; }
    /// Where the needle goes.
    double valeur() const { return valeur_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private:
    QString titre_;
    style::role role_;
    QLabel *nombre_, *unite_;
    QVariantAnimation aiguille_;
    double rayon_ = 1; ///< [px] of the dial
    double max_ = 1, valeur_ = 0, affichee_ = 0;
    bool croissante_ = false, active_ = true;
};

/// The next of 1, 2, 5, 10, 20 ... not below x (x above 0).
double echelle_ronde(double x);
