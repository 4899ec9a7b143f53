#include "widgets/graphe.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QScopedValueRollback>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <limits>

#include "shell/formats.h"
#include "shell/utilitaires.h"
#include "widgets/fichiers.h"
#include "widgets/graphe_pieces.h"
#include "widgets/style.h"
#include "widgets/textes.h"

namespace {

/// Five digits: more of them only show the rounding of single precision, 74.9999 for 75.
QString nombre(double x) { return QString::number(x, 'g', 5); }

/// A curve's name and unit: those of its own text, else the unit of its axis ("Puissance (W)", "deg/s").
std::pair<QString, QString> lecture_de(const QCPGraph* g) {
    auto [nom, unite] = separe_unite(g->name());
    const QString axe = g->valueAxis()->label();
    if (unite.isEmpty()) unite = separe_unite(axe).second;
    if (unite.isEmpty() && axe.size() <= 8) unite = axe; // a bare unit
    return {nom, unite};
}

/// The point of a curve that is nearest to an abscissa, gaps left out; the end where there is none.
QCPGraphDataContainer::const_iterator point_proche(const QCPGraph* g, double x) {
    const auto fin = g->data()->constEnd();
    auto p = g->data()->findBegin(x, true);
    auto proche = fin;
    for (int i = 0; i < 3 && p != fin; ++i, ++p)
        if (std::isfinite(p->value) && (proche == fin || std::fabs(p->key - x) < std::fabs(proche->key - x)))
            proche = p;
    return proche;
}

double fini(double x) { return std::isfinite(x) ? x : std::numeric_limits<double>::quiet_NaN(); }

constexpr double demi_tour = 180; // [deg]

} // namespace

graphe::graphe(QWidget* parent) : QWidget(parent), dessin_(new QCustomPlot(this)) {
    setAccessibleName("Graphique");
    connect(dessin_, &QCustomPlot::mousePress, this, [this](QMouseEvent* e) { appui_ = e->pos(); });
    connect(dessin_, &QCustomPlot::mouseRelease, this, [this](QMouseEvent* e) {
        if (e->button() == Qt::LeftButton && (e->pos() - appui_).manhattanLength() < 4 &&
            dessin_->axisRect()->rect().contains(e->pos()))
            emit clique(dessin_->xAxis->pixelToCoord(e->pos().x()),
                        dessin_->yAxis->pixelToCoord(e->pos().y()));
    });
    auto* pile = new QVBoxLayout(this);
    pile->setContentsMargins(0, 0, 0, 0);
    pile->addWidget(dessin_);
    QLocale points = QLocale::c();
    points.setNumberOptions(QLocale::OmitGroupSeparator);
    dessin_->setLocale(points);
    dessin_->setInteractions(QCP::iRangeZoom | QCP::iRangeDrag);
    dessin_->setMinimumSize(style::espace(40), style::espace(30));
    dessin_->addLayer("bandes", dessin_->layer("grid"), QCustomPlot::limBelow);
    dessin_->xAxis2->setVisible(true);
    dessin_->xAxis2->setTicks(false);
    dessin_->yAxis2->setVisible(true);
    dessin_->yAxis2->setTicks(false);
    dessin_->yAxis2->setTickLabels(false);
    dessin_->axisRect()->setRangeDragAxes({dessin_->xAxis, dessin_->yAxis, dessin_->yAxis2});
    dessin_->axisRect()->setRangeZoomAxes({dessin_->xAxis, dessin_->yAxis, dessin_->yAxis2});
    dessin_->axisRect()->setMinimumMargins(QMargins(style::espace(2), style::espace(2), style::espace(3), 0));
    dessin_->axisRect()->insetLayout()->setInsetAlignment(0, Qt::AlignTop | Qt::AlignRight);

    for (QCPAxis* a : {dessin_->xAxis, dessin_->yAxis, dessin_->yAxis2})
        a->setRange(0, 1); // while there is nothing

    repere_ = new QCPItemLine(dessin_);
    repere_->start->setTypeY(QCPItemPosition::ptAxisRectRatio);
    repere_->end->setTypeY(QCPItemPosition::ptAxisRectRatio);
    repere_->setSelectable(false);
    repere_->setVisible(false);

    dessin_->installEventFilter(this);
    dessin_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(dessin_, &QWidget::customContextMenuRequested, this, &graphe::menu_contextuel);
    for (QCPAxis* a : {dessin_->xAxis, dessin_->yAxis, dessin_->yAxis2})
        connect(a, qOverload<const QCPRange&, const QCPRange&>(&QCPAxis::rangeChanged), this,
                [this, a](const QCPRange& n, const QCPRange& avant) { borne_vue(a, n, avant); });
    connect(dessin_, &QCustomPlot::mouseWheel, this, [this] { vue_choisie_ = true; });
    connect(dessin_, &QCustomPlot::mouseMove, this, [this](QMouseEvent* e) {
        if (e->buttons() & Qt::LeftButton)
            vue_choisie_ = true;
        else
            montre_valeurs(e->pos());
    });
    connect(dessin_, &QCustomPlot::mouseDoubleClick, this, [this] { ajuste(); });
    applique_palette(style::sombre());
}

