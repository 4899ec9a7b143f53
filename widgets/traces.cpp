#include "widgets/traces.h"

#include <QApplication>
#include <QMimeData>
#include <QMouseEvent>
#include <QToolTip>

#include <algorithm>
#include <cmath>

#include "shell/utilitaires.h"
#include "widgets/graduation.h"
#include "widgets/style.h"

namespace {

constexpr int histoire_max = 100;
constexpr double vue_min = 2 / secondes_par_jour; // [days]
constexpr int portee = 4;                         // [px] of a hand
constexpr int repos = 150;                        // [ms] without a move
constexpr int meme_molette = 700;                 // [ms] turns of the wheel that are one step back

} // namespace

traces::traces(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(style::espace(60), style::espace(35));
    setAttribute(Qt::WA_OpaquePaintEvent);
    d_.police = font();
    d_.police_nombres = style::police_nombres(this);
    repos_.setSingleShot(true);
    repos_.setInterval(repos);
    connect(&repos_, &QTimer::timeout, this, [this] {
        d_.vif = false;
        change();
    });
}

void traces::change() {
    d_.dispose(size());
    a_peindre_ = true;
    update();
}

void traces::montre(QVector<trace_graphique> graphiques) {
    d_.graphiques = std::move(graphiques);
    d_.choisies.erase(std::remove_if(d_.choisies.begin(), d_.choisies.end(),
                                     [&](const auto& o) {
                                         return o.graphique >= d_.graphiques.size() ||
                                                !d_.unites(o.graphique).contains(o.unite);
                                     }),
                      d_.choisies.end());
    change();
}

void traces::pose_mention(const QString& mention) {
    d_.mention = mention;
    change();
}

void traces::pose_bandes(QVector<QPair<double, double>> bandes) {
    d_.bandes = std::move(bandes);
    change();
}

void traces::pose_evenements(QVector<genre_trace> genres, QVector<trace_evenement> evenements) {
    d_.genres = std::move(genres);
    d_.evenements = std::move(evenements);
    change();
}

void traces::etendue(double debut, double fin) {
    if (!(fin > debut)) fin = debut + 1 / secondes_par_jour;
    const bool suit = d_.debut <= tout_debut_ && d_.fin >= tout_fin_;
    const bool dehors = d_.fin <= debut || d_.debut >= fin;
    tout_debut_ = debut;
    tout_fin_ = fin;
    if (suit || dehors) {
        d_.debut = debut;
        d_.fin = fin;
    }
    d_.date = std::clamp(d_.date, debut, fin);
    change();
}

void traces::pose_curseur(double j) {
    d_.date = std::clamp(j, tout_debut_, tout_fin_);
    update();
    emit curseur_change(d_.date);
}

void traces::choisit(double j) {
    pose_curseur(j);
    emit date_choisie(d_.date);
}

void traces::pose_marques(std::optional<double> a, std::optional<double> b) {
    d_.a = a;
    d_.b = b;
    update();
    emit marques_changees();
}

void traces::retient() {
    if (!histoire_.isEmpty() && histoire_.last() == qMakePair(d_.debut, d_.fin)) return;
    histoire_ << qMakePair(d_.debut, d_.fin);
    if (histoire_.size() > histoire_max) histoire_.removeFirst();
}

void traces::va(double debut, double fin) {
    const double large = std::clamp(fin - debut, vue_min, 1.5 * std::max(tout_fin_ - tout_debut_, vue_min));
    const double milieu = std::clamp((debut + fin) / 2, tout_debut_, tout_fin_);
    d_.debut = milieu - large / 2;
    d_.fin = milieu + large / 2;
    d_.vif = true;
    repos_.start();
    change();
    emit vue_changee();
}

void traces::pose_vue(double debut, double fin) {
    retient();
    va(debut, fin);
}

void traces::montre_tout() {
    retient();
    d_.choisies.clear();
    d_.debut = tout_debut_;
    d_.fin = tout_fin_;
    change();
    emit vue_changee();
}

void traces::retour() {
    while (!histoire_.isEmpty()) {
        const auto [de, a] = histoire_.takeLast();
        if (de == d_.debut && a == d_.fin) continue;
        va(de, a);
        return;
    }
    emit vue_changee();
}

void traces::ajuste_ordonnees(bool a_la_vue) {
    d_.choisies.clear();
    for (int g = 0; a_la_vue && g < d_.graphiques.size(); ++g)
        for (const QString& u : d_.unites(g)) {
            double bas = INFINITY, haut = -INFINITY;
            std::vector<morceau_serie> m;
            for (const trace_courbe& c : d_.graphiques[g].courbes) {
                if (c.unite != u || !c.donnees) continue;
                c.donnees->reduit(d_.debut, d_.fin, 1, m);
                for (const morceau_serie& x : m) bas = std::min(bas, x.min), haut = std::max(haut, x.max);
            }
            if (bas > haut) continue;
            const double bord = std::max(.06 * (haut - bas), 1e-9 * (1 + std::fabs(haut)));
            d_.choisies.push_back({g, u, bas - bord, haut + bord});
        }
    change();
}

