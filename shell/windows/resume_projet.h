/// The summary of the project in the middle of the main window: what orbit, power and attitude amount to,
/// each line a link to the window that edits it, and a mark when results are older than the settings.
#pragma once

#include "shell/session.h"
#include "widgets/page.h"

class QGroupBox;
class QLabel;
class trace_sol;

class resume_projet : public page {
    Q_OBJECT
public:
    explicit resume_projet(session& s, QWidget* parent = nullptr);

    /// Reads the session again.
    void rafraichit() override;
    /// The verdict's sign, at the top.
    void pose_verdict(QWidget* signe);

private:
    void cadre(const char* nom, const QString& titre, const QList<QStringList>& lignes);
    /// A line's value, and below it what is wrong with it.
    void montre(const char* nom, const QString& texte, const QString& alerte = {});
    void montre_bus();
    void montre_orbite();
    void montre_energie();
    void montre_attitude();

    session& s_;
    class QGridLayout* grille_;
    QLabel* lab_perime_;
    QLabel* lab_projet_;
    trace_sol* trace_;
};
