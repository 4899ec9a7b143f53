#include "widgets/rangee_souple.h"

#include <QBoxLayout>
#include <QEvent>

#include <algorithm>

rangee_souple::rangee_souple(QWidget* parent)
    : QWidget(parent), pile_(new QBoxLayout(QBoxLayout::LeftToRight, this)) {
    pile_->setContentsMargins(0, 0, 0, 0);
}

void rangee_souple::ajoute(QWidget* w, int part) { pile_->addWidget(w, part); }

/// As narrow as the widest piece: the others then go below it.
QSize rangee_souple::minimumSizeHint() const {
    int largeur = 0;
    for (int i = 0; i < pile_->count(); ++i)
        largeur = std::max(largeur, pile_->itemAt(i)->minimumSize().width());
    return {largeur, pile_->minimumSize().height()};
}

void rangee_souple::range() {
    int cote_a_cote = -pile_->spacing();
    for (int i = 0; i < pile_->count(); ++i)
        cote_a_cote += pile_->itemAt(i)->minimumSize().width() + pile_->spacing();
    pile_->setDirection(width() < cote_a_cote ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

void rangee_souple::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    range();
}

bool rangee_souple::event(QEvent* e) {
    if (e->type() == QEvent::LayoutRequest) range(); // a piece wants another size
    return QWidget::event(e);
}
