#include "analysis/rapport.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "analysis/modes.h"
#include "analysis/phrase_bilan.h"
#include "analysis/rapport_figures.h"
#include "orbit/orb_trajecto.h"
#include "power/montage.h"
#include "project/etude_compare.h"
#include "shell/formats.h"
#include "shell/utilitaires.h"

namespace {

std::string instant(double j) { return date_vers_texte(jour_vers_date(j + 0.5 / secondes_par_jour)); }

/// A number that a table of settings shows, with a decimal comma; other texts stay.
std::string a_la_francaise(std::string t) {
    if (double x = 0; lit_nombre(t, x)) std::replace(t.begin(), t.end(), '.', ',');
    return t;
}

// -- Sections

void entete(const etude& e, const reglages_rapport& r, rapport& f) {
    f.titre = "Rapport : " + r.titre + (e.modele.physique ? " (modèle physique)" : "");
    f.blocs.push_back(bloc_titre{1, f.titre});
    f.blocs.push_back(bloc_texte{"KESTREL " + r.version + ", le " + r.date + ". Modèle " +
                                     (e.modele.physique ? "physique" : "de référence") +
                                     ". Calcul à partir du " + instant(e.periode.j_debut) +
                                     " (temps universel), par pas de " + std::to_string(e.periode.pas_sim) +
                                     " s.",
                                 ton_texte::discret});
}

void verdict(const etude& e, rapport& f) {
    const bilan& b = f.resultat;
    const signe_rapport s = b.faute || b.tours.empty() ? signe_rapport::inconnu
                            : b.tient                  ? signe_rapport::tient
                                                       : signe_rapport::tient_pas;
    f.blocs.push_back(bloc_verdict{s, phrase_bilan(b, criteres_en_vigueur(e))});
    if (const auto c = conseils(b, e); !c.empty()) {
        f.blocs.push_back(bloc_texte{"Pour qu'il tienne, à peu près :"});
        f.blocs.push_back(bloc_liste{c});
    }
}

void avertissements(const etude& e, const tour_rapport& t, rapport& f) {
    bloc_liste l{{}, ton_texte::alerte};
    if (!t.alerte.empty()) l.lignes.push_back(t.alerte);
    if (!t.cause.empty()) l.lignes.push_back(t.cause);
    if (f.resultat.charge_incompatible) l.lignes.emplace_back(message_charge_incompatible);
    if (std::string avis = avis_pas(e); !avis.empty()) l.lignes.push_back(std::move(avis));
    const double perigee = altitude_perigee(e.orbit.orbite);
    if (perigee < 150)
        l.lignes.push_back("Le périgée est à " + nombre_fr(perigee, 0) + " km : aucun satellite n'y reste.");
    if (l.lignes.empty()) return;
    f.blocs.push_back(bloc_titre{2, "Avertissements"});
    f.blocs.push_back(std::move(l));
}

void en_bref(const etude& e, rapport& f) {
    const power_record& p = e.power;
    constexpr const char* corps[] = {"d'un prisme carré", "d'un prisme hexagonal", "d'un cylindre"};
    constexpr const char* batteries[] = {"nickel-cadmium", "nickel-hydrogène", "lithium-ion", "générique"};
    const double cellules = double(p.cel_ns) * double(p.cel_np);
    const attitude_record& a = e.attitude;
    f.blocs.push_back(bloc_titre{2, "Le satellite en bref"});
    bloc_tableau t{.entete = {}, .lignes = {}, .nombre = {false, false}, .legende = {}, .dense = false};
    t.lignes = {
        {"Orbite", nombre_fr(altitude_perigee(e.orbit.orbite), 0) + " à " +
                       nombre_fr(altitude_apogee(e.orbit.orbite), 0) + " km, inclinaison " +
                       nombre_fr(e.orbit.orbite.orb_inclinaison, 2) + "°, période " +
                       nombre_fr(duree_orbite(e) / 60, 1) + " min"},
        {"Générateur",
         (p.opt_panel_ext == vrai ? std::string("panneaux externes")
                                  : std::string("faces ") + corps[std::clamp<int>(p.opt_faces, 0, 2)]) +
             ", cellules " + (p.cel_type == 0 ? "AsGa" : "silicium") + " : " + nombre_fr(p.cel_ns, 0) +
             " en série × " + nombre_fr(p.cel_np, 0) + " en parallèle (" +
             nombre_fr(cellules * double(p.cel_surface) / 1e4, 2) + " m²), " +
             (p.cel_opt_beol != 0 ? "fin" : "début") + " de vie"},
        {"Batterie", std::string(batteries[std::clamp<int>(p.bat_type, 0, 3)]) + ", " +
                         std::to_string(p.bat_ns) + " en série × " + std::to_string(p.bat_np) +
                         " en parallèle, " + nombre_fr(p.bat_c, 1) + " Ah"},
        {"Demande",
         nombre_fr(p.p_demand[0], 1) + " W de jour, " + nombre_fr(p.p_demand[1], 1) + " W en éclipse" +
             (e.modes.empty() ? ""
                              : ", et " + std::to_string(e.modes.size()) +
                                    (e.modes.size() > 1 ? " modes" : " mode") + " de consommation")},
        {"Masse", nombre_fr(a.Mt, 1) + " kg, inerties " + nombre_fr(a.I(0, 0), 2) + ", " +
                      nombre_fr(a.I(1, 1), 2) + ", " + nombre_fr(a.I(2, 2), 2) + " kg m²"},
    };
    f.blocs.push_back(std::move(t));
}

void criteres(const etude& e, rapport& f) {
    if (f.resultat.tours.empty()) return;
    bloc_tableau g{.entete = {"", "Critère", "Valeur", "Limite"},
                   .lignes = {},
                   .nombre = {false, false, true, true},
                   .legende = {},
                   .dense = false};
    for (const critere_juge& c : juge_criteres(f.resultat, criteres_en_vigueur(e))) {
        g.lignes.push_back(
            {c.tenu ? "✓ tenu" : "✗ non tenu", c.texte,
             std::isnan(c.valeur) ? "—" : nombre_fr(c.valeur, c.decimales) + c.unite,
             (c.au_plus ? "au plus " : "au moins ") + nombre_fr(c.limite, c.decimales) + c.unite});
        g.marques.push_back(c.tenu);
    }
    f.blocs.push_back(bloc_titre{2, "Critères"});
    f.blocs.push_back(std::move(g));
}

/// The columns of the budget with those names.
bloc_tableau orbites(const bilan& b, const char* legende,
                     std::initializer_list<std::pair<const char*, const char*>> colonnes) {
    bloc_tableau t{.entete = {}, .lignes = {}, .nombre = {}, .legende = legende, .dense = true};
    t.lignes.resize(b.tours.size());
    for (const auto& [nom, titre] : colonnes) {
        const colonne_bilan& c = *cherche_colonne_bilan(nom);
        const bool date = c.valeur == &tour_bilan::debut;
        // The legend tells the unit of the energies.
        const bool unite = *c.unite && !date && std::string_view(c.unite) != "Wh";
        t.entete.push_back(titre + (unite ? std::string(" (") + c.unite + ")" : ""));
        t.nombre.push_back(true);
        for (std::size_t k = 0; k < b.tours.size(); ++k) {
            const double x = b.tours[k].*c.valeur;
            t.lignes[k].push_back(date ? instant(x) : std::isfinite(x) ? nombre_fr(x, c.decimales) : "—");
        }
    }
    return t;
}

void tableau_des_orbites(rapport& f) {
    const bilan& b = f.resultat;
    if (b.tours.empty()) return;
    f.blocs.push_back(bloc_titre{2, "Orbite par orbite"});
    f.blocs.push_back(orbites(b, "Énergies, en Wh",
                              {{"orbite", "Orbite"},
                               {"debut", "Début"},
                               {"eclipse", "Éclipse"},
                               {"e_gen", "Générateur"},
                               {"e_demande", "Demande"},
                               {"e_utile", "Fournie"},
                               {"e_manque", "Manque"},
                               {"e_excedent", "Excédent"},
                               {"e_pertes", "Pertes"},
                               {"e_charge", "Recharge"},
                               {"e_decharge", "Décharge"}}));
    f.blocs.push_back(orbites(b, "Batterie et températures",
                              {{"orbite", "Orbite"},
                               {"soc_min", "Charge la plus basse"},
                               {"soc_fin", "Charge à la fin"},
                               {"dod", "Décharge"},
                               {"t_bat_min", "Batterie min"},
                               {"t_bat_max", "Batterie max"},
                               {"t_pan_min", "Panneaux min"},
                               {"t_pan_max", "Panneaux max"},
                               {"marge", "Marge"}}));
}

std::string quand(const quand_mode& q) {
    switch (q.genre) {
    case genre_quand::toujours: return "toujours";
    case genre_quand::jour: return "au Soleil";
    case genre_quand::nuit: return "en éclipse";
    case genre_quand::latitude:
        return "entre " + nombre_fr(q.latitude_min, 1) + "° et " + nombre_fr(q.latitude_max, 1) +
               "° de latitude";
    case genre_quand::station: return "en vue de " + q.station;
    case genre_quand::periode:
        return nombre_fr(q.duree, 0) + " s toutes les " + nombre_fr(q.periode, 0) + " s, depuis " +
               nombre_fr(q.debut, 0) + " s";
    case genre_quand::une_orbite_sur: return "une orbite sur " + std::to_string(q.une_orbite_sur);
    }
    return {};
}

void listes(const etude& e, rapport& f) {
    if (!e.modes.empty()) {
        bloc_tableau t{.entete = {"Mode", "Puissance (W)", "Quand"},
                       .lignes = {},
                       .nombre = {false, true, false},
                       .legende = "Modes de consommation",
                       .dense = false};
        for (const mode_conso& m : e.modes)
            t.lignes.push_back({m.nom, nombre_fr(m.puissance, 1), quand(m.quand)});
        f.blocs.push_back(std::move(t));
    }
    if (!e.stations.empty()) {
        bloc_tableau t{.entete = {"Station", "Latitude (°)", "Longitude (°)", "Altitude (km)", "Masque (°)"},
                       .lignes = {},
                       .nombre = {false, true, true, true, true},
                       .legende = "Stations",
                       .dense = false};
        for (const station& s : e.stations)
            t.lignes.push_back({s.nom, nombre_fr(s.latitude, 3), nombre_fr(s.longitude, 3),
                                nombre_fr(s.altitude, 3), nombre_fr(s.masque, 1)});
        f.blocs.push_back(std::move(t));
    }
}

/// The settings windows word these in their own way.
std::string unite_lisible(const std::string& u) {
    return u == "deg" ? "°" : u == "kms" ? "km" : u == "Rév/jour" ? "tr/j" : u;
}

void reglages(const etude& e, rapport& f) {
    f.blocs.push_back(bloc_titre{2, "Réglages qui diffèrent des valeurs par défaut"});
    bloc_tableau t{.entete = {"Sujet", "Réglage", "Valeur", "Par défaut", "Unité"},
                   .lignes = {},
                   .nombre = {false, false, true, true, false},
                   .legende = {},
                   .dense = true};
    std::string sujet;
    for (const difference& d : differences(etude_par_defaut(), e)) {
        if (d.apres.empty() && d.avant.empty()) continue; // told by its own table
        t.lignes.push_back({d.sujet == sujet ? "" : d.sujet, d.titre, a_la_francaise(d.apres),
                            a_la_francaise(d.avant), unite_lisible(d.unite)});
        sujet = d.sujet;
    }
    if (t.lignes.empty())
        f.blocs.push_back(bloc_texte{"Aucun."});
    else
        f.blocs.push_back(std::move(t));
    listes(e, f);
}

} // namespace

