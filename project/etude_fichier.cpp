#include "project/etude_fichier.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "orbit/orb_trajecto.h"
#include "project/etude_champs.h"
#include "project/etude_listes.h"
#include "shell/ecriture.h"
#include "shell/formats.h"
#include "shell/lecture.h"
#include "shell/utilitaires.h"

namespace {

constexpr rubrique tables[] = {rubrique::orbite, rubrique::pointage, rubrique::energie, rubrique::attitude};

// -- Writing

/// A date for the reader's eye; empty outside of the calendar.
std::string date_iso(double j) {
    if (!(j > -17532 && j < 54787)) return {}; // 1902 to 2099
    const date_record d = jour_vers_date(j + .5 / secondes_par_jour);
    char tampon[64];
    std::snprintf(tampon, sizeof tampon, "%04d-%02d-%02dT%02d:%02d:%02d", d.an, d.mois, d.jour, d.heure,
                  d.minute, d.seconde);
    return tampon;
}

json json_element(const etude& e, const champ_etude& c, int i) {
    const double x = valeur(e, {&c, 0, i});
    if (c.genre == genre_nombre::drapeau) return x != 0;
    return nombre_json(x);
}

json json_champ(const etude& e, const champ_etude& c) {
    if (c.dims[0] == 0) return json_element(e, c, 0);
    json liste = json::array();
    for (int i = 0; i < c.dims[0]; ++i) {
        if (c.dims[1] == 0) {
            liste.push_back(json_element(e, c, i));
            continue;
        }
        json ligne = json::array();
        for (int k = 0; k < c.dims[1]; ++k) ligne.push_back(json_element(e, c, i * c.dims[1] + k));
        liste.push_back(std::move(ligne));
    }
    return liste;
}

/// What follows from other fields is written where it differs from what they give.
bool superflu(const etude& e, const etude& calculee, const champ_etude& c) {
    if (!c.annexe) return false;
    for (int i = 0; i < c.nombre(); ++i)
        if (!(valeur(e, {&c, 0, i}) == valeur(calculee, {&c, 0, i}))) return false;
    return true;
}

/// The orbit's name in its file: bytes of code page Latin-1, without the blanks behind it.
std::string nom_utf8(const record_orbite& o) {
    std::string t;
    for (const char c : o.orb_nom) {
        const auto octet = static_cast<unsigned char>(c);
        if (octet < 0x80)
            t += c;
        else
            t += {static_cast<char>(0xC0 | octet >> 6), static_cast<char>(0x80 | (octet & 0x3F))};
    }
    while (t.ends_with(' ')) t.pop_back();
    return t;
}

/// The unknown keys of a section.
std::string inconnus_de(const json& tous, const char* section) {
    const auto i = tous.find(section);
    return i == tous.end() ? std::string() : ecrit_json_court(*i);
}

json json_etude(const etude& e) {
    json inconnus = json::object();
    if (std::string raison; !e.inconnus.empty()) lit_json(e.inconnus, inconnus, raison);
    etude calculee = e;
    recalcule(calculee);
    calculee.orbit.orbite.reserve = {};

    json j = {{"kestrel", format_etude}};
    for (const rubrique r : tables) {
        json section = json::object();
        if (r == rubrique::orbite) {
            section["nom"] = e.nom_orbite;
            section["orb_nom"] = nom_utf8(e.orbit.orbite);
        }
        for (const champ_etude& c : etude_champs())
            if (c.dans == r && !superflu(e, calculee, c)) section[c.nom] = json_champ(e, c);
        remet_inconnus(section, inconnus_de(inconnus, nom_rubrique(r)));
        j[nom_rubrique(r)] = std::move(section);
    }
    const simulation_period& p = e.periode;
    json periode = {{"debut", nombre_json(p.j_debut)},
                    {"fin", nombre_json(p.j_fin)},
                    {"debut_date", date_iso(p.j_debut)},
                    {"fin_date", date_iso(p.j_fin)},
                    {"pas", p.pas_sim}};
    remet_inconnus(periode, inconnus_de(inconnus, "periode"));
    j["periode"] = std::move(periode);
    json modele = json_modele(e.modele);
    if (const std::string reste = inconnus_de(inconnus, "modele"); !reste.empty()) {
        if (modele.is_string()) modele = {{"nom", modele}};
        remet_inconnus(modele, reste);
    }
    j["modele"] = std::move(modele);
    j["modes"] = json_modes(e.modes);
    j["stations"] = json_stations(e.stations);
    json criteres = json_criteres(e.criteres);
    remet_inconnus(criteres, inconnus_de(inconnus, "criteres"));
    j["criteres"] = std::move(criteres);
    json courbes = json::array();
    if (std::string raison; !lit_json(e.courbes, courbes, raison)) courbes = json::array();
    j["courbes"] = std::move(courbes);
    j["notes"] = e.notes;
    remet_inconnus(j, inconnus_de(inconnus, ""));
    return j;
}

// -- Reading

class lecteur_etude {
public:
    explicit lecteur_etude(lecture comment) : comment_(comment) {}

