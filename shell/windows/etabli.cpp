#include "shell/windows/etabli.h"

#include <QButtonGroup>
#include <QFrame>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QToolButton>

#include "widgets/style.h"

etabli::etabli(QWidget* parent) : QWidget(parent), rail_(new QVBoxLayout), milieu_(new QStackedWidget) {
    setObjectName("etabli");
    auto* rangee = new QHBoxLayout(this);
    rangee->setContentsMargins(0, 0, 0, 0);
    rangee->setSpacing(0);
    auto* cadre = new QWidget;
    cadre->setObjectName("rail");
    cadre->setLayout(rail_);
    rail_->setContentsMargins(style::espace(1), 0, style::espace(1), 0);
    rail_->setSpacing(0); // all of them fit a small screen
    rail_->addStretch(1);
    auto* trait = new QFrame;
    trait->setFrameShape(QFrame::VLine);
    trait->setFrameShadow(QFrame::Sunken);
    rangee->addWidget(cadre);
    rangee->addWidget(trait);
    rangee->addWidget(milieu_, 1);
}

void etabli::ajoute(const QString& nom, const QString& titre, const QString& icone,
                    std::function<page*()> fabrique) {
    auto* b = new QToolButton;
    b->setObjectName("rail_" + nom);
    b->setText(QString(titre).replace(" d'", "\nd'")); // the rail stays narrow
    b->setAccessibleName(titre);
    b->setIcon(style::icone(icone));
    b->setIconSize({style::espace(5), style::espace(5)});
    b->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    b->setToolTip(QString("%1 (Ctrl+%2)").arg(titre).arg(places_.size() + 1));
    b->setCheckable(true);
    b->setAutoExclusive(true);
    b->setAutoRaise(true);
    b->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    QFont f = b->font();
    f.setPointSizeF(f.pointSizeF() * 0.9);
    b->setFont(f);
    connect(b, &QToolButton::clicked, this, [this, nom] { montre(nom); });
    rail_->insertWidget(int(places_.size()), b);
    places_ << place{nom, titre, b, std::move(fabrique), nullptr};
}

etabli::place* etabli::cherche(const QString& nom) {
    for (place& p : places_)
        if (p.nom == nom) return &p;
    return nullptr;
}

page* etabli::de(const QString& nom) {
    place* p = cherche(nom);
    if (!p) return nullptr;
    if (!p->faite) {
        p->faite = p->fabrique();
        milieu_->addWidget(p->faite);
        if (date_) p->faite->montre_date(*date_);
        connect(p->faite, &page::date_montree, this, [this, de = p->faite](double j) {
            date_ = j;
            for (const place& q : places_)
                if (q.faite && q.faite != de) q.faite->montre_date(j);
        });
        emit page_faite(p->faite);
    }
    return p->faite;
}

bool etabli::montre(const QString& nom) {
    page* p = de(nom);
    if (!p) return false;
    cherche(nom)->bouton->setChecked(true);
    // Tab comes to the page in front alone, however it was chosen; the arrows choose another.
    for (const place& q : places_) q.bouton->setFocusPolicy(q.nom == nom ? Qt::TabFocus : Qt::NoFocus);
    const bool nouvelle = milieu_->currentWidget() != p;
    milieu_->setCurrentWidget(p);
    p->rafraichit();
    if (nouvelle) emit page_changee(nom);
    return true;
}

QString etabli::courante() const {
    return milieu_->currentWidget() ? milieu_->currentWidget()->objectName() : QString();
}

void etabli::rafraichit() {
    if (auto* p = qobject_cast<page*>(milieu_->currentWidget())) p->rafraichit();
}

QStringList etabli::noms() const {
    QStringList liste;
    for (const place& p : places_) liste << p.nom;
    return liste;
}

QString etabli::titre(const QString& nom) const {
    for (const place& p : places_)
        if (p.nom == nom) return p.titre;
    return {};
}
