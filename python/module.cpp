/// The module kestrel: études, and the models' runs as numpy columns equal to the batch program's output.
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <dlfcn.h>

#include <cmath>
#include <filesystem>

#include "analysis/phrase_bilan.h"
#include "analysis/variables.h"
#include "champs.h"
#include "project/att_fichier.h"
#include "project/etude_fichier.h"
#include "project/orb_fichier.h"
#include "project/pwr_fichier.h"
#include "project/tle_fichier.h"
#include "resultats.h"
#include "shell/utilitaires.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

using noms = std::optional<std::vector<std::string>>;
using date = std::optional<std::variant<double, std::string>>;

/// The data files beside the module, or in the share folder of the build tree or of the installation.
std::string dossier_donnees() {
    namespace fs = std::filesystem;
    Dl_info ici{};
    if (!dladdr(reinterpret_cast<void*>(&dossier_donnees), &ici) || !ici.dli_fname) return ".";
    std::error_code erreur;
    fs::path dossier = fs::canonical(ici.dli_fname, erreur).parent_path();
    for (int i = 0; i < 5; ++i, dossier = dossier.parent_path())
        if (const fs::path d = dossier / "share" / "kestrel" / "data"; fs::exists(d / "densite.txt", erreur))
            return d.string();
    return ".";
}

/// Set once when the module is loaded.
PyObject*& classe_faute() {
    static PyObject* classe = nullptr;
    return classe;
}

py::array colonne(const std::vector<double>& v, bool entier) {
    if (!entier) return py::array_t<double>(static_cast<py::ssize_t>(v.size()), v.data());
    py::array_t<int64_t> a(static_cast<py::ssize_t>(v.size()));
    for (std::size_t i = 0; i < v.size(); ++i) a.mutable_data()[i] = static_cast<int64_t>(v[i]);
    return a;
}

py::dict en_dict(const resultats& r) {
    py::dict d;
    for (std::size_t i = 0; i < r.noms.size(); ++i)
        d[r.noms[i].c_str()] = colonne(r.colonnes[i], r.entiers[i]);
    return d;
}

void avertit(const std::string& lignes) {
    if (!lignes.empty() && PyErr_WarnEx(PyExc_RuntimeWarning, lignes.c_str(), 1) != 0)
        throw py::error_already_set();
}

[[noreturn]] void leve_faute_python(const faute_calcul& f, const py::object& lignes) {
    const auto classe = py::reinterpret_borrow<py::object>(classe_faute());
    const std::string texte = f.raison + " (" + date_vers_texte(jour_vers_date(f.date)) + ")";
    const py::object e = classe(texte);
    e.attr("date") = f.date;
    e.attr("raison") = f.raison;
    e.attr("lignes") = lignes;
    PyErr_SetObject(classe.ptr(), e.ptr());
    throw py::error_already_set();
}

/// The columns of a run that was made without the interpreter's lock; a fault raises Faute with the rows
/// before it.
template <class Travail>
py::dict calcule(Travail travail) {
    resultats r;
    {
        const py::gil_scoped_release libre;
        r = travail();
    }
    avertit(r.avertissements);
    const py::dict d = en_dict(r);
    if (r.faute) leve_faute_python(*r.faute, d);
    return d;
}

void pose_date(const date& d, double& j, const char* nom) {
    if (!d) return;
    if (const double* x = std::get_if<double>(&*d))
        j = *x;
    else if (!texte_vers_jour(std::get<std::string>(*d), j))
        throw py::value_error(std::string(nom) +
                              " : un nombre de jours ou \"AAAA-MM-JJ hh:mm:ss\" est attendu");
    if (!(j >= date_vers_jour({.an = 1901}) && j < date_vers_jour({.an = 2100})))
        throw py::value_error(std::string(nom) + " : de 1901 à 2099");
}

/// A copy of the étude with the period of a call.
etude sur_periode(const etude& e, const date& debut, const date& fin, std::optional<int> pas) {
    etude c = e;
    pose_date(debut, c.periode.j_debut, "debut");
    pose_date(fin, c.periode.j_fin, "fin");
    if (pas && *pas < 1) throw py::value_error("pas : au moins 1 s");
    if (pas) c.periode.pas_sim = *pas;
    if (!avance_toujours(c.periode)) throw py::value_error("periode : aucun pas n'y avance");
    return c;
}

