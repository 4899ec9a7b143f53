#include "shell/windows/vignette.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "widgets/style.h"

vignette::vignette(const QString& nom, const QString& titre, QWidget* dessin, const QString& bulle)
    : legende_(new QLabel) {
    setObjectName(nom);
    setAccessibleName(titre);
    setAccessibleDescription(bulle);
    setToolTip(bulle);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    auto* lab_titre = new QLabel(titre);
    QFont f = lab_titre->font();
    f.setBold(true);
    lab_titre->setFont(f);
    legende_->setWordWrap(true);
    legende_->setAlignment(Qt::AlignHCenter);
    dessin->setAccessibleName(titre);
    dessin->setToolTip({});
    auto* pile = new QVBoxLayout(this);
    pile->setContentsMargins(style::espace(3), style::espace(2), style::espace(3), style::espace(2));
    pile->setSpacing(style::espace(1));
    pile->addWidget(lab_titre);
    pile->addWidget(dessin, 1);
    pile->addWidget(legende_);
    // The button is what is clicked and reached by Tab, not what it shows.
    for (QWidget* w : std::initializer_list<QWidget*>{lab_titre, dessin, legende_})
        w->setAttribute(Qt::WA_TransparentForMouseEvents);
    dessin->setFocusPolicy(Qt::NoFocus);
}

void vignette::legende(const QString& texte) {
    legende_->setText(texte);
    setAccessibleDescription(texte + ". " + toolTip());
}

QSize vignette::sizeHint() const { return layout()->sizeHint(); }
QSize vignette::minimumSizeHint() const { return layout()->minimumSize(); }

void vignette::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const bool vise = underMouse() || hasFocus();
    p.setPen(QPen(vise ? palette().color(QPalette::Highlight) : style::couleur(style::role::discret),
                  vise ? 1.8 : 0.6));
    if (isDown()) p.setBrush(palette().color(QPalette::Midlight));
    p.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), style::espace(2), style::espace(2));
}

void vignette::keyPressEvent(QKeyEvent* e) {
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) return click();
    QAbstractButton::keyPressEvent(e);
}

bool vignette::event(QEvent* e) {
    if (e->type() == QEvent::Enter || e->type() == QEvent::Leave) update();
    return QAbstractButton::event(e);
}