rapport fait_rapport(const etude& e, const reglages_rapport& r) {
    rapport f;
    f.resultat =
        calcule_bilan(e, {.orbites = r.orbites, .dossier_donnees = r.dossier_donnees, .arret = r.arret});
    const tour_rapport t = dernier_tour(e, f.resultat, r);
    const criteres_valeurs c = criteres_en_vigueur(e);
    entete(e, r, f);
    verdict(e, f);
    avertissements(e, t, f);
    en_bref(e, f);
    criteres(e, f);
    if (!t.orbite.empty()) {
        f.blocs.push_back(bloc_titre{2, "Orbite"});
        f.blocs.push_back(figure_orbite(e, t));
        f.blocs.push_back(figure_carte(e, t, r.dossier_donnees));
    }
    if (!t.minutes.empty()) {
        f.blocs.push_back(bloc_titre{2, "Dernière orbite calculée"});
        f.blocs.push_back(figure_puissances(t));
        f.blocs.push_back(figure_charge(t, c));
        f.blocs.push_back(figure_temperatures(t, c));
    }
    tableau_des_orbites(f);
    f.blocs.push_back(bloc_titre{2, "Ce que le modèle ne dit pas"});
    f.blocs.push_back(bloc_liste{limites_du_modele(e, f.resultat)});
    reglages(e, f);
    if (!e.notes.empty()) {
        f.blocs.push_back(bloc_titre{2, "Notes"});
        f.blocs.push_back(bloc_texte{e.notes});
    }
    return f;
}
