/// Map and charts of the report.
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

#include "analysis/dessin_svg.h"
#include "analysis/phrase_bilan.h"
#include "analysis/rapport_figures.h"
#include "orbit/orb_trajecto.h"
#include "shell/lecture.h"
#include "shell/utilitaires.h"

namespace {

constexpr double largeur_page = 720;

// -- Charts

struct courbe_figure {
    const char* nom;
    const std::vector<double>& y;
    trait_svg trait;
};
struct limite_figure {
    std::string nom;
    double y;
};

/// Round values within [min, max], at most about so many.
std::vector<double> graduations(double min, double max, int nombre) {
    const double brut = (max - min) / nombre, dix = std::pow(10, std::floor(std::log10(brut)));
    double pas = 10 * dix;
    for (const double f : {1., 2., 5.})
        if (f * dix >= brut * (1 - 1e-9)) {
            pas = f * dix;
            break;
        }
    std::vector<double> g;
    for (double k = std::ceil(min / pas - 1e-9); k * pas <= max + 1e-9 * pas; ++k) g.push_back(k * pas);
    return g;
}

int decimales_de(const std::vector<double>& g) {
    if (g.size() < 2) return 1;
    return std::max(0, -static_cast<int>(std::floor(std::log10(g[1] - g[0]) + 1e-9)));
}

class graphe_rapport {
public:
    graphe_rapport(const char* titre, const char* unite, const tour_rapport& t, double min, double max)
        : d_(largeur_page, 200, titre), t_(t) {
        const double marge = std::max(1e-6, 0.06 * (max - min));
        min_ = min == 0 ? 0 : min - marge, max_ = max + marge;
        const double fin = t.minutes.empty() ? 1 : t.minutes.back();
        heures_ = fin > 300;
        fin_ = std::max(fin, 1e-6);
        eclipses();
        axes(unite);
    }
    void limite(const limite_figure& l) {
        if (l.y < min_ || l.y > max_) return;
        d_.ligne({gauche, y(l.y)}, {droite, y(l.y)}, {.couleur = "#a0432a", .epaisseur = 1, .tirets = "2,3"});
        d_.texte({droite - 4, y(l.y) - 3}, l.nom, {.ancre = "end", .taille = 10, .couleur = "#a0432a"});
    }
    void courbe(const courbe_figure& c) {
        std::vector<point_svg> points;
        for (std::size_t k = 0; k < c.y.size() && k < t_.minutes.size(); ++k)
            if (std::isfinite(c.y[k])) points.push_back({x(t_.minutes[k]), y(c.y[k])});
        d_.courbe(points, c.trait);
        d_.ligne({legende_, 10}, {legende_ + 24, 10}, c.trait);
        d_.texte({legende_ + 30, 14}, c.nom);
        legende_ += 56 + 6.3 * static_cast<double>(std::string_view(c.nom).size());
    }
    bloc_figure figure(std::string legende) const {
        return {d_.svg(), d_.largeur(), d_.hauteur(), std::move(legende)};
    }

private:
    static constexpr double gauche = 56, droite = 706, haut = 24, bas = 168;

    double x(double minutes) const { return gauche + (droite - gauche) * minutes / fin_; }
    double y(double v) const { return bas - (bas - haut) * (v - min_) / (max_ - min_); }

    void eclipses() {
        for (std::size_t k = 0; k < t_.eclipse.size();) {
            std::size_t fin = k;
            while (fin < t_.eclipse.size() && t_.eclipse[fin] == t_.eclipse[k]) ++fin;
            if (t_.eclipse[k]) {
                const double a = x(t_.minutes[k]), b = x(t_.minutes[std::min(fin, t_.minutes.size() - 1)]);
                d_.rectangle({a, haut}, b - a, bas - haut, {.couleur = "none", .remplissage = "#e4e6ea"});
            }
            k = fin;
        }
    }
    void axes(const char* unite) {
        const auto g = graduations(min_, max_, 5);
        for (const double v : g) {
            d_.ligne({gauche, y(v)}, {droite, y(v)}, {.couleur = "#d3d6dc", .epaisseur = 0.6});
            d_.texte({gauche - 6, y(v) + 4}, nombre_fr(v, decimales_de(g)), {.ancre = "end"});
        }
        const double echelle = heures_ ? 60 : 1;
        for (const double v : graduations(0, fin_ / echelle, 10)) {
            d_.ligne({x(v * echelle), bas}, {x(v * echelle), bas + 4}, {.couleur = "#7a808a"});
            d_.texte({x(v * echelle), bas + 16}, nombre_fr(v, 0), {.ancre = "middle"});
        }
        d_.rectangle({gauche, haut}, droite - gauche, bas - haut, {.couleur = "#7a808a", .epaisseur = 0.8});
        d_.texte({droite, bas + 29},
                 heures_ ? "heures depuis le début de l'orbite" : "minutes depuis le début de l'orbite",
                 {.ancre = "end", .taille = 10, .couleur = "#5c6370"});
        d_.texte({4, 14}, unite, {.couleur = "#5c6370"});
    }

