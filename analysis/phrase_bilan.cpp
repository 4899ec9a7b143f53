#include "analysis/phrase_bilan.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

#include "analysis/modes.h"
#include "power/power_cellules.h"
#include "shell/formats.h"
#include "shell/utilitaires.h"

std::string nombre_fr(double x, int decimales) {
    std::string t =
        format_image(x, decimales == 0 ? "0" : "0." + std::string(static_cast<std::size_t>(decimales), '0'));
    std::replace(t.begin(), t.end(), '.', ',');
    return t == "-0" ? "0" : t;
}

namespace {

/// Three digits where there are as many, none behind the point from 100 on.
std::string court(double x) { return nombre_fr(x, std::fabs(x) < 9.95 ? 1 : 0); }

std::string rang(int n) { return n == 1 ? "1re" : std::to_string(n) + "e"; }

} // namespace

std::string texte_raison(const raison_bilan& r) {
    const std::string_view c = r.critere;
    if (c == "manque")
        return "il manque " + nombre_fr(r.valeur, 1) + " Wh par orbite dès la " + rang(r.orbite) + " orbite";
    if (c == "derive")
        return "la batterie se vide : sa charge baisse de " + nombre_fr(-100 * r.valeur, 2) + " % par orbite";
    if (c == "dod")
        return "profondeur de décharge " + court(r.valeur) + " % (limite " + court(r.limite) + " %)";
    if (c == "t_bat")
        return "batterie à " + court(r.valeur) + " °C (" + (r.valeur > r.limite ? "maximum " : "minimum ") +
               court(r.limite) + " °C)";
    return "marge " + court(r.valeur) + " % (minimum " + court(r.limite) + " %)";
}

std::string phrase_bilan(const bilan& b, const criteres_valeurs& c) {
    if (b.faute)
        return "Le calcul s'arrête le " + date_vers_texte(jour_vers_date(b.faute->date)) + " : " +
               b.faute->raison + ".";
    if (b.tours.empty()) return "Le pas est plus long que l'orbite : il n'y a pas de verdict.";
    const tour_bilan& t = b.tours.back();
    if (b.tient) {
        const std::string marge =
            std::isnan(t.marge) ? "rien n'est demandé" : "marge " + court(t.marge) + " %";
        return "Le satellite tient : " + marge + ", profondeur de décharge " + court(t.dod) + " % (limite " +
               court(c.dod_max) + " %).";
    }
    std::string texte = "Le satellite ne tient pas : ";
    for (const raison_bilan& r : b.raisons) {
        // What is missing says it all of the margin.
        if (std::string_view(r.critere) == "marge" && std::string_view(b.raisons[0].critere) == "manque")
            continue;
        raison_bilan dite = r;
        if (std::string_view(r.critere) == "manque" && t.e_manque > r.valeur) dite.valeur = t.e_manque;
        if (&r != &b.raisons[0]) texte += " ; ";
        texte += texte_raison(dite);
    }
    return texte + ".";
}

std::vector<critere_juge> juge_criteres(const bilan& b, const criteres_valeurs& c) {
    if (b.tours.empty()) return {};
    const tour_bilan& t = b.tours.back();
    // The verdict has judged already; the two limits of a temperature share a name.
    const auto tenu = [&b](std::string_view nom, double limite) {
        return std::none_of(b.raisons.begin(), b.raisons.end(), [&](const raison_bilan& r) {
            return nom == r.critere && (nom != "t_bat" || r.limite == limite);
        });
    };
    double manque = 0;
    for (const tour_bilan& x : b.tours) manque = std::max(manque, x.e_manque);
    const double derive = b.tours.size() < 2 ? 0 : 100 * (t.soc_fin - b.tours[b.tours.size() - 2].soc_fin);
    return {{"Rien ne manque à la charge utile", " Wh", 2, manque, 0, true, tenu("manque", 0)},
            {"La charge ne baisse pas d'orbite en orbite", " %", 2, derive, -0.05, false, tenu("derive", 0)},
            {"Profondeur de décharge", " %", 1, t.dod, c.dod_max, true, tenu("dod", 0)},
            {"Batterie au plus froid", " °C", 1, t.t_bat_min, c.t_bat_min, false, tenu("t_bat", c.t_bat_min)},
            {"Batterie au plus chaud", " °C", 1, t.t_bat_max, c.t_bat_max, true, tenu("t_bat", c.t_bat_max)},
            {"Marge d'énergie", " %", 1, t.marge, c.marge_min, false, tenu("marge", 0)}};
}

std::string avis_pas(const etude& e) {
    constexpr double points_min = 45; // of an orbit; below, a satellite that lives can be found to fail
    constexpr int ronds[] = {3600, 2700, 1800, 900, 600, 300, 120, 60, 30, 10};
    const double duree = duree_orbite(e);
    if (!(duree / e.periode.pas_sim < points_min)) return {};
    const auto bon =
        std::find_if(std::begin(ronds), std::end(ronds), [&](int pas) { return pas * points_min <= duree; });
    return "Le pas de " + std::to_string(e.periode.pas_sim) + " s ne donne que " +
           nombre_fr(duree / e.periode.pas_sim, 0) + " points par orbite, et le verdict en dépend : prenez " +
           std::to_string(bon == std::end(ronds) ? ronds[std::size(ronds) - 1] : *bon) + " s ou moins.";
}

std::vector<std::string> conseils(const bilan& b, const etude& e) {
    std::vector<std::string> liste;
    if (b.tient || b.tours.empty()) return liste;
    const tour_bilan& t = b.tours.back();
    const criteres_valeurs c = criteres_en_vigueur(e);
    const power_record& p = e.power;
    if (t.e_gen < 1e-6) {
        liste.push_back(
            "Le générateur ne donne rien : vérifiez la tension des cellules en série devant celle du "
            "bus, l'orientation des panneaux et la date.");
        return liste;
    }
    // What the generator would have to bring: the demand with its margin, and today's losses in proportion.
    const double voulu = t.e_demande * (1 + c.marge_min / 100) + t.e_pertes;
    if (voulu > t.e_gen) {
        const double rapport = voulu / t.e_gen;
        const auto chaines = static_cast<int>(std::ceil(rapport * static_cast<double>(p.cel_np) - 1e-9));
        liste.push_back("Environ " + std::to_string(chaines) +
                        " chaînes de cellules en parallèle au lieu de " + nombre_fr(p.cel_np, 0) +
                        " (si elles tiennent sur les panneaux), ou");
        liste.push_back("une demande moyenne d'environ " + court(3600 * t.e_demande / t.duree / rapport) +
                        " W au lieu de " + court(3600 * t.e_demande / t.duree) + " W.");
    }
    for (const raison_bilan& r : b.raisons) {
        if (std::string_view(r.critere) == "dod" && r.limite > 0)
            liste.push_back("Environ " + court(static_cast<double>(p.bat_c) * r.valeur / r.limite) +
                            " Ah de capacité nominale au lieu de " + court(p.bat_c) + " Ah.");
        if (std::string_view(r.critere) == "t_bat")
            liste.push_back(
                r.valeur > r.limite
                    ? "Des revêtements plus froids (absorptivité plus basse, émissivité plus haute) "
                      "ou moins de dissipation interne."
                    : "Des revêtements plus chauds ou plus de dissipation interne.");
    }
    return liste;
}