    etude lit(const json& j) {
        lecteur_objet l(j, "");
        verifie_format(l);
        for (const rubrique r : tables)
            if (const json* section = l.prend(nom_rubrique(r))) lit_section(*section, r, false);
        recalcule(e_);
        // What the file says of the derived fields counts, and so do angles that a pointing has replaced.
        for (const rubrique r : {rubrique::orbite, rubrique::pointage, rubrique::attitude})
            if (const json* section = l.prend(nom_rubrique(r))) lit_section(*section, r, true);
        pointage_record& p = e_.orbit.pointage;
        p.psi = p.lacet;
        p.theta = p.tangage;
        p.phi = p.roulis;
        verifie_bornes();
        lit_suite(l);
        note("", l.reste());
        if (!inconnus_.empty()) e_.inconnus = ecrit_json_court(inconnus_);
        return std::move(e_);
    }

private:
    void verifie_format(lecteur_objet& l) {
        const json* format = l.prend("kestrel");
        if (!format) return;
        const double n = nombre_de(*format, "kestrel");
        if (n > format_etude)
            throw refus_etude{"kestrel", format_court(n) + " n'est pas permis (au plus " +
                                             std::to_string(format_etude) +
                                             " : le fichier vient d'une version plus récente)"};
        if (n != format_etude)
            throw refus_etude{"kestrel",
                              format_court(n) + " n'est pas permis (" + std::to_string(format_etude) + ")"};
    }

    void lit_suite(lecteur_objet& l) {
        e_.periode = periode_par_defaut(e_.orbit.orbite);
        if (const json* p = l.prend("periode")) lit_section(*p, rubrique::periode, false);
        std::string reste;
        if (const json* m = l.prend("modele")) e_.modele = lit_modele(*m, reste);
        note("modele", reste);
        if (const json* m = l.prend("modes")) e_.modes = lit_modes(*m, "modes");
        if (const json* s = l.prend("stations")) e_.stations = lit_stations(*s);
        reste.clear();
        if (const json* c = l.prend("criteres")) e_.criteres = lit_criteres(*c, reste);
        note("criteres", reste);
        if (const json* c = l.prend("courbes")) e_.courbes = ecrit_json_court(*c);
        l.texte("notes", e_.notes);
    }

    void lit_section(const json& j, rubrique r, bool derives) {
        lecteur_objet l(j, nom_rubrique(r));
        if (r == rubrique::orbite) lit_noms(l);
        if (r == rubrique::periode) {
            l.prend("debut_date");
            l.prend("fin_date");
        }
        for (const champ_etude& c : etude_champs()) {
            if (c.dans != r) continue;
            const json* x = l.prend(c.nom);
            if (x && (derives ? c.annexe || r == rubrique::pointage : !c.annexe))
                lit_champ(*x, c, l.chemin(c.nom));
        }
        if (!derives) note(nom_rubrique(r), l.reste());
    }

    void lit_noms(lecteur_objet& l) {
        l.texte("nom", e_.nom_orbite);
        std::string nom;
        l.texte("orb_nom", nom);
        record_orbite& o = e_.orbit.orbite;
        o.orb_nom.fill(' ');
        std::size_t place = 0;
        for (std::size_t i = 0; i < nom.size(); ++i, ++place) {
            auto c = static_cast<unsigned char>(nom[i]);
            if (c >= 0xC4 || place == o.orb_nom.size())
                throw refus_etude{l.chemin("orb_nom"), "au plus 24 caractères de Latin-1 sont permis"};
            if (c >= 0x80) c = static_cast<unsigned char>(c << 6 | (nom[++i] & 0x3F));
            o.orb_nom[place] = static_cast<char>(c);
        }
    }