    dessin_svg d_;
    const tour_rapport& t_;
    double min_, max_, fin_ = 1, legende_ = gauche;
    bool heures_ = false;
};

double plus_petit(std::initializer_list<const std::vector<double>*> listes) {
    double m = INFINITY;
    for (const auto* l : listes)
        for (const double v : *l) m = std::min(m, v);
    return std::isfinite(m) ? m : 0;
}
double plus_grand(std::initializer_list<const std::vector<double>*> listes) {
    double m = -INFINITY;
    for (const auto* l : listes)
        for (const double v : *l) m = std::max(m, v);
    return std::isfinite(m) ? m : 1;
}

// -- Map

point_svg sur_carte(const point_sol& p) { return {(p.lon + 180) * 2, (90 - p.lat) * 2}; }

/// Land of the program's data; nothing where the file cannot be read.
std::vector<std::vector<point_svg>> terres(const std::string& dossier) {
    std::vector<std::vector<point_svg>> bords;
    std::string texte, raison;
    if (!lit_fichier_court(dossier + "/land110m.geojson", 1 << 20, texte, raison)) return bords;
    const auto json = nlohmann::json::parse(texte, nullptr, false);
    if (!json.is_object() || !json.contains("features")) return bords;
    const auto anneau = [&bords](const nlohmann::json& points) {
        auto& bord = bords.emplace_back();
        for (const auto& p : points) {
            const point_svg q = sur_carte({p.at(0).get<double>(), p.at(1).get<double>()});
            // A tenth of a pixel is less than the coasts' own fineness.
            bord.push_back({std::round(q.x * 10) / 10, std::round(q.y * 10) / 10});
        }
    };
    try {
        for (const auto& objet : json.at("features")) {
            const auto& forme = objet.at("geometry");
            const auto& c = forme.at("coordinates");
            const bool un = forme.at("type") == "Polygon";
            for (std::size_t k = 0; k < (un ? 1 : c.size()); ++k)
                for (const auto& a : un ? c : c.at(k)) anneau(a);
        }
    } catch (const nlohmann::json::exception&) {
        bords.clear();
    }
    return bords;
}

/// A rim whose longitudes run on, drawn wherever it falls on the map.
void etend(dessin_svg& d, const std::vector<point_sol>& bord, const trait_svg& t) {
    for (const double tour : {-360., 0., 360.}) {
        std::vector<point_svg> place;
        double gauche = INFINITY, droite = -INFINITY;
        for (const point_sol& p : bord) {
            place.push_back(sur_carte({p.lon + tour, p.lat}));
            gauche = std::min(gauche, place.back().x), droite = std::max(droite, place.back().x);
        }
        if (droite > 0 && gauche < largeur_page) d.contours({&place, 1}, t);
    }
}

void trace(dessin_svg& d, const std::vector<tour_rapport::point>& points) {
    std::vector<point_svg> suite;
    for (std::size_t k = 1; k < points.size(); ++k) {
        const auto &a = points[k - 1], &b = points[k];
        const bool saut = std::fabs(b.sol.lon - a.sol.lon) > 180;
        if (suite.empty() && !saut) suite.push_back(sur_carte(a.sol));
        if (!saut) suite.push_back(sur_carte(b.sol));
        const bool suit = k + 1 < points.size() && points[k + 1].eclipse == b.eclipse && !saut;
        if (suit) continue;
        if (suite.size() > 1)
            d.courbe(suite, b.eclipse ? trait_svg{.couleur = "#4c525b", .epaisseur = 2.5, .tirets = "6,3"}
                                      : trait_svg{.couleur = "#b86e00", .epaisseur = 2.5});
        suite.clear();
    }
}

} // namespace

