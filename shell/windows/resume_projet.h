/// The summary of the project in the middle of the main window: the verdict with its figures, orbit,
/// satellite and ground track as pictures, what orbit, power and attitude amount to, and a mark when results
/// are older than the settings. Each picture and each line leads to what edits it.
#pragma once

#include "analysis/bilan.h"
#include "analysis/carte.h"
#include "shell/session.h"
#include "widgets/page.h"

class QFrame;
class QGridLayout;
class QGroupBox;
class QLabel;
class carte_terre;
class dessin_orbite;
class dessin_satellite;
class vignette;

class resume_projet : public page {
    Q_OBJECT
public:
    explicit resume_projet(session& s, QWidget* parent = nullptr);

    /// Reads the session again.
    void rafraichit() override;
    /// The verdict's sign, at the top.
    void pose_verdict(QWidget* signe);
    /// The figures of the budget, below the sign.
    void montre_bilan(const bilan& b);

protected:
    void resizeEvent(QResizeEvent* e) override;

private:
    void construit_titre();
    void construit_verdict();
    void construit_notes();
    void construit_vignettes();
    QGroupBox* cadre(const char* nom, const QString& titre, const QList<QStringList>& lignes);
    void dispose();
    void va_a(const QString& cible);
    /// A line's value, and below it what is wrong with it.
    void montre(const char* nom, const QString& texte, const QString& alerte = {});
    void montre_bus();
    void montre_trace();
    void montre_orbite();
    void montre_energie();
    void montre_attitude();

    session& s_;
    QGridLayout* grille_;
    QLabel* lab_perime_;
    QLabel* lab_projet_;
    QLabel* lab_modele_;
    QFrame* z_verdict_;
    QLabel* lab_avis_pas_; ///< the step is too long for the verdict to be one
    QLabel* lab_notes_;
    dessin_orbite* orbite_;
    dessin_satellite* satellite_;
    carte_terre* carte_;
    vignette* vignettes_[3];
    QGroupBox* cadres_[3];
    trace_glissante trace_; ///< of the next turn, kept while orbit and start stay
    int colonnes_ = 0;
};
