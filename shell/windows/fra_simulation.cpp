#include "shell/windows/fra_simulation.h"

#include <algorithm>

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>

#include "project/etude_champs.h"
#include "widgets/acces.h"
#include "widgets/boite_date.h"
#include "widgets/style.h"

namespace {

boite_date* date(const char* nom, const QString& bulle) {
    auto* e = new boite_date(true);
    e->setObjectName(nom);
    e->setToolTip(bulle);
    return e;
}

QLabel* etiquette(const QString& texte, QWidget* pour) {
    auto* l = new QLabel(texte);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    l->setBuddy(pour);
    return l;
}

} // namespace

fra_simulation::fra_simulation(session& s, QWidget* parent)
    : QGroupBox("Contrôle simulation", parent), s_(s), chk_RealTime_(new QCheckBox("Temps réel")),
      cmb_pas_(new QComboBox),
      txt_date_debut_(date("txt_date_debut", "Début de la simulation (TU), de 1901 à 2099")),
      txt_date_fin_(date("txt_date_fin", "Fin de la simulation (TU), de 1901 à 2099")),
      lab_scale_(new QLabel) {
    setObjectName("fraSimulation");
    chk_RealTime_->setObjectName("chk_RealTime");
    chk_RealTime_->setToolTip("Real time mode");
    cmb_pas_->setObjectName("cmb_pas");
    cmb_pas_->setToolTip("Pas de la simulation, de 1 seconde à 60 minutes");
    cmb_pas_->addItems({"1 s", "2 s", "5 s", "10 s", "30 s", "1 min", "2 min", "5 min", "10 min", "15 min",
                        "30 min", "45 min", "60 min"});
    cmb_pas_->setCurrentText("2 min");
    lab_scale_->setObjectName("lab_scale");
    lab_scale_->setToolTip("Temps simulé pendant une seconde de la simulation du sous-système complet");

    lie_champ(txt_date_debut_, element_nomme("periode.debut"));
    lie_champ(txt_date_fin_, element_nomme("periode.fin"));
    lie_champ(cmb_pas_, element_nomme("periode.pas"));

    auto* grille = new QGridLayout(this);
    grille->setContentsMargins(style::espace(2), style::espace(1), style::espace(2), style::espace(1));
    grille->setHorizontalSpacing(style::espace(2));
    grille->setVerticalSpacing(style::espace(1));
    rangees_ = {{etiquette("Début", txt_date_debut_), txt_date_debut_, etiquette("Pas", cmb_pas_), cmb_pas_,
                 lab_scale_},
                {etiquette("Fin", txt_date_fin_), txt_date_fin_, nullptr, chk_RealTime_}};
    en_une_rangee(false);
    // Wide enough for any step, so that the frame does not move with the list.
    lab_scale_->setMinimumWidth(fontMetrics().horizontalAdvance("1 s ≈ 5700 s "));

    setTabOrder(txt_date_debut_, txt_date_fin_);
    setTabOrder(txt_date_fin_, cmb_pas_);
    setTabOrder(cmb_pas_, chk_RealTime_);

    montre();
    // `activated` too: after the real-time mode the step shown can be picked again.
    connect(cmb_pas_, &QComboBox::currentIndexChanged, this, &fra_simulation::cmb_pas_change);
    connect(cmb_pas_, &QComboBox::activated, this, &fra_simulation::cmb_pas_change);
    connect(chk_RealTime_, &QCheckBox::toggled, this, &fra_simulation::chk_RealTime_change);
    connect(txt_date_debut_, &boite_date::date_saisie, this, [this](double j) { date_change(true, j); });
    connect(txt_date_fin_, &boite_date::date_saisie, this, [this](double j) { date_change(false, j); });
}

void fra_simulation::en_une_rangee(bool oui) {
    if (une_rangee_ == oui && layout()->count()) return;
    une_rangee_ = oui;
    auto* grille = static_cast<QGridLayout*>(layout());
    grille->setColumnStretch(5, oui ? 0 : 1);
    // Side by side the end follows the start.
    constexpr int place[2][5] = {{0, 1, 4, 5, 7}, {2, 3, -1, 6}};
    for (int r = 0; r < 2; ++r)
        for (int c = 0; c < rangees_[r].size(); ++c)
            if (QWidget* w = rangees_[r][c]) {
                grille->removeWidget(w);
                grille->addWidget(w, oui ? 0 : r, oui ? place[r][c] : c);
            }
}

void fra_simulation::montre() {
    {
        const QSignalBlocker b(cmb_pas_);
        montre_dates();
        // The steps below 10 s are not restored: that is meant.
        constexpr std::array<int, 10> pas = {10, 30, 60, 120, 300, 600, 900, 1800, 2700, 3600};
        const auto p = std::find(pas.begin(), pas.end(), s_.periode.pas_sim);
        if (p != pas.end()) cmb_pas_->setCurrentIndex(3 + int(p - pas.begin()));
    }
    if (s_.temps_reel) s_.periode.pas_sim = 1;
    montre_echelle();
}

void fra_simulation::montre_dates() {
    txt_date_debut_->montre(s_.periode.j_debut);
    txt_date_fin_->montre(s_.periode.j_fin);
}

void fra_simulation::valide_saisie() {
    for (boite_date* e : {txt_date_debut_, txt_date_fin_}) e->valide();
}

void fra_simulation::cmb_pas_change() {
    const QString texte = cmb_pas_->currentText();
    const int nombre = texte.section(' ', 0, 0).toInt();
    s_.periode.pas_sim = texte.endsWith('n') ? nombre * 60 : nombre;
    // The configuration-changed mark stays as it is: that is meant.
    montre_echelle();
    emit change();
}

void fra_simulation::chk_RealTime_change(bool coche) {
    s_.config_modifiee = 1;
    s_.temps_reel = coche;
    if (coche) s_.periode.pas_sim = 1; // on leaving the mode it stays 1 until a step is picked
    for (QWidget* w : {static_cast<QWidget*>(cmb_pas_), static_cast<QWidget*>(txt_date_debut_),
                       static_cast<QWidget*>(txt_date_fin_)})
        w->setEnabled(!coche);
    montre_echelle();
    emit change();
}

void fra_simulation::date_change(bool debut, double jour) {
    simulation_period& p = s_.periode;
    // A start set after the end becomes the end, and an end set before the start becomes the start.
    if (debut)
        p.j_debut = std::min(jour, p.j_fin);
    else
        p.j_fin = std::max(jour, p.j_debut);
    montre_dates();
    s_.config_modifiee = 1;
    emit change();
}

void fra_simulation::montre_echelle() {
    const double allure = s_.temps_reel ? 1 : s_.pas_par_seconde * s_.periode.pas_sim;
    if (allure != std::floor(allure)) { // measured: two digits are enough
        const double dizaine = std::pow(10, std::max(0.0, std::floor(std::log10(allure)) - 1));
        lab_scale_->setText(QString("1 s ≈ %1 s").arg(std::lround(allure / dizaine) * std::lround(dizaine)));
        return;
    }
    const long secondes = std::lround(allure);
    lab_scale_->setText(secondes % 3600 == 0 && secondes > 3600 ? QString("1 s = %1 h").arg(secondes / 3600)
                        : secondes % 60 == 0 && secondes        ? QString("1 s = %1 min").arg(secondes / 60)
                                                                : QString("1 s = %1 s").arg(secondes));
}
