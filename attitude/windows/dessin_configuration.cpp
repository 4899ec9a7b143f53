#include "attitude/windows/dessin_configuration.h"

#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "shell/formats.h"
#include "widgets/style.h"

namespace {

const style::role role_axe[] = {style::role::axe_x, style::role::axe_y, style::role::axe_z};
const char* const nom_axe[] = {"X", "Y", "Z"};

/// A drawable number: a file may hold anything.
double sain(double x) { return std::isfinite(x) ? x : 0; }

QString nombre(double x) { return QString::number(x, 'g', 4); }

/// Axonometric view from +X, +Y, +Z, 35 degrees from X and 25 degrees above: X to the lower left, Y to the
/// right, Z upwards; a vector of three equal elements, a common dipole, does not point at the eye.
struct vue_config {
    vue_config(const attitude_record& a, const QRectF& zone) : a(a), zone(zone) {
        for (int i = 0; i < 3; ++i) dim[i] = std::clamp(std::abs(sain(a.dim[i])), 0.0, 1e6);
        const double largeur = dim[0] * x_x + dim[1] * y_x;
        const double hauteur = dim[0] * x_y + dim[1] * y_y + dim[2] * z_y;
        plus_grande = std::max({dim[0], dim[1], dim[2]});
        if (plus_grande > 0)
            echelle = std::min(0.48 * zone.width() / std::max(largeur, plus_grande * 0.1),
                               0.48 * zone.height() / std::max(hauteur, plus_grande * 0.1));
        centre = zone.center();
    }
    QPointF point(double x, double y, double z) const {
        return centre + echelle * QPointF(y * y_x - x * x_x, x * x_y + y * y_y - z * z_y);
    }
    QPointF sur_axe(int axe, double d) const {
        return point(axe == 0 ? d : 0, axe == 1 ? d : 0, axe == 2 ? d : 0);
    }
    /// Length in metres of so many pixels along an axis.
    double metres(double pixels) const { return pixels / echelle; }
    double unite() const { return std::min(zone.width(), zone.height()) / 100; }

    static constexpr double x_x = 0.574, x_y = 0.346, y_x = 0.819, y_y = 0.242, z_y = 0.906;