void graphe::titre(const QString& texte) {
    if (!titre_) {
        dessin_->plotLayout()->insertRow(0);
        titre_ = new QCPTextElement(dessin_, texte);
        QFont f = font();
        f.setBold(true);
        titre_->setFont(f);
        titre_->setTextColor(style::couleur(style::role::trait));
        dessin_->plotLayout()->addElement(0, 0, titre_);
    }
    titre_->setText(texte);
    setAccessibleName("Graphique : " + texte);
}

void graphe::axes(const QString& x, const QString& y) {
    dessin_->xAxis->setLabel(x);
    dessin_->yAxis->setLabel(y);
    if (!titre_) setAccessibleName("Graphique : " + y + (x.isEmpty() ? "" : " selon " + x));
}

void graphe::axe_droit(const QString& texte) {
    dessin_->yAxis2->setTicks(true);
    dessin_->yAxis2->setTickLabels(true);
    dessin_->yAxis2->setLabel(texte);
}

void graphe::abscisses_dates() {
    dates_ = true;
    noms_x_.clear();
    dessin_->xAxis->setTicker(QSharedPointer<abscisses_en_dates>::create());
}

void graphe::abscisses_nommees(const QStringList& noms) {
    dates_ = false;
    noms_x_ = noms;
    auto graduation = QSharedPointer<QCPAxisTickerText>::create();
    for (int i = 0; i < noms.size(); ++i) graduation->addTick(i, noms[i]);
    dessin_->xAxis->setTicker(graduation);
}

void graphe::limites_x(double min, double max) {
    x_ = {min, max, true};
    if (!vue_choisie_) dessin_->xAxis->setRange(min, max);
}

void graphe::limites_y(double min, double max, bool droit) {
    (droit ? droit_ : y_) = {min, max, true};
    if (!vue_choisie_) (droit ? dessin_->yAxis2 : dessin_->yAxis)->setRange(min, max);
}

int graphe::courbe(const QString& nom, const QColor& couleur, Qt::PenStyle trait, bool droit,
                   double epaisseur) {
    auto* g = new courbe_bornee(dessin_->xAxis, droit ? dessin_->yAxis2 : dessin_->yAxis);
    g->setName(nom);
    g->setPen(QPen(couleur, epaisseur, trait));
    g->setAdaptiveSampling(true);
    g->setSelectable(QCP::stNone);
    const QString avant = accessibleDescription();
    if (!nom.isEmpty()) setAccessibleDescription(avant.isEmpty() ? "Courbes : " + nom : avant + ", " + nom);
    return dessin_->graphCount() - 1;
}

void graphe::donnees(int courbe, const QVector<double>& x, const QVector<double>& y) {
    QCPGraph* g = dessin_->graph(courbe);
    if (!g) return;
    g->data()->clear();
    if (angulaires_.contains(courbe)) {
        for (int i = 0; i < x.size(); ++i) ajoute_point(courbe, x[i], y[i]);
        return;
    }
    QVector<double> valeurs = y;
    for (double& v : valeurs) v = fini(v);
    g->setData(x, valeurs, true);
}

void graphe::ajoute_point(int courbe, double x, double y) {
    QCPGraph* g = dessin_->graph(courbe);
    if (!g) return;
    if (angulaires_.contains(courbe) && !g->data()->isEmpty()) {
        const QCPGraphData dernier = *(g->data()->constEnd() - 1);
        if (std::fabs(y - dernier.value) > demi_tour)
            g->addData((dernier.key + x) / 2, std::numeric_limits<double>::quiet_NaN());
    }
    g->addData(x, fini(y));
}

void graphe::angulaire(int courbe) { angulaires_ << courbe; }

void graphe::oublie_avant(int courbe, double x) {
    if (QCPGraph* g = dessin_->graph(courbe)) g->data()->removeBefore(x);
}

