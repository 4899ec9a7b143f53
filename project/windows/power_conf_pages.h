/// The five pages of the power settings window. Each shows its part of the power record and edits it in
/// place.
#pragma once

#include <QList>
#include <QWidget>

#include <array>

#include "project/windows/page_power.h"
#include "shell/session.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QListWidget;
class QSlider;
class boite_date;
class graphe;
class dessin_corps;
class dessin_bus;

/// Shape of the body, external panels and their drive.
class page_panneaux : public page_power {
    Q_OBJECT
public:
    explicit page_panneaux(power_record& p);
    void relit() override;

private:
    QWidget* groupe_corps();
    QWidget* groupe_externes();
    void choisit_option(int indice);
    void choisit_corps(int indice);
    void montre_corps();

    QButtonGroup* opt_pan_;
    QListWidget* liste_;
    QLabel* lab_s_;
    std::array<dessin_corps*, 3> images_;
    QGroupBox* externes_;
    champ_saisie* angle_;
    QSlider* curseur_;
    QCheckBox* fixe_;
};

/// Cells: numbers, ageing ratios, curve.
class page_cellules : public page_power {
    Q_OBJECT
public:
    explicit page_cellules(power_record& p);
    void relit() override;

private:
    QWidget* groupe_caracteristiques();
    QWidget* groupe_assemblage();
    QWidget* groupe_courbe();
    void pose_grandeur(QGridLayout* grille, int ligne, const char* libelle, const QString& suffixe,
                       void (*repare)(power_record&), void (*repare_rapport)(power_record&));
    void choisit_vie(int indice);
    void trace();

    QComboBox* type_;
    QButtonGroup *vie_, *genre_;
    QList<champ_saisie*> rapports_;
    QLabel* rendement_;
    graphe* courbe_;
};

/// The thermal model in force.
class page_thermique : public page_power {
    Q_OBJECT
public:
    explicit page_thermique(power_record& p);
    void relit() override;
    /// Shows the frame of the model in force.
    void montre_modele();
    /// The surface in view, as an element of the coatings' lists.
    int surface() const;

private:
    QWidget* cadre_externes();
    QList<champ_saisie*> ligne_externe(QGridLayout* grille, int l);
    QWidget* cadre_faces();
    QListWidget* liste(const QString& nom, const QStringList& entrees, const QString& aide);
    void croise_absorptivites(champ_saisie* neuve, champ_saisie* limite);
    void montre_face();
    void montre_surface();
    void trace();

    boite_date* date_;
    QGroupBox *thex_, *thbd_;
    QListWidget *faces_, *surfaces_;
    QLabel *nom_face_, *nom_surface_;
    QList<champ_saisie*> champs_face_;    ///< elements 2 to 7: the face chosen
    QList<champ_saisie*> couplages_face_; ///< elements 0 to 5
    QList<champ_saisie*> champs_surface_; ///< elements 0 to 2
    graphe* vieillissement_;
};

/// Battery: catalogue, curve points, influences, curves.
class page_batteries : public page_power {
    Q_OBJECT
public:
    explicit page_batteries(power_record& p);
    void relit() override;

signals:
    /// A catalogue choice has changed fields of another page too.
    void catalogue_choisi();
    /// The charge curves cannot be drawn with the present points; told once for a set of points.
    void courbe_incompatible();
    /// Whether the charge curves can be drawn.
    void etat_courbes(bool tracees);

private:
    QWidget* groupe_accu();
    QWidget* groupe_influences();
    QWidget* groupe_charge();
    QWidget* groupe_decharge();
    /// Four rows of six boxes beside a chart; `coefficients` is the table's prefix, the end of its rows'
    /// names are `noms`.
    QWidget* groupe_points(const QString& titre, const QString& abscisse, const QString& coefficients,
                           const QStringList& noms, const QString& libelle_fin, QWidget* cote);
    QWidget* cote_graphe(graphe* courbe, QButtonGroup* genre, const QString& prefixe);
    champ_saisie* generique(const QString& nom, const char* champ, int element = 0);
    void choisit(int type);
    void trace_charge();
    void trace_decharge();

    QComboBox* type_;
    QList<champ_saisie*> generiques_;
    QButtonGroup *genre_charge_, *genre_decharge_;
    graphe *charge_, *decharge_;
    courbe_batterie points_dits_{};
};

/// Charge rules, bus and payload.
class page_gestion : public page_power {
    Q_OBJECT
public:
    explicit page_gestion(power_record& p);
    void relit() override;

private:
    QWidget* groupe_batterie();
    QWidget* groupe_bus();
    QWidget* groupe_charge();

    QButtonGroup* regul_;
    champ_saisie* vregul_;
    QLabel* avis_vregul_;
    dessin_bus* bus_;
};