    const attitude_record& a;
    QRectF zone;
    vec3 dim{};
    double plus_grande = 0, echelle = 1;
    QPointF centre;
};

void texte(QPainter& p, const QPointF& ou, const QString& t) {
    const QFontMetricsF m(p.font());
    const double l = m.horizontalAdvance(t), bord = 2;
    QPointF base = ou - QPointF(l / 2, -m.boundingRect(t).height() / 3);
    // Whole within the picture, wherever its point stands.
    const QRectF zone(p.viewport());
    base.setX(std::max(zone.left() + bord, std::min(base.x(), zone.right() - bord - l)));
    base.setY(std::max(zone.top() + m.ascent(), std::min(base.y(), zone.bottom() - m.descent())));
    p.drawText(base, t);
}

/// A text beyond a point, seen from `origine`, clear of a symbol of this radius.
void texte_au_dela(QPainter& p, const QPointF& origine, const QPointF& ou, double rayon, const QString& t) {
    QPointF u = ou - origine;
    const double n = std::hypot(u.x(), u.y());
    u = n > 1e-9 ? u / n : QPointF(0, -1);
    const QRectF r = QFontMetricsF(p.font()).boundingRect(t);
    const double ecart = rayon + r.height() * 0.7;
    texte(p, ou + QPointF(u.x() * (ecart + r.width() / 2), u.y() * ecart), t);
}

void peint_axes(QPainter& p, const vue_config& v) {
    for (int i = 0; i < 3; ++i) {
        const double debut = v.dim[i] / 2, fin = debut + v.metres(16 * v.unite());
        p.setPen(QPen(style::couleur(role_axe[i]), 2));
        p.drawLine(v.sur_axe(i, debut), v.sur_axe(i, fin));
        const bool mat = v.a.mext[i] != 0 && !std::signbit(v.a.dext[i]);
        if (!mat) texte_au_dela(p, v.centre, v.sur_axe(i, fin), 0, QString("+") + nom_axe[i]);
    }
}

void peint_face(QPainter& p, const vue_config& v, int axe, int nuance) {
    const double x = v.dim[0] / 2, y = v.dim[1] / 2, z = v.dim[2] / 2;
    QPolygonF face;
    if (axe == 0) face << v.point(x, -y, -z) << v.point(x, y, -z) << v.point(x, y, z) << v.point(x, -y, z);
    if (axe == 1) face << v.point(-x, y, -z) << v.point(x, y, -z) << v.point(x, y, z) << v.point(-x, y, z);
    if (axe == 2) face << v.point(-x, -y, z) << v.point(x, -y, z) << v.point(x, y, z) << v.point(-x, y, z);
    QColor fond = style::couleur(style::role::discret);
    fond.setAlpha(nuance);
    p.setBrush(fond);
    p.setPen(QPen(style::couleur(style::role::trait), 1.5));
    p.drawPolygon(face);
}

/// Pict_config: the body, its dimensions, axes and centre of mass.
void peint_corps(QPainter& p, const vue_config& v) {
    peint_axes(p, v);
    peint_face(p, v, 2, 40);
    peint_face(p, v, 0, 80);
    peint_face(p, v, 1, 120);
    const double x = v.dim[0] / 2, y = v.dim[1] / 2, z = v.dim[2] / 2;
    p.setPen(style::couleur(style::role::trait));
    const auto cote = [&](const QPointF& ou, int i) {
        texte_au_dela(p, v.centre, ou, v.unite(), nombre(v.a.dim[i]) + " m");
    };
    cote(v.point(0, y, -z), 0);
    cote(v.point(x, 0, -z), 1);
    cote(v.point(-x, y, 0), 2);

    // Centre of mass: the quartered circle of the drawing office.
    const QPointF c = v.point(sain(v.a.cm[0]), sain(v.a.cm[1]), sain(v.a.cm[2]));
    const double r = 2.2 * v.unite();
    const QRectF rond(c.x() - r, c.y() - r, 2 * r, 2 * r);
    p.setBrush(p.background());
    p.drawEllipse(rond);
    p.setBrush(style::couleur(style::role::trait));
    p.drawPie(rond, 0, 90 * 16);
    p.drawPie(rond, 180 * 16, 90 * 16);
}

/// Pict_mag: the residual dipole, an arrow from the centre with its two poles.
void peint_dipole(QPainter& p, const vue_config& v) {
    const vec3 d = {sain(v.a.dip_res[0]), sain(v.a.dip_res[1]), sain(v.a.dip_res[2])};
    const double norme = std::hypot(d[0], d[1], d[2]);
    if (norme == 0) return;
    const double l = v.metres(30 * v.unite()) / norme;
    const QPointF a = v.point(-d[0] * l, -d[1] * l, -d[2] * l), b = v.point(d[0] * l, d[1] * l, d[2] * l);
    const QColor couleur = style::couleur_courbe(3);
    p.setPen(QPen(couleur, 2.5, Qt::DashLine));
    p.drawLine(a, b);
    const QPointF u = b - a;
    const double n = std::hypot(u.x(), u.y());
    p.setPen(QPen(couleur, 2.5));
    if (n > 1e-9) {
        const QPointF e = u / n * 3 * v.unite(), t(-e.y(), e.x());
        p.drawLine(b, b - e + t * 0.6);
        p.drawLine(b, b - e - t * 0.6);
    }
    texte_au_dela(p, v.centre, b, 0, "N");
    texte_au_dela(p, v.centre, a, 0, "S");
}

/// Pict_mas..: an external mass at the end of its mast; a mast too long for the picture is broken.
template <int axe, int sens>
void peint_masse(QPainter& p, const vue_config& v) {
    const double distance = std::abs(sain(v.a.dext[axe]));
    const double place = v.dim[axe] / 2 + v.metres(24 * v.unite());
    const bool coupe = distance > place;
    const double d = sens * std::min(distance, place), depart = sens * std::min(v.dim[axe] / 2, std::abs(d));
    const QColor couleur = style::couleur(role_axe[axe]);
    const QPointF a = v.sur_axe(axe, depart), b = v.sur_axe(axe, d);
    p.setPen(QPen(couleur, 3));
    p.drawLine(a, b);
    if (coupe) {
        const QPointF m = (a + b) / 2;
        const double h = 2 * v.unite();
        p.setPen(QPen(p.background().color(), 4));
        p.drawLine(m - QPointF(h, -h), m + QPointF(h, -h));
        p.setPen(QPen(couleur, 1.5));
        for (int cote : {-1, 1}) {
            const QPointF ecart(cote * 1.2 * v.unite(), cote * 1.2 * v.unite());
            p.drawLine(m + ecart - QPointF(h, -h), m + ecart + QPointF(h, -h));
        }
    }
    p.setPen(QPen(style::couleur(style::role::trait), 1.5));
    p.setBrush(couleur);
    p.drawEllipse(b, 3.2 * v.unite(), 3.2 * v.unite());
    const QString valeur = QString("%1 kg, %2 m").arg(nombre(v.a.mext[axe]), nombre(distance));
    texte_au_dela(p, v.centre, b, 3.2 * v.unite(), valeur);
}

/// Pict_roues: a disc square to its axis for each wheel in use.
void peint_roues(QPainter& p, const vue_config& v) {
    for (int i = 0; i < 3; ++i) {
        if (v.a.JR[i] == 0 && v.a.OM_init[i] == 0) continue;
        const int j = (i + 1) % 3, k = (i + 2) % 3;
        const double rayon = v.metres(7 * v.unite()), avance = 0.28 * v.dim[i];
        QPolygonF disque;
        for (int n = 0; n < 48; ++n) {
            const double t = n * 2 * M_PI / 48;
            vec3 q{};
            q[i] = avance;
            q[j] = rayon * std::cos(t);
            q[k] = rayon * std::sin(t);
            disque << v.point(q[0], q[1], q[2]);
        }
        QColor c = style::couleur(role_axe[i]);
        p.setPen(QPen(c, 2));
        c.setAlpha(110);
        p.setBrush(c);
        p.drawPolygon(disque);
        const double axe = v.metres(3 * v.unite());
        p.drawLine(v.sur_axe(i, avance - axe), v.sur_axe(i, avance + axe));
    }
}

/// Pict_damp: the pair of a damper, each a mass on its spring at the lever's ends.
void peint_amortisseurs(QPainter& p, const vue_config& v) {
    for (int i = 0; i < 3; ++i) {
        if (v.a.md[i] == 0 && v.a.ld[i] == 0 && v.a.c[i] == 0 && v.a.k[i] == 0) continue;
        const double bras = std::min(std::abs(sain(v.a.ld[i])), v.dim[i] / 2 + v.metres(10 * v.unite()));
        const QColor c = style::couleur(role_axe[i]);
        for (int sens : {-1, 1}) {
            const QPointF fin = v.sur_axe(i, sens * std::max(bras, v.metres(4 * v.unite())));
            const QPointF u = fin - v.centre;
            const double n = std::max(std::hypot(u.x(), u.y()), 1e-9);
            const QPointF t = QPointF(-u.y(), u.x()) / n * 1.6 * v.unite();
            QPainterPath ressort(v.centre);
            for (int s = 1; s < 9; ++s) ressort.lineTo(v.centre + u * (s / 9.0) + (s % 2 ? t : -t));
            ressort.lineTo(fin);
            p.setBrush(Qt::NoBrush);
            p.setPen(QPen(c, 1.5));
            p.drawPath(ressort);
            p.setBrush(c);
            const double h = 1.6 * v.unite();
            p.drawRect(QRectF(fin.x() - h, fin.y() - h, 2 * h, 2 * h));
        }
    }
}

} // namespace

