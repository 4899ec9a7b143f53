#include "analysis/windows/page_annee.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

#include "analysis/phrase_bilan.h"
#include "shell/utilitaires.h"
#include "widgets/graphe.h"
#include "widgets/style.h"

namespace {

/// "21/12/2024".
QString jour(double date) { return QString::fromStdString(date_vers_texte(jour_vers_date(date))).left(10); }

/// The worst of two dates: one that does not hold before one that does, then the smaller margin.
bool pire(const date_bilan& a, const date_bilan& b) {
    if (a.resultat.tient != b.resultat.tient) return !a.resultat.tient;
    return a.resultat.tours.back().marge < b.resultat.tours.back().marge;
}

} // namespace

page_annee::page_annee(session& s, QWidget* parent)
    : QWidget(parent), s_(s), tache_(this, [this](std::vector<date_bilan> a) { montre(std::move(a)); }),
      graphe_(new graphe), lab_pire_(new QLabel),
      cmd_pire_(new QPushButton("&Placer la période à cette date")) {
    auto* pile = new QVBoxLayout(this);
    auto* rangee = new QHBoxLayout;
    lab_pire_->setObjectName("lab_pire");
    lab_pire_->setWordWrap(true);
    cmd_pire_->setObjectName("cmd_pire");
    cmd_pire_->setToolTip(
        "La période garde sa durée et commence à la plus mauvaise date ; un clic sur la courbe la "
        "place ailleurs");
    cmd_pire_->setEnabled(false);
    rangee->addWidget(lab_pire_, 1);
    rangee->addWidget(cmd_pire_);
    pile->addLayout(rangee);
    graphe_->setObjectName("graphe_annee");
    graphe_->setMinimumHeight(style::espace(50));
    pile->addWidget(graphe_, 1);
    connect(cmd_pire_, &QPushButton::clicked, this, [this] {
        if (pire_ >= 0) va_a(annee_[std::size_t(pire_)].date);
    });
    connect(graphe_, &graphe::clique, this, [this](double x) {
        if (annee_.empty()) return;
        const auto proche = std::min_element(annee_.begin(), annee_.end(), [x](const auto& a, const auto& b) {
            return std::fabs(a.date - x) < std::fabs(b.date - x);
        });
        va_a(proche->date);
    });
}

void page_annee::calcule(const etude& e) {
    reglages_bilan r{.dossier_donnees = s_.dossier_depart};
    tache_.lance([e, r](std::stop_token arret) mutable {
        r.arret = std::move(arret);
        return calcule_annee(e, dates, r);
    });
}

void page_annee::montre(std::vector<date_bilan> annee) {
    annee_ = std::move(annee);
    std::erase_if(annee_, [](const date_bilan& d) { return d.resultat.tours.empty(); });
    pire_ = annee_.empty() ? -1 : int(std::min_element(annee_.begin(), annee_.end(), pire) - annee_.begin());
    cmd_pire_->setEnabled(pire_ >= 0);
    graphe_->efface();
    if (pire_ < 0) {
        lab_pire_->setText("L'année n'a pas pu être calculée avec ces réglages.");
        graphe_->retrace();
        return;
    }
    QVector<double> x, marge, dod, eclipse, beta;
    for (const date_bilan& d : annee_) {
        const tour_bilan& t = d.resultat.tours.back();
        x << d.date;
        marge << t.marge;
        dod << t.dod;
        eclipse << t.eclipse / 60;
        beta << d.beta;
    }
    graphe_->axes("", "marge, décharge (%)");
    graphe_->axe_droit("éclipse (min), β (°)");
    graphe_->abscisses_dates();
    const auto trace = [&](const char* nom, style::role r, Qt::PenStyle trait, bool droit,
                           const QVector<double>& y) {
        graphe_->donnees(graphe_->courbe(nom, style::couleur(r), trait, droit), x, y);
    };
    trace("Marge (%)", style::role::charge_utile, Qt::SolidLine, false, marge);
    trace("Profondeur de décharge (%)", style::role::batterie, Qt::DashLine, false, dod);
    trace("Éclipse (min)", style::role::discret, Qt::DashDotLine, true, eclipse);
    trace("β (°)", style::role::generateur, Qt::DotLine, true, beta);
    const date_bilan& p = annee_[std::size_t(pire_)];
    graphe_->bandes({{p.date - 2, p.date + 2}}); // the worst date
    graphe_->legende(true, 4);
    graphe_->retrace();
    const auto tenues =
        std::count_if(annee_.begin(), annee_.end(), [](const auto& d) { return d.resultat.tient; });
    const QString phrase = QString::fromStdString(phrase_bilan(p.resultat, criteres_en_vigueur(s_)));
    lab_pire_->setText(
        QString("Sur %1 dates de l'année, le satellite tient à %2. La plus mauvaise est le %3 (bande "
                "grise) : %4")
            .arg(annee_.size())
            .arg(tenues)
            .arg(jour(p.date), phrase));
}

void page_annee::va_a(double date) {
    const double duree = s_.periode.j_fin - s_.periode.j_debut;
    s_.periode.j_debut = date;
    s_.periode.j_fin = date + duree;
    emit periode_choisie();
}