py::dict simule(const etude& e, jeu (*quoi)(const etude&), const date& debut, const date& fin,
                std::optional<int> pas, const noms& colonnes) {
    const etude c = sur_periode(e, debut, fin, pas);
    return calcule([&] {
        return deroule_jeu(c, quoi(c), colonnes.value_or(std::vector<std::string>{}), 1, dossier_donnees());
    });
}

py::dict simule_attitude(const etude& e, const date& debut, const date& fin, std::optional<int> pas,
                         const noms& colonnes, int ecriture) {
    if (ecriture < 1) throw py::value_error("ecriture : au moins 1");
    const etude c = sur_periode(e, debut, fin, pas);
    const std::vector<std::string> demande = colonnes.value_or(std::vector<std::string>{});
    return calcule([&] {
        return c.modele.physique ? deroule_jeu(c, jeu_attitude(c), demande, ecriture, dossier_donnees())
                                 : deroule_attitude_reference(c, demande, ecriture, dossier_donnees());
    });
}

bilan calcule_bilan_libre(const etude& e, std::optional<int> orbites) {
    if (orbites && *orbites < 1) throw py::value_error("orbites : au moins 1");
    const py::gil_scoped_release libre;
    return calcule_bilan(e, {.orbites = orbites.value_or(0), .dossier_donnees = dossier_donnees()});
}

py::dict bilan_python(const etude& e, std::optional<int> orbites) {
    const bilan b = calcule_bilan_libre(e, orbites);
    const py::dict d = en_dict(resultats_bilan(b.tours));
    if (b.charge_incompatible) avertit(message_charge_incompatible);
    if (b.faute) leve_faute_python(*b.faute, d);
    return d;
}

py::dict verdict_python(const etude& e, std::optional<int> orbites) {
    const bilan b = calcule_bilan_libre(e, orbites);
    if (b.faute) leve_faute_python(*b.faute, en_dict(resultats_bilan(b.tours)));
    py::list raisons;
    for (const raison_bilan& r : b.raisons)
        raisons.append(py::dict("critere"_a = r.critere, "valeur"_a = r.valeur, "limite"_a = r.limite,
                                "orbite"_a = r.orbite));
    py::dict d("tient"_a = b.tient, "raisons"_a = raisons,
               "phrase"_a = phrase_bilan(b, criteres_en_vigueur(e)));
    if (!b.tours.empty())
        for (const colonne_bilan& c : colonnes_bilan()) d[c.nom] = b.tours.back().*c.valeur;
    return d;
}

py::dict annee_python(const etude& e, int dates) {
    if (dates < 1) throw py::value_error("dates : au moins 1");
    std::vector<date_bilan> annee;
    {
        const py::gil_scoped_release libre;
        annee = calcule_annee(e, dates, {.dossier_donnees = dossier_donnees()});
    }
    std::vector<double> jours, beta, tient;
    std::vector<tour_bilan> tours;
    for (const date_bilan& d : annee) {
        if (d.resultat.faute) leve_faute_python(*d.resultat.faute, en_dict(resultats_bilan(tours)));
        jours.push_back(d.date);
        beta.push_back(d.beta);
        tient.push_back(d.resultat.tient ? -1 : 0);
        tours.push_back(d.resultat.tours.back());
    }
    py::dict r("date"_a = colonne(jours, false), "beta"_a = colonne(beta, false));
    r.attr("update")(en_dict(resultats_bilan(tours)));
    r["tient"] = colonne(tient, true);
    return r;
}

/// Stations as the batch program writes them: "NAME,LAT,LON[,ALT_KM[,MASK_DEG]]".
std::vector<station> lit_stations_de(const std::vector<std::string>& textes) {
    std::vector<station> stations;
    std::string raison;
    for (const std::string& t : textes)
        if (!lit_station(t, stations.emplace_back(), raison)) throw py::value_error("station : " + raison);
    return stations;
}