int graphe::nombre_points(int courbe) const {
    const QCPGraph* g = dessin_->graph(courbe);
    return g ? g->dataCount() : 0;
}

void graphe::bandes(const QVector<QPair<double, double>>& intervalles) {
    while (bandes_.size() > intervalles.size()) dessin_->removeItem(bandes_.takeLast());
    while (bandes_.size() < intervalles.size()) {
        auto* b = new QCPItemRect(dessin_);
        b->setLayer("bandes");
        b->setSelectable(false);
        b->setPen(Qt::NoPen);
        for (QCPItemPosition* p : {b->topLeft, b->bottomRight}) p->setTypeY(QCPItemPosition::ptAxisRectRatio);
        bandes_ << b;
    }
    QColor gris = style::couleur(style::role::eclipse);
    gris.setAlpha(70);
    for (int i = 0; i < bandes_.size(); ++i) {
        bandes_[i]->topLeft->setCoords(intervalles[i].first, 0.0);
        bandes_[i]->bottomRight->setCoords(intervalles[i].second, 1.0);
        bandes_[i]->setBrush(gris);
    }
}

void graphe::legende(bool visible, int colonnes) {
    dessin_->legend->setVisible(visible);
    if (!visible || dessin_->legend->layout() != dessin_->axisRect()->insetLayout()) return;
    // Below the axes, in rows, where it hides no curve.
    auto* bas = new QCPLayoutGrid;
    const int rangee = dessin_->plotLayout()->rowCount();
    dessin_->plotLayout()->addElement(rangee, 0, bas);
    dessin_->plotLayout()->setRowStretchFactor(rangee, 0.001);
    bas->setMargins(QMargins(style::espace(4), 0, style::espace(4), style::espace(1)));
    bas->addElement(0, 0, dessin_->legend);
    dessin_->legend->setFillOrder(QCPLegend::foColumnsFirst);
    dessin_->legend->setWrap(colonnes);
    dessin_->legend->setBorderPen(Qt::NoPen);
}

void graphe::aligne(graphe* a, graphe* b) {
    auto* groupe = new QCPMarginGroup(a->dessin_);
    for (graphe* g : {a, b}) g->dessin_->axisRect()->setMarginGroup(QCP::msLeft | QCP::msRight, groupe);
    // A zoom in one changes its labels: the other follows.
    const auto suit = [](graphe* de, graphe* vers) {
        connect(de->dessin_, &QCustomPlot::afterReplot, vers, [de, vers] {
            const QMargins m = de->dessin_->axisRect()->margins(), n = vers->dessin_->axisRect()->margins();
            if (m.left() != n.left() || m.right() != n.right())
                vers->dessin_->replot(QCustomPlot::rpQueuedReplot);
        });
    };
    suit(a, b);
    suit(b, a);
}

void graphe::efface() {
    bandes({});
    dessin_->clearGraphs();
    setAccessibleDescription({});
    angulaires_.clear();
    echelle_depuis_ = -std::numeric_limits<double>::infinity();
    repere_->setVisible(false);
    vue_choisie_ = false;
}

QCPRange graphe::etendue(const QCPAxis* axe) const {
    const bornes& b = axe == dessin_->xAxis ? x_ : axe == dessin_->yAxis ? y_ : droit_;
    if (b.fixe) return {b.min, b.max};
    bool trouve = false;
    QCPRange r;
    for (QCPGraph* g : axe->graphs()) {
        bool utile = false;
        const QCPRange une =
            axe->orientation() == Qt::Horizontal
                ? g->getKeyRange(utile)
                : g->getValueRange(utile, QCP::sdBoth,
                                   QCPRange(echelle_depuis_, std::numeric_limits<double>::infinity()));
        if (!utile) continue;
        if (trouve)
            r.expand(une);
        else
            r = une;
        trouve = true;
    }
    if (!trouve) return {0, 1}; // nothing to show yet: the same axes in every window
    if (axe->orientation() == Qt::Vertical) {
        double marge = 0.06 * r.size();
        if (marge <= 1e-12 * std::fabs(r.upper)) marge = std::max(0.05 * std::fabs(r.upper), 1e-9);
        return {r.lower - marge, r.upper + marge};
    }
    if (r.size() > 0.0) return r;
    const double marge = dates_ ? 60.0 / secondes_par_jour : 0.5;
    return {r.lower - marge, r.upper + marge};
}

