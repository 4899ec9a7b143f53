/// The orbit page of the orbit window: the elements, what follows from them, and the orbit's file.
#pragma once

#include <QWidget>

#include "shell/session.h"

class QLabel;
class QLineEdit;
class dessin_orbite;

class page_orbite : public QWidget {
    Q_OBJECT
public:
    page_orbite(session& s, QWidget* parent = nullptr);

    /// Fills every box with its format, and what follows from the elements.
    void rafraichit();
    /// Writes the orbit; a failure shows the system's own description. The name box then shows the file's
    /// name.
    void enregistre(const QString& chemin);
    /// Reads an orbit; a failure shows the system's own description.
    void ouvre(const QString& chemin);
    /// Asks for two-line elements and takes them.
    void importe_tle();

signals:
    void modifiee();                 ///< an element has changed, or an orbit has been opened
    void avis(const QString& texte); ///< an entry has been limited; empty: it has not
    void epoque_changee();

private:
    void saisie(int boite);
    QWidget* cree_elements();
    QWidget* cree_resultats();
    QWidget* cree_commandes();

    session& s_;
    QList<QLineEdit*> boites_;
    QLineEdit* nom_;
    QLabel *apogee_, *perigee_, *periode_, *epoque_;
    dessin_orbite* dessin_;
};
