#include "analysis/balayage.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "analysis/modes.h"
#include "analysis/reglages_etude.h"
#include "analysis/tirage.h"
#include "shell/formats.h"
#include "shell/utilitaires.h"

namespace {

constexpr double rien = std::numeric_limits<double>::quiet_NaN();
constexpr long valeurs_max = 10'000'000; // of one list

bool lit_nombre(std::string_view t, double& x) {
    const auto r = std::from_chars(t.data(), t.data() + t.size(), x);
    return r.ec == std::errc() && r.ptr == t.data() + t.size() && std::isfinite(x);
}

/// "a:b:c" as its numbers.
bool lit_nombres(std::string_view t, char separe, std::vector<double>& nombres) {
    nombres.clear();
    while (true) {
        const auto fin = t.find(separe);
        if (!lit_nombre(t.substr(0, fin), nombres.emplace_back())) return false;
        if (fin == std::string_view::npos) return true;
        t.remove_prefix(fin + 1);
    }
}

/// a, a + step ... up to b, which counts where the steps reach it to within their rounding.
bool lit_etendue(std::string_view t, std::vector<double>& valeurs) {
    std::vector<double> n;
    if (!lit_nombres(t, ':', n) || n.size() != 3 || n[2] == 0 || (n[1] - n[0]) / n[2] < 0) return false;
    const double pas = std::floor((n[1] - n[0]) / n[2] + 1e-9);
    if (!(pas < static_cast<double>(valeurs_max))) return false;
    valeurs.clear();
    for (long k = 0; k <= static_cast<long>(pas); ++k)
        valeurs.push_back(n[0] + static_cast<double>(k) * n[2]);
    return true;
}

bool lit_loi(std::string_view t, variation& v) {
    const auto fin = t.size();
    std::vector<double> n;
    if (fin < 4 || t[1] != '(' || t.back() != ')' || !lit_nombres(t.substr(2, fin - 3), ',', n) ||
        n.size() != 2)
        return false;
    v.loi = t[0] == 'U' ? variation::genre::uniforme : variation::genre::normale;
    v.a = n[0];
    v.b = n[1];
    return t[0] == 'U' ? v.a <= v.b : t[0] == 'N' && v.b >= 0;
}

/// A drawn value; fields that hold whole numbers take the nearest one.
double tire(const variation& v, uint64_t graine, long variante, std::size_t rang) {
    tirage t(graine, static_cast<uint64_t>(variante), rang);
    const double x =
        v.loi == variation::genre::uniforme ? v.a + (v.b - v.a) * t.uniforme() : v.a + v.b * t.normale();
    const bool reel =
        v.element.champ->genre == genre_nombre::reel || v.element.champ->genre == genre_nombre::simple;
    return reel ? x : std::nearbyint(x);
}

/// The environment of a date depends on this field.
bool touche_environnement(const champ_etude& c) {
    return c.dans == rubrique::orbite || c.dans == rubrique::pointage || c.dans == rubrique::periode ||
           c.dans == rubrique::modele || c.nom == "albedo" || c.nom == "earth_ir" || c.nom == "sun_power";
}

} // namespace

bool lit_variation(const std::string& texte, const etude& base, variation& v, std::string& raison) {
    const auto p = texte.find_first_of("=~");
    if (p == std::string::npos || p == 0) {
        raison =
            "« " + texte + " » : NOM=a:b:pas, NOM=v1,v2 ou NOM~U(a,b) ou NOM~N(moyenne,écart) est attendu";
        return false;
    }
    v = {};
    v.nom = texte.substr(0, p);
    if (!cherche_champ(v.nom, base, v.element, raison)) {
        raison = v.nom + " : " + raison;
        return false;
    }
    const std::string_view suite = std::string_view(texte).substr(p + 1);
    const bool lu = texte[p] == '~'                             ? lit_loi(suite, v)
                    : suite.find(':') != std::string_view::npos ? lit_etendue(suite, v.valeurs)
                                                                : lit_nombres(suite, ',', v.valeurs);
    if (!lu) {
        raison = v.nom + " : « " + std::string(suite) +
                 " » n'est ni a:b:pas (a < b, pas > 0), ni une liste, ni U(a,b), ni N(moyenne,écart)";
        return false;
    }
    etude essai = base;
    std::vector<double> extremes = v.valeurs;
    if (v.loi == variation::genre::uniforme) extremes = {v.a, v.b};
    for (const double x : extremes)
        if (!change_champ(essai, v.element, x, raison)) {
            raison = v.nom + " : " + raison;
            return false;
        }
    return true;
}