/// The view of a person stays near the data: beyond these bounds the graduations and the coordinates of the
/// curves run out of digits.
void graphe::borne_vue(QCPAxis* axe, const QCPRange& nouvelle, const QCPRange& ancienne) {
    if (!vue_choisie_ || bornage_) return;
    constexpr double serre = 1e-10, large = 1e3; // of the values, of what the data fill
    const QCPRange pleine = etendue(axe);
    const auto permise = [&](const QCPRange& r) {
        return r.lower >= pleine.lower - large * pleine.size() &&
               r.upper <= pleine.upper + large * pleine.size();
    };
    const double taille = nouvelle.size();
    const bool trop_serree = taille < serre * std::max(std::fabs(nouvelle.lower), std::fabs(nouvelle.upper));
    if (permise(nouvelle) && !(trop_serree && taille < ancienne.size())) return;
    // The old view may lie far from data that have changed under it.
    const QScopedValueRollback<bool> garde(bornage_, true);
    axe->setRange(permise(ancienne) ? ancienne : pleine);
}

void graphe::ajuste() {
    vue_choisie_ = false;
    retrace();
}

void graphe::retrace() {
    if (!vue_choisie_)
        for (QCPAxis* a : {dessin_->xAxis, dessin_->yAxis, dessin_->yAxis2}) a->setRange(etendue(a));
    dessin_->replot(QCustomPlot::rpQueuedReplot);
}

bool graphe::enregistre(const QString& chemin) {
    // On paper and in reports the picture is on white, whatever the desktop's palette.
    applique_palette(false);
    repere_->setVisible(false);
    const bool pdf = chemin.endsWith(".pdf", Qt::CaseInsensitive);
    const bool fait = pdf ? dessin_->savePdf(chemin, 0, 0, QCP::epAllowCosmetic, "KESTREL")
                          : dessin_->savePng(chemin, 0, 0, 2.0);
    applique_palette(style::sombre());
    return fait;
}

void graphe::aligne(const QVector<graphe*>& pile) {
    const auto egalise = [pile] {
        int marge = 0;
        for (const graphe* g : pile) marge = std::max(marge, g->dessin_->axisRect()->margins().left());
        for (graphe* g : pile) {
            QCPAxisRect* r = g->dessin_->axisRect();
            if (r->margins().left() == marge) continue;
            QMargins m = r->minimumMargins();
            m.setLeft(marge);
            r->setMinimumMargins(m);
            g->dessin_->replot(QCustomPlot::rpQueuedReplot);
        }
    };
    for (graphe* g : pile) connect(g->dessin_, &QCustomPlot::afterReplot, g, egalise);
}

QSize graphe::sizeHint() const { return {style::espace(120), style::espace(75)}; }

void graphe::changeEvent(QEvent* e) {
    QWidget::changeEvent(e);
    if (e->type() == QEvent::PaletteChange) applique_palette(style::sombre());
}

bool graphe::eventFilter(QObject* o, QEvent* e) {
    // The values go when the mouse leaves.
    if (o == dessin_ && e->type() == QEvent::Leave) montre_valeurs({-1, -1});
    if (o == dessin_ && e->type() == QEvent::Resize) regle_graduations();
    return QWidget::eventFilter(o, e);
}

/// As many marks as their numbers leave room for.
void graphe::regle_graduations() {
    constexpr int usuelles = 5;
    const int large = dessin_->width() / style::espace(22), haut = dessin_->height() / style::espace(10);
    dessin_->xAxis->ticker()->setTickCount(std::clamp(large, 2, usuelles));
    for (QCPAxis* a : {dessin_->yAxis, dessin_->yAxis2})
        a->ticker()->setTickCount(std::clamp(haut, 2, usuelles));
}

