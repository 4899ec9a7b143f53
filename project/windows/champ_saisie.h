/// A text box bound to one element of a field of the power record: it knows the field's type, limits, unit
/// and meaning from the table of fields.
///
/// An entry is checked as a number of the field's type, then against the field's limits; the value is stored,
/// and `apres` repairs other fields before `change` lets the window redraw.
#pragma once

#include <functional>

#include "power/power_champs.h"
#include "widgets/boite_nombre.h"

class QGridLayout;
class QLabel;

class champ_saisie : public boite_nombre {
    Q_OBJECT
public:
    /// `image` is the number picture of the value shown; empty for its shortest text.
    champ_saisie(power_record& p, const char* nom_champ, int element = 0, QWidget* parent = nullptr);

    void image(const QString& image) { image_ = image; }
    /// Another element of the same field.
    void choisit_element(int element);
    /// Limits that move with other fields: they fill the sides that the table leaves open, and are checked
    /// after the table's where it has its own. `aide` tells of them in the tooltip.
    void bornes_mobiles(std::function<limites()> b, const QString& aide);
    /// What follows a stored value before anyone hears of it: the repair of other fields.
    void apres(std::function<void()> a) { apres_ = std::move(a); }

    /// The stored value, a single as the decimal number that is shown for it.
    double stocke() const override;
    /// True when the stored value is within the field's own limits: a file or a default may hold another.
    bool permise() const;
    QString unite() const;

protected:
    QString texte_stocke() const override;
    bool prend() override;

private:
    bool lit(double& x);
    bool dans_les_bornes(double x);
    bool verifie(const limites& b, double x);
    QString aide() const;

    power_record& p_;
    const champ& champ_;
    int element_;
    QString image_;
    std::function<limites()> mobiles_;
    std::function<void()> apres_;
};

/// The shortest text of a single, and the decimal number that it stands for (0.1f is 0.1 here).
QString texte_court(float x);
double decimale(float x);

/// One row of a form: label right-aligned, box, unit left-aligned, in three columns from `colonne`.
QLabel* pose_champ(QGridLayout* grille, int ligne, int colonne, const QString& libelle, champ_saisie* champ);
