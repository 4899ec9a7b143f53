/// The attitude page of the orbit window: the nominal pointing, in the local orbital frame or the inertial
/// one, the spin and the face that points.
#pragma once

#include <QWidget>

#include <array>

#include "shell/session.h"

struct champ_orb;

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLayout;
class QLineEdit;
class QPushButton;
class QRadioButton;
class dessin_pointage;

class page_attitude : public QWidget {
    Q_OBJECT
public:
    page_attitude(session& s, QWidget* parent = nullptr);

    /// Shows the pointing in force.
    void rafraichit();

signals:
    void modifiee();
    void avis(const QString& texte); ///< an entry has been limited; empty: it has not
    /// The Sun pointing ended in a numerical fault.
    void faute_soleil(const QString& raison);

private:
    QWidget* cree_pointage();
    void cree_angles(QGridLayout* gauche, QGridLayout* droite);
    QLayout* cree_face();
    QWidget* cree_spin();
    void choisit_repere(bool orbital);
    void saisie_orbitale(int axe);
    void saisie_inertielle(int axe);
    void saisie_spin();
    bool lit_saisie(QLineEdit* b, const champ_orb& c, double montre, double& x);
    void pointe_soleil();
    void oriente(int face);
    /// The orbit at its epoch: the conversions between the frames use it.
    void place_a_l_epoque();

    session& s_;
    QRadioButton *opt_att_, *opt_iner_;
    std::array<QLineEdit*, 3> att_, iner_;
    QPushButton* cmd_sun_;
    QCheckBox* spin_;
    QLineEdit* vspin_;
    QComboBox *axe_, *face_;
    dessin_pointage* dessin_;
};
