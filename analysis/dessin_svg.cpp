#include "analysis/dessin_svg.h"

#include <charconv>
#include <cmath>

namespace {

/// A hundredth of a pixel is enough.
std::string nombre(double x) {
    char t[48];
    const double arrondi = std::round(x * 100) / 100;
    return {t, std::to_chars(t, t + sizeof t, arrondi == 0 ? 0. : arrondi).ptr};
}

std::string attribut(const char* nom, double x) { return std::string(" ") + nom + "=\"" + nombre(x) + "\""; }

std::string attributs(const trait_svg& t) {
    std::string a = std::string(" fill=\"") + t.remplissage + "\" stroke=\"" + t.couleur + "\"";
    if (t.epaisseur != 1) a += attribut("stroke-width", t.epaisseur);
    if (*t.tirets) a += std::string(" stroke-dasharray=\"") + t.tirets + "\"";
    if (t.opacite != 1) a += attribut("opacity", t.opacite);
    return a + "/>\n";
}

std::string liste(std::span<const point_svg> points) {
    std::string t;
    for (const point_svg& p : points) {
        if (!t.empty()) t += ' ';
        t += nombre(p.x) + ',' + nombre(p.y);
    }
    return t;
}

} // namespace

std::string echappe_xml(std::string_view t) {
    std::string s;
    for (const char c : t) switch (c) {
        case '&': s += "&amp;"; break;
        case '<': s += "&lt;"; break;
        case '>': s += "&gt;"; break;
        case '"': s += "&quot;"; break;
        case '\n':
        case '\t': s += c; break;
        default:
            if (static_cast<unsigned char>(c) >= ' ') s += c; // other control characters are no XML
        }
    return s;
}

dessin_svg::dessin_svg(double largeur, double hauteur, std::string_view titre)
    : largeur_(largeur), hauteur_(hauteur),
      texte_("<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\" viewBox=\"0 0 " + nombre(largeur) + ' ' +
             nombre(hauteur) + "\"" + attribut("width", largeur) + attribut("height", hauteur) +
             " font-family=\"sans-serif\" stroke-linejoin=\"round\">\n<title>" + echappe_xml(titre) +
             "</title>\n") {}

void dessin_svg::ligne(point_svg a, point_svg b, const trait_svg& t) {
    texte_ += "<line" + attribut("x1", a.x) + attribut("y1", a.y) + attribut("x2", b.x) +
              attribut("y2", b.y) + attributs(t);
}

void dessin_svg::courbe(std::span<const point_svg> points, const trait_svg& t) {
    if (!points.empty()) texte_ += "<polyline points=\"" + liste(points) + '"' + attributs(t);
}

void dessin_svg::rectangle(point_svg coin, double largeur, double hauteur, const trait_svg& t) {
    texte_ += "<rect" + attribut("x", coin.x) + attribut("y", coin.y) + attribut("width", largeur) +
              attribut("height", hauteur) + attributs(t);
}

void dessin_svg::disque(point_svg centre, double rayon, const trait_svg& t) {
    texte_ +=
        "<circle" + attribut("cx", centre.x) + attribut("cy", centre.y) + attribut("r", rayon) + attributs(t);
}

void dessin_svg::contours(std::span<const std::vector<point_svg>> bords, const trait_svg& t) {
    texte_ += "<path fill-rule=\"evenodd\" d=\"";
    for (const auto& bord : bords)
        if (!bord.empty()) texte_ += 'M' + liste(bord) + 'Z';
    texte_ += '"' + attributs(t);
}

void dessin_svg::fleche(point_svg de, point_svg a, const trait_svg& t) {
    ligne(de, a, t);
    const double l = std::hypot(a.x - de.x, a.y - de.y);
    if (!(l > 0)) return;
    const double x = (a.x - de.x) / l, y = (a.y - de.y) / l, taille = 4 + 2 * t.epaisseur;
    trait_svg pointe = t;
    pointe.remplissage = t.couleur;
    pointe.tirets = "";
    const std::vector<point_svg> bord = {
        {a.x + x * taille / 2, a.y + y * taille / 2},
        {a.x - x * taille - y * taille / 2, a.y - y * taille + x * taille / 2},
        {a.x - x * taille + y * taille / 2, a.y - y * taille - x * taille / 2}};
    contours({&bord, 1}, pointe);
}

void dessin_svg::texte(point_svg ou, std::string_view quoi, const texte_svg& t) {
    texte_ += "<text" + attribut("x", ou.x) + attribut("y", ou.y) + attribut("font-size", t.taille) +
              " fill=\"" + t.couleur + "\" text-anchor=\"" + t.ancre + '"' +
              (t.gras ? " font-weight=\"bold\"" : "") + '>' + echappe_xml(quoi) + "</text>\n";
}
