/// The environment page of the orbit window: the Sun's flux over a year, the Earth's albedo and infrared by
/// month.
#pragma once

#include <QWidget>

#include <array>

#include "shell/session.h"

class QLineEdit;
class QListWidget;
class graphe;

class page_environnement : public QWidget {
    Q_OBJECT
public:
    page_environnement(session& s, QWidget* parent = nullptr);

    /// Shows the tables of the record from January on.
    void form_load();
    /// The same; the lists keep their months.
    void rafraichit();

signals:
    void modifiee();

private:
    QWidget* cree_flux();
    QWidget* cree_tables();
    void saisie_flux(int element);
    void saisie_albedo();
    void saisie_ir();
    void sinus();
    void change();
    void trace();
    QString texte_flux(int element) const;

    session& s_;
    std::array<QLineEdit*, 2> flux_;
    QListWidget *mois_albedo_, *mois_ir_;
    QLineEdit *albedo_, *ir_, *amplitude_;
    QString amplitude_acceptee_ = "0.0"; ///< the last one that drew a curve
    graphe* graphe_;
    std::array<int, 3> courbes_;
};
