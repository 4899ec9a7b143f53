#include "widgets/disposition_flux.h"

#include <algorithm>

disposition_flux::~disposition_flux() { qDeleteAll(pieces_); }

QLayoutItem* disposition_flux::takeAt(int i) { return i >= 0 && i < count() ? pieces_.takeAt(i) : nullptr; }

/// All in one row.
QSize disposition_flux::sizeHint() const {
    const QMargins m = contentsMargins();
    QSize t(m.left() + m.right() - spacing(), 0);
    for (const QLayoutItem* i : pieces_) {
        t.rwidth() += i->sizeHint().width() + spacing();
        t.setHeight(std::max(t.height(), i->sizeHint().height()));
    }
    return {t.width(), t.height() + m.top() + m.bottom()};
}

/// Each in a row of its own.
QSize disposition_flux::minimumSize() const {
    const QMargins m = contentsMargins();
    QSize t;
    for (const QLayoutItem* i : pieces_) t = t.expandedTo(i->minimumSize());
    return t + QSize(m.left() + m.right(), m.top() + m.bottom());
}

void disposition_flux::setGeometry(const QRect& r) {
    QLayout::setGeometry(r);
    place(r, true);
}

int disposition_flux::place(const QRect& r, bool applique) const {
    const QMargins m = contentsMargins();
    const QRect cadre = r.adjusted(m.left(), m.top(), -m.right(), 0);
    int y = cadre.top();
    for (int debut = 0; debut < count();) {
        int fin = debut, largeur = 0, hauteur = 0;
        while (fin < count()) {
            const QSize t = pieces_[fin]->sizeHint();
            if (fin > debut && largeur + spacing() + t.width() > cadre.width()) break;
            largeur += (fin > debut ? spacing() : 0) + t.width();
            hauteur = std::max(hauteur, t.height());
            ++fin;
        }
        for (int x = cadre.left(); debut < fin; ++debut) {
            const int l = std::min(pieces_[debut]->sizeHint().width(), cadre.width());
            if (applique) pieces_[debut]->setGeometry({x, y, l, hauteur});
            x += l + spacing();
        }
        y += hauteur + (fin < count() ? spacing() : 0);
    }
    return y - r.top() + m.bottom();
}
