/// The battery of the synoptic: a picture with five levels and the empty one, alive while current flows.
#pragma once

#include <QWidget>

/// Battery state as the displays know it: 1 to 5 discharging by level, 6 empty, 7 charging, 8 waiting.
int etat_batterie(double bat_p, double bat_soc);

/// Picture of a state of charge: 5 (full) to 1, and 0 for the empty one.
int niveau_batterie(double bat_soc);

/// Word of a state: "Déchargée", "Charge...", "Attente..." or "Décharge...".
QString mot_batterie(int etat);

class icone_batterie : public QWidget {
    Q_OBJECT
public:
    explicit icone_batterie(QWidget* parent = nullptr);

    void montre(double bat_soc, int etat);
    /// The next picture: a charge fills the bars above the level one by one, a discharge blinks the last one,
    /// an empty battery blinks its outline.
    void avance();
    /// Level of the charge, 0 to 5, and bars drawn at this moment.
    int niveau() const { return niveau_; }
    int barres() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    int niveau_ = 0, etat_ = 8, phase_ = 0;
    double soc_ = 0;
};
