#include "analysis/rapport_figures.h"

#include <algorithm>
#include <cmath>

#include "analysis/dessin_svg.h"
#include "analysis/modes.h"
#include "analysis/phrase_bilan.h"
#include "analysis/reglages_etude.h"
#include "orbit/orb_trajecto.h"
#include "power/montage.h"
#include "shell/utilitaires.h"

namespace {

constexpr int points_par_tour = 360;

void note_pas(const power_record& p, double minutes, tour_rapport& t) {
    double froid = INFINITY, chaud = -INFINITY;
    for (int i = 0; i < nombre_panneaux(p); ++i) {
        froid = std::min(froid, p.node_t[static_cast<std::size_t>(i)] - zero_celsius);
        chaud = std::max(chaud, p.node_t[static_cast<std::size_t>(i)] - zero_celsius);
    }
    t.minutes.push_back(minutes);
    t.generateur.push_back(p.gen_power);
    t.demande.push_back(p.p_demande);
    t.utile.push_back(p.p_payload);
    t.batterie.push_back(p.bat_p);
    t.charge.push_back(100 * p.bat_soc);
    t.t_batterie.push_back(p.t_bat);
    t.t_pan_min.push_back(froid);
    t.t_pan_max.push_back(chaud);
    t.eclipse.push_back(p.eclipse == vrai);
}

/// The orbit around the start of the turn, from places alone.
void note_orbite(calcul& c, double debut, double duree, tour_rapport& t) {
    const etat_calcul& s = c.etat();
    vec3 x{}, y{};
    for (int k = 0; k <= points_par_tour; ++k) {
        if (!c.place(debut + k * duree / secondes_par_jour / points_par_tour)) return;
        const orbit_state& o = s.orbite;
        if (k == 0) {
            const vec3 h = vec_vectoriel(o.sat_pos, o.sat_vit);
            // The eccentricity vector points at the perigee; of a circle the start does as well.
            const vec3 vh = vec_vectoriel(o.sat_vit, h);
            vec3 e{};
            for (std::size_t i = 0; i < 3; ++i) e[i] = vh[i] / mu_terre - o.sat_pos[i] / vec_norme(o.sat_pos);
            if (vec_norme(e) < 1e-3) e = o.sat_pos;
            const vec3 cote = vec_vectoriel(h, e);
            for (std::size_t i = 0; i < 3; ++i) x[i] = e[i] / vec_norme(e), y[i] = cote[i] / vec_norme(cote);
            const double soleil = vec_norme(o.soleil_pos);
            t.soleil_x = vec_scalaire(o.soleil_pos, x) / soleil;
            t.soleil_y = vec_scalaire(o.soleil_pos, y) / soleil;
        }
        t.orbite.push_back({vec_scalaire(o.sat_pos, x),
                            vec_scalaire(o.sat_pos, y),
                            {std::remainder(o.sat_lon / rad_par_degre, 360.0), o.sat_lat / rad_par_degre},
                            s.energie.eclipse == vrai});
    }
}

std::string km(double x) { return nombre_fr(x, 0) + " km"; }

} // namespace

tour_rapport dernier_tour(etude e, const bilan& b, const reglages_rapport& r) {
    tour_rapport t;
    const long dernier = static_cast<long>(b.tours.size()) - 1;
    const double duree = duree_orbite(e);
    t.debut = dernier >= 0 ? b.tours.back().debut : e.periode.j_debut;
    e.power.t_bat = 0; // as the budget begins
    calcul c(
        modeles_de(e), {},
        reglages_de(e, {.besoins = besoin::energie | besoin::sol, .dossier_donnees = r.dossier_donnees}));
    for (bool va = c.demarre(); va && !r.arret.stop_requested(); c.avance()) {
        const long tour = orbite_de(c.date(), e.periode.j_debut, duree);
        if (tour > dernier && !b.faute) break;
        if (va = c.pas(); va && tour == dernier)
            note_pas(e.power, (c.date() - t.debut) * secondes_par_jour / 60, t);
    }
    t.alerte = c.alerte();
    t.cause = c.cause();
    if (!r.arret.stop_requested()) note_orbite(c, t.debut, duree, t);
    return t;
}

namespace {

/// The drawing of the orbit, and where things of its plane stand on it.
struct vue_orbite {
    static constexpr point_svg milieu = {190, 132};
    dessin_svg d{720, 264, "L'orbite vue du dessus de son plan, à l'échelle"};
    double rayon = rayon_terre; ///< [km] largest distance
    double echelle = 0, decalage = 0;

