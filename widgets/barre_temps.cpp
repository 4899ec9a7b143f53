#include "widgets/barre_temps.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>

#include <algorithm>
#include <cmath>

#include "shell/utilitaires.h"
#include "widgets/style.h"

namespace {

constexpr int image_ms = 33;
constexpr int vitesses[] = {1, 10, 60, 300, 1200, 7200};
constexpr int vitesse_habituelle = 3;

QString nom_vitesse(int v) {
    if (v >= 3600) return QString("%1 h par seconde").arg(v / 3600);
    if (v >= 60) return QString("%1 min par seconde").arg(v / 60);
    return v == 1 ? QString("temps réel") : QString("%1 fois").arg(v);
}

} // namespace

barre_temps::barre_temps(QWidget* parent) : QWidget(parent) {
    setObjectName("barre_temps");
    auto* ligne = new QHBoxLayout(this);
    ligne->setContentsMargins(0, 0, 0, 0);
    ligne->setSpacing(style::espace(2));
    bouton_ = new QToolButton;
    bouton_->setObjectName("cmd_joue");
    bouton_->setIconSize({style::espace(5), style::espace(5)});
    vitesses_ = new QComboBox;
    vitesses_->setObjectName("cmb_vitesse");
    vitesses_->setAccessibleName("Vitesse");
    vitesses_->setToolTip("Vitesse du temps montré");
    for (const int v : vitesses) vitesses_->addItem(nom_vitesse(v), v);
    vitesses_->setCurrentIndex(vitesse_habituelle);
    curseur_ = new QSlider(Qt::Horizontal);
    curseur_->setObjectName("curseur_date");
    curseur_->setAccessibleName("Date montrée");
    curseur_->setToolTip("Date montrée : glisser, flèches (1 min), pages (un vingtième)");
    texte_ = new QLabel;
    texte_->setObjectName("lab_date_montree");
    texte_->setFont(style::police_nombres(this));
    texte_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    ligne->addWidget(bouton_);
    ligne->addWidget(vitesses_);
    ligne->addWidget(curseur_, 1);
    ligne->addWidget(texte_);

    connect(bouton_, &QToolButton::clicked, this, [this] { joue() ? arrete() : lance(); });
    connect(curseur_, &QSlider::valueChanged, this, [this](int s) {
        date_ = s == curseur_->maximum() ? fin_ : debut_ + s / secondes_par_jour;
        texte_->setText(QString::fromStdString(date_vers_texte(jour_vers_date(date_))));
        emit date_changee(date_);
    });
    minuterie_.setInterval(image_ms);
    connect(&minuterie_, &QTimer::timeout, this, &barre_temps::avance);
    arrete();
}

void barre_temps::etendue(double debut, double fin) {
    debut_ = debut;
    fin_ = std::max(debut, fin);
    {
        const QSignalBlocker muet(curseur_);
        const double secondes = std::min((fin_ - debut_) * secondes_par_jour, 2e9);
        curseur_->setRange(0, std::max(1, int(secondes)));
        curseur_->setSingleStep(60);
        curseur_->setPageStep(std::max(60, int(secondes / 20)));
    }
    pose(std::clamp(date_, debut_, fin_));
}

void barre_temps::pose(double j) {
    date_ = j;
    montre();
}

void barre_temps::montre() {
    const QSignalBlocker muet(curseur_);
    const double s = std::clamp((date_ - debut_) * secondes_par_jour, 0.0, double(curseur_->maximum()));
    curseur_->setValue(int(std::lround(s)));
    texte_->setText(QString::fromStdString(date_vers_texte(jour_vers_date(date_))));
}

double barre_temps::vitesse() const { return vitesses_->currentData().toDouble(); }

void barre_temps::lance() {
    if (date_ >= fin_ || date_ < debut_) pose(debut_);
    depuis_.start();
    minuterie_.start();
    bouton_->setIcon(style::icone("pause"));
    bouton_->setToolTip("Arrêter le temps");
    bouton_->setAccessibleName("Arrêter le temps");
}

void barre_temps::arrete() {
    minuterie_.stop();
    bouton_->setIcon(style::icone("lancer"));
    bouton_->setToolTip("Laisser courir le temps");
    bouton_->setAccessibleName("Laisser courir le temps");
}

void barre_temps::avance() {
    // By the clock: a slow picture makes longer strides, not a slower time.
    const double ecoule = double(depuis_.restart()) / 1000;
    pose(std::min(fin_, date_ + ecoule * vitesse() / secondes_par_jour));
    if (date_ >= fin_) arrete();
    emit date_changee(date_);
}

void barre_temps::hideEvent(QHideEvent* e) {
    arrete();
    QWidget::hideEvent(e);
}