py::dict passages_python(const etude& e, const noms& stations_demandees, const date& debut, const date& fin) {
    const etude c = sur_periode(e, debut, fin, {});
    std::vector<station> stations = stations_demandees ? lit_stations_de(*stations_demandees) : c.stations;
    std::string raison;
    if (stations.empty() && !charge_stations(dossier_donnees() + "/stations.txt", stations, raison))
        throw py::value_error(raison);
    resultat_passages r;
    {
        const py::gil_scoped_release libre;
        r = cherche_passages(trajectoire_du_modele(c.orbit.orbite, c.modele), stations, c.periode.j_debut,
                             c.periode.j_fin);
    }
    py::list qui;
    for (const passage& p : r.passages) qui.append(stations[p.station].nom);
    py::dict d("station"_a = qui);
    for (const colonne_passage& col : colonnes_passage()) {
        std::vector<double> v;
        for (const passage& p : r.passages) v.push_back(col.valeur(p));
        d[col.nom] = colonne(v, false);
    }
    if (r.faute) leve_faute_python({*r.faute, "faute numérique"}, d);
    return d;
}

py::dict balayage_python(const etude& e, const std::vector<std::string>& varie, const noms& mesures,
                         std::optional<long> tirages, uint64_t graine, int coeurs,
                         std::optional<int> orbites) {
    plan_balayage plan;
    std::string raison;
    for (const std::string& v : varie)
        if (!lit_variation(v, e, plan.variations.emplace_back(), raison)) throw py::value_error(raison);
    const std::vector<std::string> demandees = mesures.value_or(
        std::vector<std::string>(std::begin(mesures_par_defaut), std::end(mesures_par_defaut)));
    for (const std::string& m : demandees)
        if (!lit_mesure(m, plan.mesures.emplace_back(), raison)) throw py::value_error(raison);
    if (orbites && *orbites < 1) throw py::value_error("orbites : au moins 1");
    plan.tirages = tirages.value_or(1);
    plan.graine = graine;
    plan.bilan = {.orbites = orbites.value_or(0), .dossier_donnees = dossier_donnees()};
    if (plan.tirages < 1 || nombre_variantes(plan) < 0)
        throw py::value_error("tirages : au moins 1, et au plus 1e12 variantes");

    resultats r;
    r.noms = colonnes_balayage(plan);
    r.colonnes.resize(r.noms.size());
    r.entiers.assign(r.noms.size(), false);
    r.entiers.front() = r.entiers.back() = true;
    {
        const py::gil_scoped_release libre;
        const balayage b(e, std::move(plan));
        deroule_balayage(b, 0, coeurs, [&](ligne_balayage&& l) {
            std::size_t c = 0;
            r.colonnes[c++].push_back(static_cast<double>(l.variante));
            for (const double x : l.valeurs) r.colonnes[c++].push_back(x);
            for (const double x : l.mesures) r.colonnes[c++].push_back(x);
            r.colonnes[c].push_back(l.faute);
            return true;
        });
    }
    return en_dict(r);
}

/// What a reader or a writer of files has to say.
void exige(bool reussi, const std::string& chemin, const std::string& raison) {
    if (reussi) return;
    PyErr_SetString(PyExc_OSError, (raison.starts_with(chemin) ? raison : chemin + " : " + raison).c_str());
    throw py::error_already_set();
}

etude ouvre(const std::optional<std::string>& chemin) {
    etude e;
    etude_init(e);
    if (!chemin) return e;
    std::string raison;
    if (!charge_etude(*chemin, e, raison)) throw py::value_error(raison);
    return e;
}

void lit_pwr(etude& e, const std::string& chemin) {
    power_record p = e.power;
    simulation_period periode = e.periode;
    erreur_fichier erreur;
    if (!charge_energie(chemin, p, periode, erreur)) exige(false, chemin, erreur.texte());
    e.power = p;
    e.periode = periode;
}

void lit_orb(etude& e, const std::string& chemin) {
    record_orbite o;
    std::string raison;
    exige(charge_orbite(chemin, o, raison), chemin, raison);
    e.orbit.orbite = o;
    recalcule(e);
    e.periode = periode_par_defaut(o);
}

