/// The budget through the year: margin, depth of discharge, eclipse and beta against the date. The worst date
/// is marked; a click sets the period there.
#pragma once

#include <QWidget>

#include <vector>

#include "analysis/bilan.h"
#include "shell/session.h"
#include "widgets/tache.h"

class QLabel;
class QPushButton;
class graphe;

class page_annee : public QWidget {
    Q_OBJECT
public:
    explicit page_annee(session& s, QWidget* parent = nullptr);

    /// Begins the year of an étude.
    void calcule(const etude& e);
    const std::vector<date_bilan>& annee() const { return annee_; }

signals:
    void periode_choisie();

private:
    static constexpr int dates = 24;

    void montre(std::vector<date_bilan> annee);
    void va_a(double date);

    session& s_;
    tache<std::vector<date_bilan>> tache_;
    std::vector<date_bilan> annee_;
    int pire_ = -1; ///< place of the worst date
    graphe* graphe_;
    QLabel* lab_pire_;
    QPushButton* cmd_pire_;
};
