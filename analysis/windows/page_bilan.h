/// The page "Bilan": does the satellite live, by what margin, on which day of the year is it worst, and what
/// would mend it. Everything is computed beside the window's thread on a copy of the étude.
#pragma once

#include "analysis/bilan.h"
#include "shell/session.h"
#include "widgets/page.h"
#include "widgets/tache.h"

class QLabel;
class QTabWidget;
class QTableWidget;
class criteres_bilan;
class flux_bilan;
class page_annee;
class page_modes;
class signe_verdict;

class page_bilan : public page {
    Q_OBJECT
public:
    explicit page_bilan(session& s, QWidget* parent = nullptr);

    void rafraichit() override;
    const bilan& resultat() const { return bilan_; }

private:
    void construit();
    void calcule();
    void montre(bilan b);
    void remplit_tours();

    session& s_;
    bilan bilan_;
    etude vue_; ///< the étude that the page shows
    bool jamais_vue_ = true;
    tache<bilan> tache_;
    signe_verdict* verdict_;
    QLabel* lab_conseils_;
    flux_bilan* flux_;
    criteres_bilan* criteres_;
    QTableWidget* tab_tours_;
    QTabWidget* onglets_;
    page_annee* annee_;
    page_modes* modes_;
};
