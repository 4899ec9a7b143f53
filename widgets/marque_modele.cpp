#include "widgets/marque_modele.h"

#include <QLabel>

#include "widgets/style.h"

QLabel* marque_modele(const char* nom) {
    auto* l = new QLabel(mention_physique);
    l->setObjectName(nom);
    l->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    l->setMargin(style::espace() / 2);
    l->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed); // of its line's height, not of its row's
    return l;
}