/// One transparent layer of the drawing.
class calque : public QWidget {
public:
    using peintre = void (*)(QPainter&, const vue_config&);
    calque(const QString& nom, peintre peint, const attitude_record& a, QWidget* scene)
        : QWidget(scene), peint_(peint), a_(a) {
        setObjectName(nom);
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.setBackground(palette().brush(QPalette::Window));
        peint_(p, vue_config(a_, rect()));
    }

private:
    peintre peint_;
    const attitude_record& a_;
};

dessin_configuration::dessin_configuration(const attitude_record& a, QWidget* parent)
    : QWidget(parent), a_(a) {
    auto* v = new QVBoxLayout(this);
    scene_ = new QWidget(this);
    v->addWidget(scene_, 1);
    legende_ = new QLabel;
    legende_->setObjectName("lab_legende");
    legende_->setWordWrap(true);
    legende_->setTextFormat(Qt::RichText);
    v->addWidget(legende_);
    // From back to front: what stands behind the body, the body, what is seen through it, what stands before.
    const auto ajoute = [&](const QString& nom, calque::peintre peint) {
        calques_ << new calque(nom, peint, a_, scene_);
    };
    ajoute("Pict_masxm", peint_masse<0, -1>);
    ajoute("pict_masym", peint_masse<1, -1>);
    ajoute("Pict_maszm", peint_masse<2, -1>);
    ajoute("Pict_config", peint_corps);
    ajoute("Pict_damp", peint_amortisseurs);
    ajoute("Pict_roues", peint_roues);
    ajoute("Pict_mag", peint_dipole);
    ajoute("Pict_masxp", peint_masse<0, 1>);
    ajoute("Pict_masyp", peint_masse<1, 1>);
    ajoute("Pict_maszp", peint_masse<2, 1>);
}

