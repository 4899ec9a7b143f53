#include "shell/windows/fra_simulation.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QTimeZone>

#include "shell/utilitaires.h"
#include "widgets/style.h"

namespace {

// Dates bear no time zone: UTC keeps the summer time of the desktop out of them.
const QDateTime premiere_date(QDate(1901, 1, 1), QTime(0, 0), Qt::UTC);
const QDateTime derniere_date(QDate(2099, 12, 31), QTime(23, 59, 59), Qt::UTC);

double vers_jour(const QDateTime& t) {
    date_record d;
    d.an = int16_t(t.date().year());
    d.mois = int16_t(t.date().month());
    d.jour = int16_t(t.date().day());
    d.heure = int16_t(t.time().hour());
    d.minute = int16_t(t.time().minute());
    d.seconde = int16_t(t.time().second());
    return date_vers_jour(d);
}

QDateTime vers_date(double j) {
    if (!(j >= vers_jour(premiere_date))) return premiere_date;
    if (j > vers_jour(derniere_date)) return derniere_date;
    const date_record d = jour_vers_date(j);
    return {QDate(d.an, d.mois, d.jour), QTime(d.heure, d.minute, d.seconde), Qt::UTC};
}

QDateTimeEdit* date(const char* nom, const QString& bulle) {
    auto* e = new QDateTimeEdit;
    e->setObjectName(nom);
    e->setTimeSpec(Qt::UTC);
    e->setDisplayFormat("dd/MM/yyyy HH:mm:ss");
    e->setDateTimeRange(premiere_date, derniere_date);
    e->setCalendarPopup(true);
    e->setKeyboardTracking(false); // a date is checked once it is typed in full
    e->setFont(style::police_nombres(e));
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

    auto* grille = new QGridLayout(this);
    grille->setContentsMargins(style::espace(2), style::espace(1), style::espace(2), style::espace(1));
    grille->setHorizontalSpacing(style::espace(2));
    grille->setVerticalSpacing(style::espace(1));
    grille->addWidget(etiquette("Début", txt_date_debut_), 0, 0);
    grille->addWidget(txt_date_debut_, 0, 1);
    grille->addWidget(etiquette("Fin", txt_date_fin_), 1, 0);
    grille->addWidget(txt_date_fin_, 1, 1);
    grille->addWidget(etiquette("Pas", cmb_pas_), 0, 2);
    grille->addWidget(cmb_pas_, 0, 3);
    grille->addWidget(chk_RealTime_, 1, 3);
    grille->addWidget(lab_scale_, 0, 4);
    grille->setColumnStretch(5, 1);
    // Wide enough for any step, so that the frame does not move with the list.
    lab_scale_->setMinimumWidth(fontMetrics().horizontalAdvance("1 s = 60 min "));

    setTabOrder(txt_date_debut_, txt_date_fin_);
    setTabOrder(txt_date_fin_, cmb_pas_);
    setTabOrder(cmb_pas_, chk_RealTime_);

    montre();
    // `activated` too: after the real-time mode the step shown can be picked again.
    connect(cmb_pas_, &QComboBox::currentIndexChanged, this, &fra_simulation::cmb_pas_change);
    connect(cmb_pas_, &QComboBox::activated, this, &fra_simulation::cmb_pas_change);
    connect(chk_RealTime_, &QCheckBox::toggled, this, &fra_simulation::chk_RealTime_change);
    connect(txt_date_debut_, &QDateTimeEdit::dateTimeChanged, this, [this] { date_change(true); });
    connect(txt_date_fin_, &QDateTimeEdit::dateTimeChanged, this, [this] { date_change(false); });
}

void fra_simulation::montre() {
    {
        const QSignalBlocker b1(txt_date_debut_), b2(txt_date_fin_), b3(cmb_pas_);
        txt_date_debut_->setDateTime(vers_date(s_.periode.j_debut));
        txt_date_fin_->setDateTime(vers_date(s_.periode.j_fin));
        // The steps below 10 s are not restored: that is meant.
        constexpr std::array<int, 10> pas = {10, 30, 60, 120, 300, 600, 900, 1800, 2700, 3600};
        const auto p = std::find(pas.begin(), pas.end(), s_.periode.pas_sim);
        if (p != pas.end()) cmb_pas_->setCurrentIndex(3 + int(p - pas.begin()));
    }
    if (s_.temps_reel) s_.periode.pas_sim = 1;
    montre_echelle();
}

void fra_simulation::valide_saisie() {
    for (QDateTimeEdit* e : {txt_date_debut_, txt_date_fin_})
        if (e->hasFocus()) e->interpretText();
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

void fra_simulation::date_change(bool debut) {
    QDateTimeEdit *edite = txt_date_debut_, *autre = txt_date_fin_;
    double *j = &s_.periode.j_debut, *j_autre = &s_.periode.j_fin;
    if (!debut) {
        std::swap(edite, autre);
        std::swap(j, j_autre);
    }
    if (txt_date_debut_->dateTime() > txt_date_fin_->dateTime()) {
        const QSignalBlocker b(edite);
        edite->setDateTime(autre->dateTime());
    }
    // Where both show the same second, its hidden fraction must not put the end before the start.
    const double montre = vers_jour(edite->dateTime());
    const bool meme_seconde =
        edite->dateTime() == autre->dateTime() && std::fabs(montre - *j_autre) < 1.0 / secondes_par_jour;
    *j = meme_seconde ? *j_autre : montre;
    s_.config_modifiee = 1;
    emit change();
}

void fra_simulation::montre_echelle() {
    const int pas = s_.periode.pas_sim;
    lab_scale_->setText(s_.temps_reel          ? QString("1 s = 1 s")
                        : pas % 60 == 0 && pas ? QString("1 s = %1 min").arg(pas / 60)
                                               : QString("1 s = %1 s").arg(pas));
}
