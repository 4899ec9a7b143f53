#include "widgets/page.h"

#include <QScrollArea>
#include <QVBoxLayout>

QWidget* page::fait_defiler() {
    auto* pile = new QVBoxLayout(this);
    pile->setContentsMargins(0, 0, 0, 0);
    auto* zone = new QScrollArea;
    zone->setFrameShape(QFrame::NoFrame);
    zone->setWidgetResizable(true);
    zone->setFocusPolicy(Qt::NoFocus); // the first Tab lands on a control
    auto* interieur = new QWidget;
    zone->setWidget(interieur);
    pile->addWidget(zone);
    return interieur;
}