bloc_figure figure_carte(const etude& e, const tour_rapport& t, const std::string& dossier_donnees) {
    dessin_svg d(largeur_page, largeur_page / 2, "Trace au sol de la dernière orbite");
    d.rectangle({0, 0}, d.largeur(), d.hauteur(), {.couleur = "none", .remplissage = "#eaf2f6"});
    const auto sol = terres(dossier_donnees);
    if (!sol.empty()) d.contours(sol, {.couleur = "#9aa38f", .epaisseur = 0.5, .remplissage = "#dfe3d3"});
    for (int lon = -150; lon < 180; lon += 30)
        d.ligne(sur_carte({double(lon), 90}), sur_carte({double(lon), -90}),
                {.couleur = "#c3ccd2", .epaisseur = 0.5});
    for (int lat = -60; lat < 90; lat += 30)
        d.ligne(sur_carte({-180, double(lat)}), sur_carte({180, double(lat)}),
                {.couleur = "#c3ccd2", .epaisseur = 0.5});
    const point_sol soleil = point_subsolaire(e.modele, t.debut);
    etend(d, bord_calotte({soleil.lon > 0 ? soleil.lon - 180 : soleil.lon + 180, -soleil.lat}, 90),
          {.couleur = "none", .remplissage = "#27364a", .opacite = 0.16});

    const double distance =
        t.orbite.empty() ? e.orbit.orbite.orb_demi : std::hypot(t.orbite[0].x, t.orbite[0].y);
    for (const station& s : e.stations) {
        etend(d, cercle_station(s, distance), {.couleur = "#1f6fc4", .epaisseur = 1});
        const point_svg p = sur_carte({std::remainder(s.longitude, 360.), s.latitude});
        d.rectangle({p.x - 2.5, p.y - 2.5}, 5, 5, {.couleur = "#ffffff", .remplissage = "#1f6fc4"});
        const bool a_gauche = p.x > largeur_page - 90;
        d.texte({p.x + (a_gauche ? -6 : 6), p.y + 4}, s.nom,
                {.ancre = a_gauche ? "end" : "start", .taille = 10, .couleur = "#174f8c"});
    }
    trace(d, t.orbite);
    d.disque(sur_carte(soleil), 6, {.couleur = "#8a6200", .remplissage = "#ffd24a"});
    if (!t.orbite.empty())
        d.disque(sur_carte(t.orbite[0].sol), 4.5, {.couleur = "#222222", .remplissage = "#ffffff"});
    d.rectangle({0, 0}, d.largeur(), d.hauteur(), {.couleur = "#7a808a"});
    return {d.svg(), d.largeur(), d.hauteur(),
            "Trace au sol de la dernière orbite, du " + date_vers_texte(jour_vers_date(t.debut)) +
                " (rond blanc). Trait plein ambre : au Soleil ; tireté gris : en éclipse ; disque jaune : "
                "Soleil au zénith ; ombré : la nuit" +
                (e.stations.empty() ? "." : " ; carrés bleus : stations et leur zone de visibilité.")};
}

bloc_figure figure_puissances(const tour_rapport& t) {
    graphe_rapport g("Puissances de la dernière orbite", "W", t, std::min(0., plus_petit({&t.batterie})),
                     plus_grand({&t.generateur, &t.demande, &t.batterie}));
    g.courbe({"générateur", t.generateur, {.couleur = "#b86e00", .epaisseur = 2}});
    g.courbe({"demande", t.demande, {.couleur = "#333333", .epaisseur = 1.2, .tirets = "5,3"}});
    g.courbe({"charge utile", t.utile, {.couleur = "#2f8a3e", .epaisseur = 2}});
    g.courbe({"batterie (décharge positive)",
              t.batterie,
              {.couleur = "#1f6fc4", .epaisseur = 1.5, .tirets = "8,2"}});
    return g.figure("Puissances. Bandes grises : éclipse.");
}

bloc_figure figure_charge(const tour_rapport& t, const criteres_valeurs& c) {
    const double plancher = 100 - c.dod_max;
    graphe_rapport g("Charge de la batterie, dernière orbite", "%", t,
                     std::min(plancher, plus_petit({&t.charge})), 100);
    g.limite({"limite de décharge", plancher});
    g.courbe({"état de charge", t.charge, {.couleur = "#1f6fc4", .epaisseur = 2}});
    return g.figure("État de charge de la batterie.");
}

bloc_figure figure_temperatures(const tour_rapport& t, const criteres_valeurs& c) {
    graphe_rapport g("Températures de la dernière orbite", "°C", t, plus_petit({&t.t_batterie, &t.t_pan_min}),
                     plus_grand({&t.t_batterie, &t.t_pan_max}));
    g.limite({"batterie, maximum", c.t_bat_max});
    g.limite({"batterie, minimum", c.t_bat_min});
    g.courbe({"batterie", t.t_batterie, {.couleur = "#1f6fc4", .epaisseur = 2}});
    if (t.t_pan_min == t.t_pan_max) {
        g.courbe({"panneaux", t.t_pan_max, {.couleur = "#a0432a", .epaisseur = 1.6}});
        return g.figure("Températures de la batterie et des panneaux.");
    }
    g.courbe({"panneau le plus chaud", t.t_pan_max, {.couleur = "#a0432a", .epaisseur = 1.6}});
    g.courbe(
        {"panneau le plus froid", t.t_pan_min, {.couleur = "#2a7f9e", .epaisseur = 1.6, .tirets = "5,3"}});
    return g.figure("Températures de la batterie et des panneaux.");
}
