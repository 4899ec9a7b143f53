/// Drawings as SVG text: the little that charts and maps of the report need. Only what Qt's SVG renderer
/// knows too is used: attributes, no style sheets, no clipping.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

struct point_svg {
    double x, y;
};

/// How a shape is drawn; colours as SVG has them, "none" for nothing.
struct trait_svg {
    const char* couleur = "#333333";
    double epaisseur = 1;
    const char* tirets = "";
    const char* remplissage = "none";
    double opacite = 1;
};

struct texte_svg {
    const char* ancre = "start"; ///< "start", "middle" or "end" stands at the place
    double taille = 11;
    const char* couleur = "#333333";
    bool gras = false;
};

class dessin_svg {
public:
    /// Size in pixels of 1/96 inch; `titre` is what a reader who does not see the drawing is told.
    dessin_svg(double largeur, double hauteur, std::string_view titre);

    void ligne(point_svg a, point_svg b, const trait_svg& t);
    void courbe(std::span<const point_svg> points, const trait_svg& t);
    void rectangle(point_svg coin, double largeur, double hauteur, const trait_svg& t);
    void disque(point_svg centre, double rayon, const trait_svg& t);
    /// Closed outlines in one shape, holes by the even-odd rule.
    void contours(std::span<const std::vector<point_svg>> bords, const trait_svg& t);
    void fleche(point_svg de, point_svg a, const trait_svg& t);
    void texte(point_svg ou, std::string_view quoi, const texte_svg& t = {});

    double largeur() const { return largeur_; }
    double hauteur() const { return hauteur_; }
    /// The whole element.
    std::string svg() const { return texte_ + "</svg>"; }

private:
    double largeur_, hauteur_;
    std::string texte_;
};

/// A text with what XML must not hold written out.
std::string echappe_xml(std::string_view t);
