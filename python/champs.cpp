#include "champs.h"

#include <pybind11/stl.h>

#include <map>

#include "project/etude_champs.h"

namespace py = pybind11;

namespace {

/// A section of an étude, seen from Python.
struct vue_section {
    py::object porteur; ///< the étude's object
    etude* e;
};

template <int rang>
struct vue : vue_section {};

bool entier(const champ_etude& c) { return c.genre == genre_nombre::entier; }

py::object en_python(const champ_etude& c, double x) {
    if (c.genre == genre_nombre::drapeau) return py::bool_(x != 0);
    if (entier(c)) return py::int_(static_cast<long>(x));
    return py::float_(x);
}

/// A number, a tuple, or a tuple of rows.
py::object lit(const etude& e, const champ_etude& c) {
    if (c.dims[0] == 0) return en_python(c, valeur_montree(e, {&c}));
    const int colonnes = c.dims[1] ? c.dims[1] : 1;
    py::tuple lignes(c.dims[0]);
    for (int i = 0; i < c.dims[0]; ++i) {
        py::tuple ligne(colonnes);
        for (int k = 0; k < colonnes; ++k)
            ligne[k] = en_python(c, valeur_montree(e, {&c, 0, i * colonnes + k}));
        lignes[i] = c.dims[1] ? py::object(ligne) : py::object(ligne[0]);
    }
    return lignes;
}

void pose_un(etude& e, const element_etude& x, const py::handle& v) {
    std::string raison;
    if (!change_champ(e, x, v.cast<double>(), raison)) throw py::value_error(nom_element(x) + " : " + raison);
}

/// All elements or none: a refused one leaves the étude as it was.
void pose_tout(etude& e, const champ_etude& c, const py::object& v) {
    if (c.dims[0] == 0) return pose_un(e, {&c}, v);
    etude essai = e;
    const auto longueur = [&](const py::handle& s, int n) {
        if (!py::isinstance<py::sequence>(s) && !py::hasattr(s, "__len__"))
            throw py::value_error(c.nom + " : " + std::to_string(n) + " valeurs sont attendues");
        if (py::len(s) != static_cast<std::size_t>(n))
            throw py::value_error(c.nom + " : " + std::to_string(n) + " valeurs sont attendues, pas " +
                                  std::to_string(py::len(s)));
    };
    longueur(v, c.dims[0]);
    for (int i = 0; i < c.dims[0]; ++i) {
        const py::object ligne = v[py::int_(i)];
        if (c.dims[1] == 0) {
            pose_un(essai, {&c, 0, i}, ligne);
            continue;
        }
        longueur(ligne, c.dims[1]);
        for (int k = 0; k < c.dims[1]; ++k) pose_un(essai, {&c, 0, i * c.dims[1] + k}, ligne[py::int_(k)]);
    }
    e = std::move(essai);
}

std::string aide(const champ_etude& c) {
    std::string t = c.titre.empty() ? c.nom : c.titre;
    if (!c.unite.empty()) t += " (" + c.unite + ")";
    if (const std::string b = texte_bornes(c.bornes); !b.empty()) t += ", " + b;
    t += ".";
    if (c.dims[0])
        t += " " + std::to_string(c.dims[0]) + (c.dims[1] ? " × " + std::to_string(c.dims[1]) : "") +
             " valeurs.";
    if (!c.sens.empty()) t += "\n" + c.sens;
    return t;
}

/// The property of a field, on the class of its section.
void propriete(const py::object& classe, const champ_etude& c) {
    const champ_etude* champ = &c;
    const py::cpp_function lecture([champ](const vue_section& s) { return lit(*s.e, *champ); },
                                   py::is_method(classe));
    const py::cpp_function ecriture(
        [champ](const vue_section& s, const py::object& v) { pose_tout(*s.e, *champ, v); },
        py::is_method(classe));
    const auto property = py::module_::import("builtins").attr("property");
    classe.attr(c.nom.c_str()) = property(lecture, ecriture, py::none(), aide(c));
}

constexpr struct {
    rubrique dans;
    const char* nom;
    const char* sens;
} sections[] = {{rubrique::orbite, "orbite", "Éléments de l'orbite."},
                {rubrique::pointage, "pointage", "Pointage nominal."},
                {rubrique::energie, "energie", "Système énergie."},
                {rubrique::attitude, "attitude", "Contrôle d'attitude."},
                {rubrique::modele, "controle", "Loi de contrôle du modèle physique."},
                {rubrique::criteres, "criteres", "Critères du bilan."},
                {rubrique::periode, "periode", "Période et pas."}};

template <int rang>
void declare_section(py::module_& m) {
    const auto& s = sections[rang];
    py::class_<vue<rang>, vue_section> classe(m, (std::string("_") + s.nom).c_str(), s.sens);
    classe.def("__dir__", [](const vue_section&) {
        std::vector<std::string> noms;
        for (const champ_etude& c : etude_champs())
            if (c.dans == sections[rang].dans && !c.liste) noms.push_back(c.nom);
        return noms;
    });
    // A name that is no field would be kept by nobody.
    classe.def("__setattr__", [](const py::object& soi, const py::str& nom, const py::object& v) {
        const py::object type = py::type::of(soi);
        if (!py::hasattr(type, nom))
            throw py::attribute_error("« " + std::string(nom) + " » n'est pas un champ de " +
                                      sections[rang].nom);
        type.attr(nom).attr("__set__")(soi, v);
    });
    for (const champ_etude& c : etude_champs())
        if (c.dans == s.dans && !c.liste) propriete(classe, c);
}

} // namespace

namespace {

using rangs = std::make_integer_sequence<int, std::size(sections)>;

template <int... rang>
void declare_sections(py::module_& m, std::integer_sequence<int, rang...>) {
    (declare_section<rang>(m), ...);
}

template <int... rang>
py::object section_de(const py::object& porteur, std::string_view nom, std::integer_sequence<int, rang...>) {
    py::object trouvee;
    ((nom == sections[rang].nom ? void(trouvee = py::cast(vue<rang>{{porteur, porteur.cast<etude*>()}}))
                                : void()),
     ...);
    return trouvee;
}

} // namespace

void declare_champs(py::module_& m) {
    py::class_<vue_section>(m, "_section");
    declare_sections(m, rangs{});
}

py::object section(const py::object& porteur, const char* nom) { return section_de(porteur, nom, rangs{}); }

std::vector<const char*> noms_sections() {
    std::vector<const char*> noms;
    for (const auto& s : sections) noms.push_back(s.nom);
    return noms;
}

const etude& etude_de(const py::object& section) { return *section.cast<vue_section&>().e; }

double lit_champ(const etude& e, const std::string& nom) {
    element_etude x;
    std::string raison;
    if (!cherche_champ(nom, e, x, raison)) throw py::key_error(nom + " : " + raison);
    return valeur_montree(e, x);
}

void pose_champ(etude& e, const std::string& nom, double v) {
    element_etude x;
    std::string raison;
    if (!cherche_champ(nom, e, x, raison)) throw py::key_error(nom + " : " + raison);
    if (!change_champ(e, x, v, raison)) throw py::value_error(nom + " : " + raison);
}
