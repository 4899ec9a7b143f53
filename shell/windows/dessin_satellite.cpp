#include "shell/windows/dessin_satellite.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <vector>

#include "orbit/matrices.h"
#include "widgets/style.h"

namespace {

/// Axonometric view, 35 degrees from X and 25 degrees above.
constexpr vec3 droite = {-0.574, 0.819, 0}, haut = {-0.346, -0.242, 0.906}, oeil = {0.742, 0.520, 0.422};

double produit(const vec3& a, const vec3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
/// A drawable size: a file may hold anything.
double taille(double x, double min) { return std::isfinite(x) ? std::clamp(x, min, 1e3) : min; }

enum class matiere { tole, cellules, dos };

struct facette {
    std::vector<vec3> coins; ///< counter-clockwise seen from outside
    matiere de;
    int rangs = 0; ///< lines of cells across, and along
    int files = 0;
    vec3 normale() const {
        return vec_vectoriel(vec_difference(coins[1], coins[0]), vec_difference(coins[2], coins[0]));
    }
    double profondeur() const {
        double d = 0;
        for (const vec3& c : coins) d += produit(c, oeil);
        return d / static_cast<double>(coins.size());
    }
};

struct mat {
    vec3 pied, bout;
    bool coupe; ///< longer than the picture
    int axe;
};

/// What is drawn, in the unit of the body's larger side.
struct maquette {
    std::vector<facette> facettes;
    std::vector<mat> mats;
    vec3 demi{}; ///< half sizes of the body
};

/// The sides of a prism around Z; the first stands towards +X, the cylinder has 36.
void ajoute_prisme(maquette& m, int cotes, double rayon, double demi_hauteur, matiere de) {
    const double arete = rayon / std::cos(pi / cotes), h = demi_hauteur;
    const auto coin = [&](double rang, double z) {
        const double a = rang * deux_pi / cotes;
        return vec3{arete * std::cos(a), arete * std::sin(a), z};
    };
    facette dessus{{}, matiere::tole}, dessous{{}, matiere::tole};
    for (int i = 0; i < cotes; ++i) {
        const double a = i - 0.5, b = i + 0.5;
        const bool cylindre = cotes > 6;
        m.facettes.push_back({{coin(a, -h), coin(b, -h), coin(b, h), coin(a, h)},
                              de,
                              std::max(2, static_cast<int>(std::lround(3 * h / rayon))),
                              cylindre ? 1 : 3});
        dessus.coins.push_back(coin(a, h));
        dessous.coins.insert(dessous.coins.begin(), coin(a, -h));
    }
    m.facettes.push_back(dessus);
    m.facettes.push_back(dessous);
    m.demi = {rayon, rayon, h};
}

/// Two wings along Y that turn about it; towards the eye unless they are fixed.
void ajoute_ailes(maquette& m, const power_record& p, double cote) {
    const double corde = 0.42, aire = taille(p.ext_area, 0) / (cote * cote);
    const double longueur = std::clamp(aire / (2 * corde), 0.25, 2.2);
    const double angle = p.pan_fixed == vrai ? taille(p.pan_angle_init, -1e3) * rad_par_degre : 0.75 * pi;
    const vec3 t = {corde * std::sin(angle), 0, corde * std::cos(angle)};
    for (const double cote_y : {-1.0, 1.0}) {
        const double debut = cote_y * (m.demi[1] + 0.14), fin = debut + cote_y * longueur;
        const auto coin = [&](double s, double y) { return vec3{s * t[0], y, s * t[2]}; };
        const double de = std::min(debut, fin), a = std::max(debut, fin);
        facette devant{{coin(-1, a), coin(-1, de), coin(1, de), coin(1, a)}, matiere::cellules, 4, 0};
        devant.files = std::max(2, static_cast<int>(std::lround(longueur / 0.2)));
        // The front of a wing is the side of its normal t x y.
        const vec3 face = {-t[2], 0, t[0]};
        if (produit(devant.normale(), face) < 0) std::reverse(devant.coins.begin(), devant.coins.end());
        facette dos = devant;
        dos.de = matiere::dos;
        std::reverse(dos.coins.begin(), dos.coins.end());
        m.facettes.push_back(devant);
        m.facettes.push_back(dos);
        m.facettes.push_back(
            {{{0, cote_y * m.demi[1], 0.02}, {0, debut, 0.02}, {0, debut, -0.02}}, matiere::tole});
    }
}

maquette construit(const power_record& p, const attitude_record& a) {
    maquette m;
    double unite = 1;
    if (p.opt_panel_ext == vrai) {
        unite = std::sqrt(taille(p.body_face_area, 1e-4));
        ajoute_prisme(m, 4, 0.5, 0.5, matiere::tole);
        ajoute_ailes(m, p, unite);
    } else {
        const int cotes = p.opt_faces == 0 ? 4 : p.opt_faces == 1 ? 6 : 36;
        const double largeur = taille(p.body_width, 1e-3), hauteur = taille(p.body_height, 1e-3);
        const double rayon = cotes == 36 ? largeur / 2 : largeur / 2 / std::tan(pi / cotes);
        unite = std::max(2 * rayon, hauteur);
        ajoute_prisme(m, cotes, rayon / unite, hauteur / 2 / unite, matiere::cellules);
    }
    for (int i = 0; i < 3; ++i) {
        const auto k = static_cast<std::size_t>(i);
        if (a.mext[k] == 0 || !std::isfinite(a.dext[k]) || a.dext[k] == 0) continue;
        const double sens = a.dext[k] < 0 ? -1 : 1, vraie = std::fabs(a.dext[k]) / unite;
        const double d = std::clamp(vraie, m.demi[k], m.demi[k] + 1.1);
        mat t{{}, {}, vraie > d, i};
        t.pied[k] = sens * m.demi[k];
        t.bout[k] = sens * d;
        m.mats.push_back(t);
    }
    return m;
}

/// From the unit of the body to pixels.
struct projection {
    projection(const maquette& m, const QRectF& zone) {
        QRectF place;
        const auto compte = [&](const vec3& v) {
            const QPointF q(produit(v, droite), -produit(v, haut));
            place =
                place.isNull() ? QRectF(q, QSizeF(1e-9, 1e-9)) : place.united(QRectF(q, QSizeF(1e-9, 1e-9)));
        };
        for (const facette& f : m.facettes)
            for (const vec3& c : f.coins) compte(c);
        for (const mat& t : m.mats) compte(t.bout);
        echelle = std::min(zone.width() / place.width(), zone.height() / place.height());
        origine = zone.center() - place.center() * echelle;
    }
    QPointF operator()(const vec3& v) const {
        return origine + echelle * QPointF(produit(v, droite), -produit(v, haut));
    }
    double echelle = 1;
    QPointF origine;
};

QColor teinte(matiere de, const vec3& n) {
    const bool sombre = style::sombre();
    QColor c = de == matiere::cellules ? QColor(sombre ? 0x3b5aa8 : 0x2f4a92)
               : de == matiere::dos    ? QColor(sombre ? 0x8d8677 : 0xbdb4a2)
                                       : QColor(sombre ? 0x9a9fa8 : 0xd4d7dc);
    // The light comes from above, on the right.
    const double norme = std::sqrt(produit(n, n));
    const double clair = norme > 0 ? produit(n, {0.25, 0.55, 0.80}) / norme : 0;
    return c.lighter(100 + static_cast<int>(std::lround(22 * clair)));
}

void peint_facette(QPainter& p, const projection& vers, const facette& f) {
    const vec3 n = f.normale();
    if (produit(n, oeil) <= 0) return;
    QPolygonF polygone;
    for (const vec3& c : f.coins) polygone << vers(c);
    const QColor fond = teinte(f.de, n);
    const bool bande = f.files == 1; // of a cylinder: no line between strips
    p.setBrush(fond);
    p.setPen(bande ? QPen(fond, 1) : QPen(fond.darker(155), 1));
    p.drawPolygon(polygone);
    if (f.de != matiere::cellules) return;
    p.setPen(QPen(fond.lighter(155), 0.8));
    const auto entre = [](const QPointF& a, const QPointF& b, double s) { return a + (b - a) * s; };
    for (int i = 1; i < f.rangs; ++i) {
        const double s = static_cast<double>(i) / f.rangs;
        p.drawLine(entre(polygone[1], polygone[2], s), entre(polygone[0], polygone[3], s));
    }
    for (int i = 1; i < f.files; ++i) {
        const double s = static_cast<double>(i) / f.files;
        p.drawLine(entre(polygone[0], polygone[1], s), entre(polygone[3], polygone[2], s));
    }
}

void peint_mat(QPainter& p, const projection& vers, const mat& t) {
    const QPointF a = vers(t.pied), b = vers(t.bout);
    const double u = style::espace();
    p.setPen(QPen(style::couleur(style::role::trait), 1.8));
    p.drawLine(a, b);
    if (t.coupe) { // two strokes across: the true one is longer
        const QPointF m = (a + b) / 2;
        for (const double d : {-0.5, 0.5})
            p.drawLine(m + QPointF(-u, (d + 0.4) * u), m + QPointF(u, (d - 0.4) * u));
    }
    p.setBrush(teinte(matiere::dos, oeil));
    p.drawEllipse(b, 1.6 * u, 1.6 * u);
}

void peint_axes(QPainter& p, const QPointF& coin) {
    constexpr style::role roles[] = {style::role::axe_x, style::role::axe_y, style::role::axe_z};
    constexpr const char* noms[] = {"X", "Y", "Z"};
    const double l = style::espace(6);
    for (std::size_t i = 0; i < 3; ++i) {
        vec3 e{};
        e[i] = 1;
        const QPointF bout = coin + l * QPointF(produit(e, droite), -produit(e, haut));
        p.setPen(QPen(style::couleur(roles[i]), 1.6));
        p.drawLine(coin, bout);
        const QPointF u = (bout - coin) / l;
        p.drawText(QRectF(bout + u * style::espace(2) - QPointF(10, 10), QSizeF(20, 20)), Qt::AlignCenter,
                   noms[i]);
    }
}

} // namespace

dessin_satellite::dessin_satellite(const power_record& p, const attitude_record& a, QWidget* parent)
    : QWidget(parent), power_(p), attitude_(a) {
    setObjectName("pict_satellite");
    setMinimumSize(style::espace(45), style::espace(40));
}

QSize dessin_satellite::sizeHint() const { return {style::espace(80), style::espace(55)}; }

void dessin_satellite::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    maquette m = construit(power_, attitude_);
    const double marge = style::espace(4);
    const projection vers(m, QRectF(rect()).adjusted(marge, marge, -marge, -marge));
    // A mast on the far side stands behind the body.
    const auto devant = [](const mat& t) { return produit(t.bout, oeil) > 0; };
    for (const mat& t : m.mats)
        if (!devant(t)) peint_mat(p, vers, t);
    std::stable_sort(m.facettes.begin(), m.facettes.end(),
                     [](const facette& a, const facette& b) { return a.profondeur() < b.profondeur(); });
    for (const facette& f : m.facettes) peint_facette(p, vers, f);
    for (const mat& t : m.mats)
        if (devant(t)) peint_mat(p, vers, t);
    peint_axes(p, QPointF(style::espace(8), height() - style::espace(8)));
}
