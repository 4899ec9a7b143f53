/// The base of the workbench's pages: one fills the middle of the main window at a time.
///
/// A page reads the session, shows its answer, and asks the main window for others by name. It computes
/// beside the window's thread; `rafraichit` is called when it comes to the front and after every change of
/// the settings while it is there, so it must return at once.
#pragma once

#include <QWidget>

class page : public QWidget {
    Q_OBJECT
public:
    explicit page(const QString& nom, QWidget* parent = nullptr) : QWidget(parent) { setObjectName(nom); }

    /// Shows the session as it stands.
    virtual void rafraichit() {}
    /// Another page has moved the date shown: a page with a cursor in time follows it.
    virtual void montre_date(double) {}

protected:
    /// For a page that is higher than the window: the widget inside a scroll area that fills the page.
    QWidget* fait_defiler();

signals:
    /// The page has changed a setting: `libelle` is its undo step ("Période"); empty: found by comparing.
    void configuration_changee(const QString& libelle);
    /// It has changed what no result depends on: charts, criteria.
    void presentation_changee(const QString& libelle);
    /// A window is asked for, at a page of its own (-1: as it stands).
    void demande_fenetre(const QString& nom, int onglet);
    /// The user has moved the page's cursor in time [days since 1950].
    void date_montree(double j);
    /// Another page of the workbench is asked for.
    void demande_page(const QString& nom);
};