void traces::va_evenement(int sens) {
    const trace_evenement* choisi = nullptr;
    const double seuil = .001 / secondes_par_jour;
    for (const trace_evenement& e : d_.evenements) {
        if (sens < 0 && e.date < d_.date - seuil) choisi = &e;
        if (sens > 0 && e.date > d_.date + seuil) {
            choisi = &e;
            break;
        }
    }
    if (!choisi) return;
    const double j = choisi->date;
    if (j < d_.debut || j > d_.fin) pose_vue(j - (d_.fin - d_.debut) / 2, j + (d_.fin - d_.debut) / 2);
    choisit(j);
}

void traces::peint_papier(QPainter& p, const QSize& taille) const {
    dessin_traces d = d_;
    d.vif = false;
    d.dispose(taille);
    d.peint(p, true);
    d.peint_lecture(p, true, false);
}

void traces::paintEvent(QPaintEvent*) {
    const double r = devicePixelRatioF();
    if (a_peindre_ || image_.size() != size() * r) {
        image_ = QImage(size() * r, QImage::Format_RGB32);
        image_.setDevicePixelRatio(r);
        QPainter p(&image_);
        d_.peint(p, false);
        a_peindre_ = false;
    }
    QPainter p(this);
    p.drawImage(0, 0, image_);
    d_.peint_lecture(p, false, true);
    if (geste_ == geste::zoom && bouge_ && !d_.cadres().isEmpty()) {
        QColor voile = palette().color(QPalette::Highlight);
        voile.setAlpha(50);
        const double haut = d_.cadres().first().top(), bas = d_.cadres().last().bottom();
        p.fillRect(QRectF(QPointF(appui_.x(), haut), QPointF(zoom_x_, bas)).normalized(), voile);
    }
}

void traces::resizeEvent(QResizeEvent*) { change(); }

void traces::changeEvent(QEvent* e) {
    if (e->type() == QEvent::FontChange) {
        d_.police = font();
        d_.police_nombres = style::police_nombres(this);
    }
    if (e->type() == QEvent::PaletteChange || e->type() == QEvent::FontChange) change();
    QWidget::changeEvent(e);
}

void traces::zoome_ordonnees(int g, const QString& unite, double y, double facteur) {
    const QRectF r = d_.cadres()[g];
    const auto [bas, haut] = d_.etendue(g, unite);
    const double fixe = bas + (r.bottom() - y) / r.height() * (haut - bas);
    const double nouveau_bas = fixe - (fixe - bas) * facteur, nouveau_haut = fixe + (haut - fixe) * facteur;
    if (!(nouveau_haut - nouveau_bas > 1e-11 * (1 + std::fabs(fixe)))) return;
    for (auto& o : d_.choisies)
        if (o.graphique == g && o.unite == unite) {
            o.min = nouveau_bas;
            o.max = nouveau_haut;
            return;
        }
    d_.choisies.push_back({g, unite, nouveau_bas, nouveau_haut});
}

void traces::wheelEvent(QWheelEvent* e) {
    const double cran = e->angleDelta().y() ? e->angleDelta().y() : e->angleDelta().x();
    const double facteur = std::pow(0.8, cran / 120);
    const QPointF ou = e->position();
    e->accept();
    if (const QString u = d_.unite_en(ou); !u.isNull() || (e->modifiers() & Qt::ControlModifier)) {
        for (int g = 0; g < d_.cadres().size(); ++g) {
            if (ou.y() < d_.cadres()[g].top() || ou.y() > d_.cadres()[g].bottom()) continue;
            for (const QString& une : d_.unites(g))
                if (u.isNull() || une == u) zoome_ordonnees(g, une, ou.y(), facteur);
        }
        change();
        return;
    }
    if (!depuis_molette_.isValid() || depuis_molette_.elapsed() > meme_molette) retient();
    depuis_molette_.start();
    const double j = d_.date_en(ou.x());
    // What can be seen of the whole is not left by a turn of the wheel.
    const double debut = j - (j - d_.debut) * facteur, fin = j + (d_.fin - j) * facteur;
    if (fin - debut >= tout_fin_ - tout_debut_)
        va(tout_debut_, tout_fin_);
    else
        va(debut, fin);
}

bool traces::pres_de(const std::optional<double>& marque, double x) const {
    return marque && std::fabs(d_.x_de(*marque) - x) <= portee;
}

