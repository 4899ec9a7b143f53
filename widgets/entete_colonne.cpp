#include "widgets/entete_colonne.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

#include <algorithm>

#include "widgets/style.h"
#include "widgets/trace_graph.h"

entete_colonne::entete_colonne(int colonne, QWidget* parent) : QLabel(parent), colonne_(colonne) {
    setObjectName(QString("lab_col_%1").arg(colonne));
    setWordWrap(true);
    setAlignment(Qt::AlignCenter);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Button);
    setForegroundRole(QPalette::ButtonText);
    setMargin(style::espace());
    setMinimumHeight(fontMetrics().height() * 3 + style::espace(3));
    setText({});
    montre_sens({});
    setAccessibleName(QString("Colonne %1").arg(colonne + 1));
}

void entete_colonne::montre_sens(const QString& sens) {
    setToolTip((sens.isEmpty() ? QString()
                               : "<p>" + text().toHtmlEscaped() + " : " + sens.toHtmlEscaped() + ".</p>") +
               "<p>Un clic rend la colonne active et lui donne la variable choisie dans la liste. "
               "Suppr la vide, Ctrl+Z la ramène.</p>");
}

void entete_colonne::setText(const QString& texte) {
    QLabel::setText(texte);
    QFont gras = font();
    gras.setBold(true);
    const QFontMetrics m(gras);
    int largeur = m.horizontalAdvance("colonne 0");
    for (const QString& mot : texte.split(' ')) largeur = std::max(largeur, m.horizontalAdvance(mot));
    setMinimumWidth(largeur + 2 * margin() + style::espace());
}

void entete_colonne::marque_active(bool active) {
    active_ = active;
    QFont f = font();
    f.setBold(active);
    setFont(f);
    update();
}

void entete_colonne::paintEvent(QPaintEvent* e) {
    QLabel::paintEvent(e);
    QPainter p(this);
    const int trait = style::espace();
    if (text().isEmpty()) {
        p.setPen(style::couleur(style::role::discret));
        p.drawText(rect(), Qt::AlignCenter, QString("colonne %1").arg(colonne_ + 1));
    } else {
        // The curve's colour and number.
        const QColor couleur = couleur_colonne(colonne_, style::sombre());
        const double cote = fontMetrics().ascent();
        p.fillRect(QRect(0, height() - trait, width(), trait), couleur);
        dessine_numero(p, {cote / 2 + 2, cote / 2 + 2}, colonne_ + 1, couleur, cote);
    }
    p.setPen(active_ || hasFocus() ? QPen(palette().color(QPalette::Highlight), 2)
                                   : QPen(palette().color(QPalette::Mid), 1));
    p.drawRect(rect().adjusted(active_ ? 1 : 0, active_ ? 1 : 0, -1, -1));
}

void entete_colonne::mousePressEvent(QMouseEvent* e) {
    if (e->button() == Qt::LeftButton) {
        setFocus(Qt::MouseFocusReason);
        emit clique();
    }
}

void entete_colonne::keyPressEvent(QKeyEvent* e) {
    switch (e->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter: emit clique(); return;
    case Qt::Key_Delete:
    case Qt::Key_Backspace: emit vide(); return;
    default: QLabel::keyPressEvent(e);
    }
}

void entete_colonne::contextMenuEvent(QContextMenuEvent* e) {
    QMenu menu(this);
    connect(menu.addAction("&Vider la colonne"), &QAction::triggered, this, &entete_colonne::vide);
    menu.exec(e->globalPos());
}