    vue_orbite(const record_orbite& o, const tour_rapport& t) {
        for (const auto& p : t.orbite) rayon = std::max(rayon, std::hypot(p.x, p.y));
        echelle = 95 / rayon;
        decalage = o.orb_demi * o.orb_excentricite * echelle; // the ellipse's middle in the middle
    }
    point_svg place(double x, double y) const {
        return {milieu.x + decalage + x * echelle, milieu.y - y * echelle};
    }
};

/// The Earth with its night, and an arrow towards the Sun.
void dessine_terre(vue_orbite& v, const tour_rapport& t) {
    const point_svg centre = v.place(0, 0);
    const double terre = rayon_terre * v.echelle;
    v.d.disque(centre, terre, {.couleur = "#2a7f9e", .remplissage = "#cfe6ee"});
    const double n = std::hypot(t.soleil_x, t.soleil_y);
    if (!(n > 1e-6)) return;
    const double sx = t.soleil_x / n, sy = -t.soleil_y / n;
    std::vector<point_svg> nuit;
    for (int k = 0; k <= 36; ++k) {
        const double a = (90 + 5 * k) * rad_par_degre;
        nuit.push_back({centre.x + terre * (sx * std::cos(a) - sy * std::sin(a)),
                        centre.y + terre * (sy * std::cos(a) + sx * std::sin(a))});
    }
    v.d.contours({&nuit, 1}, {.couleur = "none", .remplissage = "#5b7f8c"});
    // The longer the arrow, the more of the light runs along the plane.
    const double pied = v.rayon * v.echelle + 6, bout = pied + 6 + 20 * n;
    constexpr point_svg o = vue_orbite::milieu;
    v.d.fleche({o.x + sx * pied, o.y + sy * pied}, {o.x + sx * bout, o.y + sy * bout},
               {.couleur = "#b88300", .epaisseur = 2});
    // At the arrow's end where there is room, else beside it.
    const bool au_bout = std::fabs(sx) > 0.6;
    const point_svg nom = au_bout ? point_svg{o.x + sx * (bout + 30), o.y + 4 + sy * (bout + 12)}
                                  : point_svg{o.x + sx * pied - 34, o.y + 4 + sy * (pied + 14)};
    v.d.texte({nom.x, std::clamp(nom.y, 12., 258.)}, "Soleil",
              {.ancre = "middle", .couleur = "#8a6200", .gras = true});
}

void trace_orbite(vue_orbite& v, const tour_rapport& t) {
    std::vector<point_svg> suite;
    for (std::size_t k = 1; k < t.orbite.size(); ++k) {
        const auto &a = t.orbite[k - 1], &b = t.orbite[k];
        if (suite.empty()) suite.push_back(v.place(a.x, a.y));
        suite.push_back(v.place(b.x, b.y));
        if (k + 1 < t.orbite.size() && t.orbite[k + 1].eclipse == b.eclipse) continue;
        v.d.courbe(suite, b.eclipse ? trait_svg{.couleur = "#6a7079", .epaisseur = 3.5, .tirets = "6,3"}
                                    : trait_svg{.couleur = "#b86e00", .epaisseur = 2});
        suite.clear();
    }
    if (t.orbite.empty()) return;
    const auto& p = t.orbite.front();
    v.d.disque(v.place(p.x, p.y), 4.5, {.couleur = "#222222", .remplissage = "#ffffff"});
    const auto &a = t.orbite[20 % t.orbite.size()], &b = t.orbite[22 % t.orbite.size()];
    v.d.fleche(v.place(a.x, a.y), v.place(b.x, b.y), {.couleur = "#222222", .epaisseur = 1.5});
}

void ecrit_chiffres(vue_orbite& v, const etude& e, const tour_rapport& t) {
    const record_orbite& o = e.orbit.orbite;
    const auto sombres =
        std::count_if(t.orbite.begin(), t.orbite.end(), [](const auto& p) { return p.eclipse; });
    const double part = t.orbite.empty() ? 0 : 100. * double(sombres) / double(t.orbite.size());
    const std::string lignes[][2] = {
        {"Périgée", km(altitude_perigee(o))},
        {"Apogée", km(altitude_apogee(o))},
        {"Excentricité", nombre_fr(o.orb_excentricite, 4)},
        {"Période", nombre_fr(duree_orbite(e) / 60, 1) + " min"},
        {"Inclinaison", nombre_fr(o.orb_inclinaison, 2) + "°"},
        {"Nœud ascendant", nombre_fr(o.orb_ascension, 2) + "°"},
        {"Soleil sur le plan (β)", nombre_fr(angle_beta(e, t.debut), 1) + "°"},
        {"Part en éclipse", nombre_fr(part, 1) + " %"},
    };
    double y = 44;
    for (const auto& [nom, valeur] : lignes) {
        v.d.texte({560, y}, nom, {.ancre = "end", .taille = 12, .couleur = "#5c6370"});
        v.d.texte({572, y}, valeur, {.taille = 12, .gras = true});
        y += 25;
    }
}

} // namespace

bloc_figure figure_orbite(const etude& e, const tour_rapport& t) {
    vue_orbite v(e.orbit.orbite, t);
    dessine_terre(v, t);
    trace_orbite(v, t);
    ecrit_chiffres(v, e, t);
    return {
        v.d.svg(), v.d.largeur(), v.d.hauteur(),
        "Vue du dessus de son plan, à l'échelle. Trait plein ambre : au Soleil ; tireté gris : en éclipse ; "
        "rond : début de la dernière orbite calculée ; flèche noire : sens du mouvement."};
}
