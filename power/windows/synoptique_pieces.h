/// The pieces that the synoptic is drawn with: arrows, pictograms, the Sun or its eclipse.
#pragma once

#include <QWidget>

#include "widgets/style.h"

/// A flow of power: its thickness follows the power, bright chevrons run along it while time advances.
class fleche : public QWidget {
    Q_OBJECT
public:
    enum class sens { vers_droite, vers_gauche };
    fleche(const QString& nom, style::role role, sens s, QWidget* parent = nullptr);

    /// `part` of the full thickness, 0 to 1.
    void epaisseur(double part);
    double part() const { return part_; }
    void avance(double phase);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    style::role role_;
    sens sens_;
    double part_ = 0, phase_ = 0;
};

/// The picture of an element of the power system.
class pictogramme : public QWidget {
    Q_OBJECT
public:
    enum class sujet { panneau, charge_utile, shunt };
    explicit pictogramme(sujet s, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    sujet sujet_;
};

/// The Sun, or the Earth in front of it.
class image_eclipse : public QWidget {
    Q_OBJECT
public:
    explicit image_eclipse(QWidget* parent = nullptr);
    void montre(bool eclipse);
    bool eclipse() const { return eclipse_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    bool eclipse_ = false;
};