double mesure::de(const bilan& b) const {
    if (b.faute || b.tours.empty()) return rien;
    return colonne ? b.tours.back().*colonne->valeur : b.tient ? -1 : 0;
}

bool lit_mesure(const std::string& nom, mesure& m, std::string& raison) {
    m = {nom, cherche_colonne_bilan(nom)};
    if (m.colonne || nom == "tient") return true;
    raison = "mesure inconnue : « " + nom + " » ; il y a tient";
    for (const colonne_bilan& c : colonnes_bilan()) raison += std::string(", ") + c.nom;
    return false;
}

long nombre_variantes(const plan_balayage& p) {
    double n = static_cast<double>(p.tirages);
    for (const variation& v : p.variations)
        if (v.loi == variation::genre::liste) n *= static_cast<double>(v.valeurs.size());
    return n > static_cast<double>(variantes_max) ? -1 : static_cast<long>(n);
}

balayage::balayage(const etude& base, plan_balayage plan) : base_(base), plan_(std::move(plan)) {
    base_.power.t_bat = 0;
    variantes_ = std::max(0L, nombre_variantes(plan_));
    grille_ = plan_.tirages > 0 ? variantes_ / plan_.tirages : 0;
    if (std::none_of(plan_.variations.begin(), plan_.variations.end(),
                     [](const variation& v) { return touche_environnement(*v.element.champ); }))
        partage_environnement();
}

/// The environment of every step that a budget may take.
void balayage::partage_environnement() {
    const int orbites = plan_.bilan.orbites > 0 ? plan_.bilan.orbites : orbites_max_bilan;
    const double pas = base_.periode.pas_sim;
    const double nombre = std::ceil(orbites * duree_orbite(base_) / pas) + 2;
    if (!(nombre < 1e6)) return; // a few hundred megabytes: computed anew for each variant
    etude e = base_;
    e.periode.j_fin = e.periode.j_debut + nombre * pas / secondes_par_jour;
    calcul c(
        modeles_de(e), {},
        reglages_de(base_, {.besoins = besoin::energie, .dossier_donnees = plan_.bilan.dossier_donnees}));
    // A fault of the environment itself is each variant's own.
    while (c.suivant()) environnement_.push_back(releve_environnement(e.power, e.orbit));
    if (c.faute()) environnement_.clear();
}

std::vector<double> balayage::valeurs(long variante) const {
    std::vector<double> v(plan_.variations.size());
    long reste = variante / plan_.tirages;
    for (std::size_t i = v.size(); i-- > 0;) {
        const variation& x = plan_.variations[i];
        if (x.loi != variation::genre::liste) {
            v[i] = tire(x, plan_.graine, variante, i);
            continue;
        }
        const auto n = static_cast<long>(x.valeurs.size());
        v[i] = x.valeurs[static_cast<std::size_t>(reste % n)];
        reste /= n;
    }
    return v;
}

bool balayage::etude_de(long variante, etude& e) const {
    e = base_;
    const std::vector<double> v = valeurs(variante);
    std::string raison;
    for (std::size_t i = 0; i < v.size(); ++i)
        if (!change_champ(e, plan_.variations[i].element, v[i], raison)) return false;
    return true;
}

ligne_balayage balayage::calcule(long variante, const std::stop_token& arret) const {
    ligne_balayage l{variante, valeurs(variante), {}, true};
    etude e;
    bilan b;
    if (etude_de(variante, e)) {
        reglages_bilan r = plan_.bilan;
        r.arret = arret;
        if (environnement_partage()) r.environnement = &environnement_;
        b = calcule_bilan(std::move(e), r);
        l.faute = b.faute.has_value();
    }
    for (const mesure& m : plan_.mesures) l.mesures.push_back(l.faute ? rien : m.de(b));
    return l;
}

std::vector<std::string> colonnes_balayage(const plan_balayage& p) {
    std::vector<std::string> noms = {"variante"};
    for (const variation& v : p.variations) noms.push_back(v.nom);
    for (const mesure& m : p.mesures) noms.push_back(m.nom);
    noms.emplace_back("faute");
    return noms;
}

std::string texte_ligne(const plan_balayage& p, const ligne_balayage& l) {
    std::string t = std::to_string(l.variante);
    const auto ajoute = [&t](double x) {
        char c[40];
        t += ',';
        if (std::isfinite(x)) t.append(c, std::to_chars(c, c + sizeof c, x + 0.0).ptr);
    };
    for (const double x : l.valeurs) ajoute(x);
    for (std::size_t i = 0; i < p.mesures.size(); ++i) ajoute(l.mesures[i]);
    return t + (l.faute ? ",1" : ",0");
}