    void lit_champ(const json& j, const champ_etude& c, const std::string& chemin) {
        if (c.dims[0] == 0) return lit_element(j, c, 0, chemin);
        verifie_longueur(j, c.dims[0], c.dims[1] ? "listes" : "nombres", chemin);
        for (int i = 0; i < c.dims[0]; ++i) {
            const std::string ici = chemin + "[" + std::to_string(i) + "]";
            if (c.dims[1] == 0) {
                lit_element(j[i], c, i, ici);
                continue;
            }
            verifie_longueur(j[i], c.dims[1], "nombres", ici);
            for (int k = 0; k < c.dims[1]; ++k)
                lit_element(j[i][k], c, i * c.dims[1] + k, ici + "[" + std::to_string(k) + "]");
        }
    }

    static void verifie_longueur(const json& j, int n, const char* quoi, const std::string& chemin) {
        if (!j.is_array() || j.size() != static_cast<std::size_t>(n))
            throw refus_etude{chemin, "une liste de " + std::to_string(n) + " " + quoi + " est attendue"};
    }

    void lit_element(const json& j, const champ_etude& c, int i, const std::string& chemin) {
        if (j.is_null() && comment_ == lecture::toute_valeur) return;
        if (c.genre == genre_nombre::drapeau) {
            if (!j.is_boolean()) throw refus_etude{chemin, "true ou false est attendu"};
            return pose(e_, {&c, 0, i}, j.get<bool>() ? vrai : faux);
        }
        const double x = nombre_de(j, chemin);
        const bool entier = c.genre == genre_nombre::entier;
        if (entier && x != std::floor(x)) throw refus_etude{chemin, "un nombre entier est attendu"};
        // Beyond the type there is nothing to store, whatever the limits.
        if (entier && comment_ == lecture::toute_valeur && (x < c.entier_min || x > c.entier_max)) return;
        const limites& b = c.bornes;
        if (std::string raison; entier && comment_ == lecture::stricte && (x < b.min || x > b.max) &&
                                !permis(e_, {&c, 0, i}, x, raison))
            throw refus_etude{chemin, raison};
        pose(e_, {&c, 0, i}, x);
        if (!std::isfinite(valeur(e_, {&c, 0, i}))) throw refus_etude{chemin, "nombre trop grand"};
    }

    /// Once all is read, since some limits follow other fields. Defaults are allowed, whatever the limits.
    void verifie_bornes() const {
        if (comment_ == lecture::toute_valeur) return;
        const etude& defauts = etude_par_defaut();
        for (const champ_etude& c : etude_champs()) {
            if (!c.de_table() || c.dans == rubrique::periode) continue;
            for (int i = 0; i < c.nombre(); ++i) {
                const element_etude x{&c, 0, i};
                std::string raison;
                if (!permis(e_, x, valeur(e_, x), raison) && valeur(e_, x) != valeur(defauts, x))
                    throw refus_etude{chemin_element(x), raison};
            }
        }
    }

    void note(const char* section, const std::string& reste) {
        json j;
        if (std::string raison; !reste.empty() && lit_json(reste, j, raison)) inconnus_[section] = j;
    }

    lecture comment_;
    etude e_ = etude_par_defaut();
    json inconnus_ = json::object();
};

} // namespace

std::string texte_etude(const etude& e) { return ecrit_json(json_etude(e)); }

bool lit_texte_etude(std::string_view texte, etude& e, std::string& raison, lecture comment) {
    json j;
    if (!lit_json(texte, j, raison)) return false;
    try {
        e = lecteur_etude(comment).lit(j);
        return true;
    } catch (const refus_etude& refus) {
        raison = refus.texte();
        return false;
    }
}

bool charge_etude(const std::string& chemin, etude& e, std::string& raison) {
    std::string texte;
    if (lit_fichier(chemin, json_taille_max, texte, raison) && lit_texte_etude(texte, e, raison)) return true;
    raison = chemin + ": " + raison;
    return false;
}

bool sauve_etude(const std::string& chemin, const etude& e, std::string& raison) {
    const std::string texte = texte_etude(e);
    etude relue;
    if (lit_texte_etude(texte, relue, raison) && remplace_fichier(chemin, texte, raison)) return true;
    raison = chemin + ": " + raison;
    return false;
}

bool charge_modes(const std::string& chemin, std::vector<mode_conso>& modes, std::string& raison) {
    std::string texte;
    json j;
    try {
        if (lit_fichier(chemin, json_taille_max, texte, raison) && lit_json(texte, j, raison)) {
            modes = lit_modes(j, "modes");
            return true;
        }
    } catch (const refus_etude& refus) {
        raison = refus.texte();
    }
    raison = chemin + ": " + raison;
    return false;
}
