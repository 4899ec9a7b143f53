/// What the pages of the attitude settings share: boxes bound to the record by their name, laid out in grids.
#pragma once

#include <QGridLayout>
#include <QWidget>

#include "attitude/att_global.h"
#include "attitude/windows/boite_att.h"

class QLabel;

class page_att : public QWidget {
    Q_OBJECT
public:
    page_att(attitude_record& a, QWidget* parent = nullptr) : QWidget(parent), a_(a) {}

    /// Reads the record into the controls; writes nothing.
    virtual void form_load() = 0;
    /// Ends the entry in progress, as a loss of focus does.
    void valide();

signals:
    /// A number of the record has changed.
    void change();

protected:
    /// A box bound to its field of the record, with its limits and tooltip.
    boite_att* boite(const QString& nom);
    /// Shows the record in every box of the page.
    void montre_boites();

    static QGridLayout* grille(QWidget* cadre);
    /// A label, right-aligned to its box, that carries the box's mnemonic.
    static QLabel* libelle(const QString& texte, QWidget* compagnon = nullptr);
    static QLabel* unite(const QString& texte);
    /// A row of a grid: label, three boxes for the axes, unit.
    void ligne_axes(QGridLayout* g, int ligne, const QString& texte, const QStringList& noms,
                    const QString& nom_unite);
    /// The heads of the columns of a grid.
    static void tetes(QGridLayout* g, int ligne, const QStringList& noms);

    attitude_record& a_;
};