void dessin_configuration::montre_config(bool magn, bool roue, bool damp) {
    const QStringList cotes = {"Pict_masxm", "pict_masym", "Pict_maszm",
                               "Pict_masxp", "Pict_masyp", "Pict_maszp"};
    for (calque* c : calques_) {
        const QString nom = c->objectName();
        bool visible = true;
        if (nom == "Pict_mag") visible = magn;
        if (nom == "Pict_roues") visible = roue;
        if (nom == "Pict_damp") visible = damp;
        if (const int cote = int(cotes.indexOf(nom)); cote >= 0)
            visible = a_.mext[cote % 3] != 0 && std::signbit(a_.dext[cote % 3]) == (cote < 3);
        c->setVisible(visible);
        c->update();
    }
    legende_->setText(description(magn, roue, damp));
}

QString dessin_configuration::description(bool magn, bool roue, bool damp) const {
    QStringList parties = {"◕ centre de gravité"};
    for (int i = 0; i < 3; ++i)
        if (a_.mext[i] != 0)
            parties << QString("● masse externe %1%2").arg(std::signbit(a_.dext[i]) ? "-" : "+", nom_axe[i]);
    const auto axes = [](const auto& en_service) {
        QStringList noms;
        for (int i = 0; i < 3; ++i)
            if (en_service(i)) noms << nom_axe[i];
        return noms.isEmpty() ? QString("sans valeur") : noms.join(", ");
    };
    if (magn) parties << "⇢ dipôle résiduel";
    if (roue) parties << "◉ roues : " + axes([&](int i) { return a_.JR[i] != 0 || a_.OM_init[i] != 0; });
    if (damp)
        parties << "■ amortisseurs : " + axes([&](int i) {
                       return a_.md[i] != 0 || a_.ld[i] != 0 || a_.c[i] != 0 || a_.k[i] != 0;
                   });
    for (QString& partie : parties) partie.replace(' ', "&nbsp;"); // a symbol stays with its text
    return parties.join(" &nbsp; ");
}

QSize dessin_configuration::sizeHint() const { return {style::espace(100), style::espace(110)}; }

void dessin_configuration::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    layout()->activate();
    for (calque* c : calques_) c->setGeometry(scene_->rect());
}
