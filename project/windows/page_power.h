/// What the pages of the power settings share: boxes bound to the record, told edits, the component lists.
#pragma once

#include <QList>
#include <QWidget>

#include "project/windows/champ_saisie.h"

class QButtonGroup;
class QLayout;
class QRadioButton;
class place_cellules;

class page_power : public QWidget {
    Q_OBJECT
public:
    explicit page_power(power_record& p) : p_(p) {}
    /// Shows the record.
    virtual void relit();
    /// Shows whether the cells fit, after an edit of another page.
    void montre_place();

signals:
    /// The user has changed the record.
    void edite();
    /// A component is to be chosen from the lists, or what is in force to be kept in the user's own.
    void demande_composant();
    void garde_composant();

protected:
    /// A box of this page, by its object name; its edits are told with `edite`.
    champ_saisie* boite(const QString& nom, const char* champ, int element = 0);
    /// A radio button of this page, `nom`_`indice`, in a group of its own.
    QRadioButton* option(QButtonGroup* groupe, const QString& nom, int indice, const QString& texte);
    /// The two buttons of the component lists; `debut` begins their names.
    QLayout* boutons_composants(const QString& debut);

    power_record& p_;
    QList<champ_saisie*> champs_;
    place_cellules* place_ = nullptr; ///< on the pages that tell of it
};