void graphe::applique_palette(bool fonce) {
    const bool force = fonce != style::sombre();
    const QPalette pal = palette();
    const QColor fond = force ? QColor(Qt::white) : pal.color(QPalette::Base);
    const QColor encre = force ? QColor(0x20, 0x22, 0x26) : pal.color(QPalette::Text);
    const auto attenue = [&](double part) { return style::melange(encre, fond, part); };
    dessin_->setBackground(fond);
    for (QCPAxis* a : {dessin_->xAxis, dessin_->yAxis, dessin_->xAxis2, dessin_->yAxis2}) {
        a->setBasePen(attenue(0.6));
        a->setTickPen(attenue(0.6));
        a->setSubTickPen(attenue(0.4));
        a->setTickLabelColor(encre);
        a->setLabelColor(encre);
        a->setTickLabelFont(style::police_nombres(this));
        a->setLabelFont(font());
        a->grid()->setPen(QPen(attenue(0.16), 1));
        a->grid()->setZeroLinePen(QPen(attenue(0.4), 1));
    }
    QColor fond_legende = fond;
    fond_legende.setAlpha(215);
    dessin_->legend->setBrush(fond_legende);
    dessin_->legend->setBorderPen(attenue(0.2));
    dessin_->legend->setTextColor(encre);
    dessin_->legend->setFont(font());
    dessin_->legend->setRowSpacing(0);
    if (titre_) titre_->setTextColor(encre);
    repere_->setPen(QPen(attenue(0.5), 1, Qt::DotLine));
    for (int i = 0; i < dessin_->graphCount(); ++i) {
        QPen p = dessin_->graph(i)->pen();
        p.setColor(style::accorde(p.color(), fonce));
        dessin_->graph(i)->setPen(p);
    }
    QColor gris = style::accorde(style::couleur(style::role::eclipse), fonce);
    gris.setAlpha(70);
    for (QCPItemRect* b : bandes_) b->setBrush(gris);
    dessin_->replot(QCustomPlot::rpQueuedReplot);
}

QString graphe::texte_abscisse(double x) const {
    if (dates_) return QString::fromStdString(date_vers_texte(jour_vers_date(x + 0.5 / secondes_par_jour)));
    const int n = qRound(x);
    if (n >= 0 && n < noms_x_.size()) return noms_x_[n];
    const QString nom = dessin_->xAxis->label();
    return nom.isEmpty() ? nombre(x) : nom + " : " + nombre(x);
}

void graphe::montre_valeurs(const QPoint& position) {
    const bool dedans = dessin_->axisRect()->rect().contains(position);
    QString texte;
    double abscisse = dessin_->xAxis->pixelToCoord(position.x());
    bool trouve = false;
    for (int i = 0; dedans && i < dessin_->graphCount(); ++i) {
        const QCPGraph* g = dessin_->graph(i);
        const auto p = point_proche(g, abscisse);
        if (p == g->data()->constEnd()) continue;
        if (!trouve) {
            abscisse = p->key;
            trouve = true;
        }
        const auto [nom, unite] = lecture_de(g);
        texte +=
            QString("<tr><td style='color:%1'>■&nbsp;</td><td><nobr>%2&nbsp;&nbsp;</nobr></td>"
                    "<td><p align=right style='margin:0;white-space:pre'>%3&nbsp;%4</p></td></tr>")
                .arg(g->pen().color().name(), nom.toHtmlEscaped(), nombre(p->value), unite.toHtmlEscaped());
    }
    if (trouve) {
        repere_->start->setCoords(abscisse, 0.0);
        repere_->end->setCoords(abscisse, 1.0);
        QToolTip::showText(
            dessin_->mapToGlobal(position + QPoint(style::espace(3), style::espace(3))),
            "<b>" + texte_abscisse(abscisse).toHtmlEscaped() + "</b><table>" + texte + "</table>", dessin_);
    } else {
        QToolTip::hideText();
    }
    if (trouve || repere_->visible()) {
        repere_->setVisible(trouve);
        dessin_->replot(QCustomPlot::rpQueuedReplot);
    }
}

void graphe::copie_image() {
    applique_palette(false);
    repere_->setVisible(false);
    QGuiApplication::clipboard()->setPixmap(dessin_->toPixmap(0, 0, 2.0));
    applique_palette(style::sombre());
}

void graphe::demande_fichier(const QString& suffixe) {
    const QString chemin = demande_nom(this, "Enregistrer le graphique", "graphique." + suffixe,
                                       suffixe == "pdf" ? "Document PDF (*.pdf)" : "Image PNG (*.png)");
    if (!chemin.isEmpty() && !enregistre(chemin))
        dit_echec_ecriture(this, chemin, "Le fichier ne peut pas être écrit.");
}

void graphe::menu_contextuel(const QPoint& position) {
    QMenu menu(this);
    menu.addAction(style::icone("copier"), "&Copier l'image", this, &graphe::copie_image);
    menu.addAction(style::icone("enregistrer_image"), "Enregistrer en &PNG…", this,
                   [this] { demande_fichier("png"); });
    menu.addAction(style::icone("enregistrer_image"), "Enregistrer en P&DF…", this,
                   [this] { demande_fichier("pdf"); });
    menu.addSeparator();
    menu.addAction("&Ajuster aux données", this, &graphe::ajuste);
    menu.exec(dessin_->mapToGlobal(position));
}