void lit_att(etude& e, const std::string& chemin) {
    attitude_record a;
    std::string raison;
    exige(charge_attitude(chemin, a, raison), chemin, raison);
    e.attitude = a;
}

void lit_tle(etude& e, const std::string& chemin) {
    std::vector<elements_tle> lus;
    std::string raison;
    exige(charge_tle(chemin, lus, raison), chemin, raison);
    e.orbit.orbite = lus.at(0).orbite;
    recalcule(e);
    e.periode = periode_par_defaut(e.orbit.orbite);
}

py::dict variables_python() {
    py::dict d;
    for (const variable& v : catalogue())
        d[v.nom] =
            py::dict("titre"_a = v.titre, "unite"_a = v.unite, "elements"_a = v.elements, "sens"_a = v.sens);
    return d;
}

using classe_etude = py::class_<etude>;

/// The settings: sections, single numbers by name, notes, model, stations.
void declare_reglages(classe_etude& c) {
    c.def(py::init(&ouvre), "chemin"_a = py::none(),
          "Une étude avec les valeurs par défaut, ou celle d'un fichier .kestrel.");
    for (const char* nom : noms_sections())
        c.def_property_readonly(nom, [nom](const py::object& soi) { return section(soi, nom); });
    c.def("__getitem__", &lit_champ, "nom"_a, "Un nombre par son nom : e[\"p_demand[0]\"].");
    c.def("__setitem__", &pose_champ, "nom"_a, "valeur"_a,
          "ValueError hors des limites, KeyError pour un nom inconnu.");
    c.def(
        "copie", [](const etude& e) { return e; }, "Une copie indépendante.");
    c.def("__copy__", [](const etude& e) { return e; });
    c.def(
        "__deepcopy__", [](const etude& e, const py::dict&) { return e; }, "memo"_a);
    c.def_readwrite("notes", &etude::notes, "Texte libre.");
    c.def_property(
        "physique", [](const etude& e) { return e.modele.physique; },
        [](etude& e, bool x) { e.modele.physique = x; },
        "Le modèle physique au lieu du modèle de référence.");
    c.def_property(
        "stations",
        [](const etude& e) {
            std::vector<std::string> t;
            for (const station& s : e.stations) t.push_back(station_vers_texte(s));
            return t;
        },
        [](etude& e, const std::vector<std::string>& t) { e.stations = lit_stations_de(t); },
        "Stations, \"NOM,LATITUDE,LONGITUDE[,ALTITUDE_KM[,MASQUE]]\".");
    c.def("__repr__", [](const etude& e) {
        return "<kestrel.Etude : " + date_vers_texte(jour_vers_date(e.periode.j_debut)) + ", pas " +
               std::to_string(e.periode.pas_sim) + " s>";
    });
}

void declare_fichiers(classe_etude& c) {
    c.def("lit_pwr", &lit_pwr, "chemin"_a, "Projet énergie .pwr, avec sa période.");
    c.def("lit_att", &lit_att, "chemin"_a, "Projet attitude .att.");
    c.def("lit_orb", &lit_orb, "chemin"_a, "Orbite .orb ; la période devient un tour depuis l'époque.");
    c.def("lit_tle", &lit_tle, "chemin"_a,
          "Éléments à deux lignes ; la période devient un tour depuis l'époque.");
    c.def(
        "ecrit",
        [](const etude& e, const std::string& chemin) {
            std::string raison;
            exige(sauve_etude(chemin, e, raison), chemin, raison);
        },
        "chemin"_a, "Écrit l'étude (.kestrel).");
    c.def(
        "ecrit_pwr",
        [](const etude& e, const std::string& chemin) {
            exige(sauve_energie(chemin, e.power, e.periode), chemin, "écriture impossible");
        },
        "chemin"_a);
    c.def(
        "ecrit_att",
        [](const etude& e, const std::string& chemin) {
            std::string raison;
            exige(sauve_attitude(chemin, e.attitude, raison), chemin, raison);
        },
        "chemin"_a);
    c.def(
        "ecrit_orb",
        [](const etude& e, const std::string& chemin) {
            std::string raison;
            exige(sauve_orbite(chemin, e.orbit.orbite, raison), chemin, raison);
        },
        "chemin"_a);
}

