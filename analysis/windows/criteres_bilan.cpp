#include "analysis/windows/criteres_bilan.h"

#include <QDoubleSpinBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

#include "analysis/phrase_bilan.h"
#include "project/etude_champs.h"
#include "widgets/acces.h"
#include "widgets/style.h"

namespace {

struct critere {
    const char* nom; ///< of its box
    const char* texte;
    const char* unite;
    const char* sens; ///< "au plus" or "au moins"
    const char* aide;
    double min, max;
    std::optional<double> criteres_etude::*limite;
    double criteres_valeurs::*usuelle;
};

constexpr critere table[] = {
    {"dod_max", "Profondeur de décharge", " %", "au plus",
     "Part de la capacité que la batterie a le droit de perdre au plus bas de l'orbite", 0, 100,
     &criteres_etude::dod_max, &criteres_valeurs::dod_max},
    {"t_bat_min", "Batterie au plus froid", " °C", "au moins", "Température la plus basse de la batterie",
     -273.15, 300, &criteres_etude::t_bat_min, &criteres_valeurs::t_bat_min},
    {"t_bat_max", "Batterie au plus chaud", " °C", "au plus", "Température la plus haute de la batterie",
     -273.15, 300, &criteres_etude::t_bat_max, &criteres_valeurs::t_bat_max},
    {"marge_min", "Marge d'énergie", " %", "au moins",
     "Part de la demande qui reste en trop à la fin d'une orbite, batterie rechargée", -100, 1000,
     &criteres_etude::marge_min, &criteres_valeurs::marge_min},
};

const QString tenu_ou_non[] = {"✗", "✓"};

void marque(QLabel* l, bool tenu) {
    l->setText(tenu_ou_non[tenu]);
    l->setAccessibleName(tenu ? "tenu" : "non tenu");
    QPalette encre;
    encre.setColor(QPalette::WindowText,
                   style::en_texte(style::couleur(tenu ? style::role::charge_utile : style::role::perte)));
    l->setPalette(encre);
    QFont gras = l->font();
    gras.setBold(true);
    l->setFont(gras);
}

} // namespace

criteres_bilan::criteres_bilan(session& s, QWidget* parent)
    : QGroupBox("Critères", parent), s_(s), lab_manque_(new QLabel), lab_derive_(new QLabel),
      marque_manque_(new QLabel), marque_derive_(new QLabel),
      cmd_usuels_(new QPushButton("&Valeurs usuelles")) {
    setObjectName("criteres_bilan");
    auto* g = new QGridLayout(this);
    g->setHorizontalSpacing(style::espace(2));
    const auto ligne = [&](int l, const QString& texte, QLabel* valeur, QLabel* m) {
        auto* e = new QLabel(texte);
        e->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        valeur->setFont(style::police_nombres());
        valeur->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        g->addWidget(m, l, 0);
        g->addWidget(e, l, 1);
        g->addWidget(valeur, l, 2);
        return e;
    };
    ligne(0, "Rien ne manque à la charge utile", lab_manque_, marque_manque_);
    ligne(1, "La charge ne baisse pas d'orbite en orbite", lab_derive_, marque_derive_);
    for (int i = 0; i < nombre; ++i) {
        const critere& c = table[i];
        const auto n = std::size_t(i);
        valeurs_[n] = new QLabel;
        marques_[n] = new QLabel;
        QLabel* e = ligne(i + 2, c.texte, valeurs_[n], marques_[n]);
        auto* b = limites_[n] = new QDoubleSpinBox;
        b->setObjectName(QString("txt_") + c.nom);
        lie_champ(b, chemin_element(element_nomme(c.nom)),
                  (QString("%1, %2").arg(c.texte, c.sens)).toStdString());
        b->setToolTip(c.aide);
        b->setRange(c.min, c.max);
        b->setDecimals(1);
        b->setSuffix(c.unite);
        b->setKeyboardTracking(false);
        b->setFocusPolicy(Qt::StrongFocus);
        e->setBuddy(b);
        g->addWidget(new QLabel(c.sens), i + 2, 3);
        g->addWidget(b, i + 2, 4);
        connect(b, &QDoubleSpinBox::valueChanged, this, [this, i](double x) { saisit(i, x); });
    }
    cmd_usuels_->setObjectName("cmd_criteres_usuels");
    cmd_usuels_->setToolTip("Reprendre les limites d'usage de la technologie de la batterie");
    g->addWidget(cmd_usuels_, nombre + 2, 3, 1, 2);
    g->setRowStretch(nombre + 3, 1);
    g->setColumnStretch(1, 1);
    connect(cmd_usuels_, &QPushButton::clicked, this, [this] {
        s_.criteres = {};
        relit();
        emit change();
    });
    relit();
}

void criteres_bilan::changeEvent(QEvent* e) {
    QGroupBox::changeEvent(e);
    if (e->type() != QEvent::PaletteChange) return;
    for (QLabel* l : findChildren<QLabel*>())
        if (l->text() == tenu_ou_non[0] || l->text() == tenu_ou_non[1])
            marque(l, l->text() == tenu_ou_non[1]);
}

void criteres_bilan::saisit(int i, double x) {
    s_.criteres.*table[i].limite = x;
    relit();
    emit change();
}

void criteres_bilan::relit() {
    const criteres_valeurs v = criteres_en_vigueur(s_);
    for (int i = 0; i < nombre; ++i) {
        const QSignalBlocker muet(limites_[std::size_t(i)]);
        limites_[std::size_t(i)]->setValue(v.*table[i].usuelle);
    }
    cmd_usuels_->setEnabled(s_.criteres != criteres_etude{});
}

void criteres_bilan::montre(const bilan& b, const criteres_valeurs& c) {
    QLabel* const valeurs[] = {lab_manque_, lab_derive_, valeurs_[0], valeurs_[1], valeurs_[2], valeurs_[3]};
    QLabel* const marques[] = {marque_manque_, marque_derive_, marques_[0],
                               marques_[1],    marques_[2],    marques_[3]};
    if (b.tours.empty()) { // there is nothing to judge: what stood there was of other settings
        for (QLabel* l : valeurs) l->clear();
        for (QLabel* l : marques) l->clear();
        return;
    }
    const std::vector<critere_juge> juges = juge_criteres(b, c);
    for (std::size_t i = 0; i < juges.size(); ++i) {
        const critere_juge& j = juges[i];
        valeurs[i]->setText(std::isnan(j.valeur)
                                ? QString("—")
                                : QString::fromStdString(nombre_fr(j.valeur, j.decimales)) + j.unite);
        marque(marques[i], j.tenu);
    }
}