void traces::mousePressEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton) return;
    appui_ = e->position();
    bouge_ = false;
    vue_debut_ = d_.debut;
    vue_fin_ = d_.fin;
    if (const trace_evenement* x = d_.evenement_en(appui_)) {
        choisit(x->date);
        return;
    }
    geste_ = pres_de(d_.a, appui_.x())              ? geste::marque_a
             : pres_de(d_.b, appui_.x())            ? geste::marque_b
             : (e->modifiers() & Qt::ShiftModifier) ? geste::zoom
                                                    : geste::deplace;
}

void traces::mouseMoveEvent(QMouseEvent* e) {
    const QPointF ou = e->position();
    if (geste_ == geste::aucun) {
        const bool marque = pres_de(d_.a, ou.x()) || pres_de(d_.b, ou.x());
        setCursor(marque                    ? Qt::SizeHorCursor
                  : d_.bande().contains(ou) ? Qt::PointingHandCursor
                                            : Qt::ArrowCursor);
        if (d_.graphique_en(ou) >= 0) pose_curseur(d_.date_en(ou.x()));
        return;
    }
    if (!bouge_ && (ou - appui_).manhattanLength() < portee) return;
    if (!bouge_ && geste_ == geste::deplace) retient();
    bouge_ = true;
    const double j = std::clamp(d_.date_en(ou.x()), tout_debut_, tout_fin_);
    switch (geste_) {
    case geste::marque_a: pose_marques(j, d_.b); break;
    case geste::marque_b: pose_marques(d_.a, j); break;
    case geste::zoom:
        zoom_x_ = ou.x();
        update();
        break;
    case geste::deplace: {
        const double de = (appui_.x() - ou.x()) / std::max(1., d_.bande().width()) * (vue_fin_ - vue_debut_);
        va(vue_debut_ + de, vue_fin_ + de);
        break;
    }
    case geste::aucun: break;
    }
}

void traces::mouseReleaseEvent(QMouseEvent* e) {
    const geste g = geste_;
    geste_ = geste::aucun;
    if (g == geste::zoom && bouge_) {
        const double x0 = d_.date_en(appui_.x()), x1 = d_.date_en(zoom_x_);
        if (std::fabs(x1 - x0) > 0) pose_vue(std::min(x0, x1), std::max(x0, x1));
    } else if (g == geste::deplace && !bouge_ && d_.graphique_en(e->position()) >= 0)
        choisit(d_.date_en(e->position().x()));
    update();
}

void traces::mouseDoubleClickEvent(QMouseEvent* e) {
    if (!d_.unite_en(e->position()).isNull())
        ajuste_ordonnees(false);
    else if (d_.graphique_en(e->position()) >= 0)
        montre_tout();
}

void traces::keyPressEvent(QKeyEvent* e) {
    const double pas = (d_.fin - d_.debut) / std::max(1., d_.bande().width());
    const double saut = (e->modifiers() & Qt::ControlModifier) ? 20 : 1;
    switch (e->key()) {
    case Qt::Key_Left: choisit(d_.date - saut * pas); break;
    case Qt::Key_Right: choisit(d_.date + saut * pas); break;
    case Qt::Key_A: pose_marques(d_.date, d_.b); break;
    case Qt::Key_B: pose_marques(d_.a, d_.date); break;
    case Qt::Key_Home: montre_tout(); break;
    case Qt::Key_Backspace: retour(); break;
    case Qt::Key_PageUp: va_evenement(-1); break;
    case Qt::Key_PageDown: va_evenement(1); break;
    default: QWidget::keyPressEvent(e);
    }
}

void traces::contextMenuEvent(QContextMenuEvent* e) {
    emit menu_demande(e->globalPos(), d_.graphique_en(e->pos()));
}

void traces::dragEnterEvent(QDragEnterEvent* e) {
    if (e->mimeData()->hasFormat(format_variable)) e->acceptProposedAction();
}
void traces::dragMoveEvent(QDragMoveEvent* e) { e->acceptProposedAction(); }
void traces::dropEvent(QDropEvent* e) {
    e->acceptProposedAction();
    emit depose(QString::fromUtf8(e->mimeData()->data(format_variable)), d_.graphique_en(e->position()));
}

bool traces::event(QEvent* e) {
    if (e->type() == QEvent::ToolTip) {
        auto* aide = static_cast<QHelpEvent*>(e);
        if (const trace_evenement* x = d_.evenement_en(aide->pos()))
            QToolTip::showText(aide->globalPos(),
                               d_.genres[x->genre].nom + (x->texte.isEmpty() ? QString() : " : " + x->texte) +
                                   "\n" + texte_instant(x->date),
                               this);
        else
            QToolTip::hideText();
        return true;
    }
    return QWidget::event(e);
}