void declare_calculs(classe_etude& c) {
    const auto run = [&c](const char* nom, jeu (*quoi)(const etude&), const char* aide) {
        c.def(
            nom,
            [quoi](const etude& e, const date& debut, const date& fin, std::optional<int> pas,
                   const noms& colonnes) { return simule(e, quoi, debut, fin, pas, colonnes); },
            "debut"_a = py::none(), "fin"_a = py::none(), "pas"_a = py::none(), "colonnes"_a = py::none(),
            aide);
    };
    run("simule_energie", jeu_energie,
        "Simulation du système énergie : un dict de colonnes numpy. Dates en jours depuis 1950 ou "
        "\"AAAA-MM-JJ hh:mm:ss\", "
        "pas en secondes ; sans eux la période de l'étude.");
    run("couple", jeu_couple,
        "Modèle physique : énergie et attitude en un calcul, les panneaux suivent l'attitude.");
    c.def("simule_attitude", &simule_attitude, "debut"_a = py::none(), "fin"_a = py::none(),
          "pas"_a = py::none(), "colonnes"_a = py::none(), "ecriture"_a = 1,
          "Simulation de l'attitude ; une ligne tous les `ecriture` pas.");
    c.def("bilan", &bilan_python, "orbites"_a = py::none(),
          "Bilan d'énergie, une ligne par orbite (Wh, %, °C).");
    c.def("verdict", &verdict_python, "orbites"_a = py::none(),
          "Le satellite tient-il : tient, raisons, phrase, dernière orbite.");
    c.def("annee", &annee_python, "dates"_a = 24, "Le bilan à plusieurs dates de l'année.");
    c.def("passages", &passages_python, "stations"_a = py::none(), "debut"_a = py::none(),
          "fin"_a = py::none(),
          "Passages au-dessus de stations ; sans liste celles de l'étude, sinon celles du programme.");
    c.def("balayage", &balayage_python, "varie"_a, "mesures"_a = py::none(), "tirages"_a = py::none(),
          "graine"_a = 0, "coeurs"_a = 0, "orbites"_a = py::none(),
          "Bilan de chaque variante : varie=[\"bat_c=5:20:1\", \"cel_np=4,5,6\"].");
}

void declare_etude(py::module_& m) {
    classe_etude c(m, "Etude",
                   "Tout ce que l'utilisateur règle : orbite, pointage, énergie, attitude, période, modèle, "
                   "modes, stations, critères.");
    declare_reglages(c);
    declare_fichiers(c);
    declare_calculs(c);
}

} // namespace

PYBIND11_MODULE(kestrel, m) {
    m.doc() = "KESTREL : simulation d'un petit satellite en orbite terrestre (orbite, énergie, attitude).";
    m.attr("__version__") = VERSION_KESTREL;
    classe_faute() = PyErr_NewExceptionWithDoc(
        "kestrel.Faute",
        "Faute numérique : `date` (jours), `raison`, et `lignes`, ce qui a été calculé avant.",
        PyExc_RuntimeError, nullptr);
    m.add_object("Faute", py::reinterpret_borrow<py::object>(classe_faute()));
    py::register_exception_translator([](std::exception_ptr p) {
        try {
            if (p) std::rethrow_exception(p);
        } catch (const demande_fausse& d) {
            PyErr_SetString(PyExc_ValueError, d.raison.c_str());
        }
    });
    declare_champs(m);
    declare_etude(m);
    // e.orbite is the section, e.orbite(...) the run.
    const py::object orbite = m.attr("_orbite");
    orbite.attr("__call__") = py::cpp_function(
        [](const py::object& soi, const date& debut, const date& fin, std::optional<int> pas,
           const noms& colonnes) { return simule(etude_de(soi), jeu_orbite, debut, fin, pas, colonnes); },
        py::is_method(orbite), "debut"_a = py::none(), "fin"_a = py::none(), "pas"_a = py::none(),
        "colonnes"_a = py::none(), "Positions du satellite et du Soleil, éclipse, point au sol.");
    m.def("variables", &variables_python, "Le catalogue des variables : nom → titre, unité, éléments, sens.");
}
