#include "analysis/windows/bande_modes.h"

#include <QPainter>

#include "widgets/style.h"

bande_modes::bande_modes(QWidget* parent) : QWidget(parent) {
    setObjectName("bande_modes");
    setAccessibleName("Modes en vigueur sur une journée");
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize bande_modes::sizeHint() const {
    const int lignes = int(modes_.size());
    return {style::espace(80), lignes == 0 ? 0 : (lignes + 1) * style::espace(5)};
}

void bande_modes::montre(const std::vector<mode_conso>& modes, journee_de_modes j) {
    modes_ = modes;
    journee_ = std::move(j);
    updateGeometry();
    update();
}

void bande_modes::paintEvent(QPaintEvent*) {
    QPainter p(this);
    const int ligne = style::espace(5), gauche = style::espace(32),
              largeur = width() - gauche - style::espace(4);
    const QColor texte = palette().color(QPalette::WindowText);
    for (std::size_t m = 0; m < modes_.size() && m < journee_.size(); ++m) {
        const int y = int(m) * ligne;
        p.setPen(texte);
        p.drawText(QRect(0, y, gauche - style::espace(2), ligne), Qt::AlignRight | Qt::AlignVCenter,
                   fontMetrics().elidedText(QString::fromStdString(modes_[m].nom), Qt::ElideRight,
                                            gauche - style::espace(2)));
        p.setPen(palette().color(QPalette::Mid));
        p.drawRect(gauche, y + 2, largeur, ligne - 5);
        for (const auto& [de, a] : journee_[m])
            p.fillRect(QRectF(gauche + de * largeur, y + 3, std::max(1.0, (std::min(a, 1.0) - de) * largeur),
                              ligne - 6),
                       style::couleur(style::role::charge_utile));
    }
    if (modes_.empty()) return;
    p.setPen(texte);
    for (int h = 0; h <= 24; h += 6)
        p.drawText(QRect(gauche + largeur * h / 24 - style::espace(8), int(modes_.size()) * ligne,
                         style::espace(16), ligne),
                   Qt::AlignHCenter | Qt::AlignTop, QString("%1 h").arg(h));
}
