/// The examples of data/exemples: their notes say what the models give, verdict, numbers and what a change
/// does. A change is told by its fields, "(bat_c=6)"; what follows up to the next one is what it brings.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <numbers>
#include <regex>

#include "analysis/calcul.h"
#include "analysis/phrase_bilan.h"
#include "analysis/reglages_etude.h"
#include "project/etude_champs.h"
#include "project/etude_fichier.h"

namespace {

namespace fs = std::filesystem;

etude exemple(const std::string& nom) {
    etude e;
    std::string raison;
    EXPECT_TRUE(charge_etude(DOSSIER_DATA "/exemples/" + nom + ".kestrel", e, raison)) << raison;
    return e;
}

/// The notes between a title and the empty line.
std::string section(const etude& e, const std::string& titre) {
    const std::size_t debut = e.notes.find("\n" + titre + "\n");
    EXPECT_NE(debut, std::string::npos) << titre << " in\n" << e.notes;
    if (debut == std::string::npos) return {};
    return e.notes.substr(debut, e.notes.find("\n\n", debut + 1) - debut);
}

struct essai {
    std::vector<std::string> champs; ///< "bat_c=6"
    std::string effet;
};

std::vector<essai> essais(const etude& e) {
    std::vector<essai> liste;
    const std::string texte = section(e, "À essayer");
    const std::regex groupe(R"(\(([^()]*=[^()]*)\)([^(\n]*))");
    for (std::sregex_iterator i(texte.begin(), texte.end(), groupe), fin; i != fin; ++i) {
        essai x{{}, (*i)[2]};
        const std::string champs = (*i)[1];
        const std::regex virgule(",\\s*");
        for (std::sregex_token_iterator c(champs.begin(), champs.end(), virgule, -1), f; c != f; ++c)
            x.champs.push_back(*c);
        liste.push_back(x);
    }
    return liste;
}

etude change(etude e, const std::vector<std::string>& champs) {
    std::string raison;
    EXPECT_TRUE(change_champs(e, champs, raison)) << raison;
    return e;
}

bilan bilan_de(const etude& e) { return calcule_bilan(e, {.dossier_donnees = DOSSIER_DATA}); }

/// Whether the number that a pattern captures is the value, with the decimals that it is told with; the
/// number of those found.
int annonce(const std::string& texte, const char* motif, double valeur) {
    int nombre = 0;
    const std::regex r(motif);
    for (std::sregex_iterator i(texte.begin(), texte.end(), r), fin; i != fin; ++i, ++nombre) {
        const std::string dit = (*i)[1];
        const std::size_t virgule = dit.find(',');
        const int decimales = virgule == std::string::npos ? 0 : static_cast<int>(dit.size() - virgule - 1);
        EXPECT_EQ(dit, nombre_fr(valeur, decimales)) << motif << " in " << texte;
    }
    return nombre;
}

/// The numbers of a budget in a text; how many there were.
int verifie_chiffres(const std::string& texte, const tour_bilan& t, bool minutes) {
    return annonce(texte, R"(marge (?:tombe à )?(-?[\d,]+) %)", t.marge) +
           annonce(texte, R"(décharge ([\d,]+) %)", t.dod) +
           annonce(texte, R"(([\d,]+) % pour une limite)", t.dod) +
           annonce(texte, R"((?:entre|de) (-?[\d,]+) (?:et|à) -?[\d,]+ °C)", t.t_pan_min) +
           annonce(texte, R"((?:entre|de) -?[\d,]+ (?:et|à) (-?[\d,]+) °C)", t.t_pan_max) +
           (minutes ? annonce(texte, R"(([\d,]+) min)", t.eclipse / 60) : 0);
}

struct ligne {
    double minutes, tangage, lacet, zenith, rotation; ///< angles [deg]; of the axis +z to the zenith; [deg/s]
};

std::vector<ligne> attitude(etude e, double heures) {
    e.periode.j_fin = e.periode.j_debut + heures / 24;
    e.periode.pas_sim = 10;
    const char* noms[] = {"tangage", "lacet", "angle_nadir_z", "omega_x", "omega_y", "omega_z"};
    reglages_calcul r = reglages_de(e);
    r.dossier_donnees = DOSSIER_DATA;
    calcul c({e.periode, e.orbit, e.power, e.attitude}, voies_de(noms, e.power), r);
    std::vector<ligne> lignes;
    while (c.suivant()) {
        const auto& v = c.ligne();
        lignes.push_back({(c.date() - e.periode.j_debut) * 1440, v[0], v[1], 180 - v[2],
                          std::sqrt(v[3] * v[3] + v[4] * v[4] + v[5] * v[5])});
    }
    EXPECT_FALSE(c.faute()) << c.raison();
    return lignes;
}

double plus_grand(const std::vector<ligne>& l, double ligne::*quoi, double depuis_heures = 0) {
    double m = 0;
    for (const ligne& x : l)
        if (x.minutes >= 60 * depuis_heures) m = std::max(m, std::fabs(x.*quoi));
    return m;
}

/// Mean time from one downward zero of the pitch to the next [min].
double periode_tangage(const std::vector<ligne>& l) {
    std::vector<double> zeros;
    for (std::size_t i = 1; i < l.size(); ++i)
        if (l[i - 1].tangage > 0 && l[i].tangage <= 0)
            zeros.push_back(l[i].minutes - (l[i].minutes - l[i - 1].minutes) * l[i].tangage /
                                               (l[i].tangage - l[i - 1].tangage));
    EXPECT_GT(zeros.size(), 3u);
    return zeros.size() < 2 ? NAN : (zeros.back() - zeros.front()) / static_cast<double>(zeros.size() - 1);
}

/// Minutes until the rotation stays below 1 deg/s; not a number when it does not.
double freinee(const std::vector<ligne>& l) {
    std::size_t i = l.size();
    while (i > 0 && l[i - 1].rotation < 1) --i;
    return i == l.size() ? NAN : l[i].minutes;
}

} // namespace

TEST(exemples, the_notes_tell_the_verdict_and_what_a_change_brings) {
    int nombre = 0, tenus = 0, repares = 0, chiffres = 0;
    for (const auto& f : fs::directory_iterator(DOSSIER_DATA "/exemples")) {
        if (f.path().extension() != ".kestrel") continue;
        SCOPED_TRACE(f.path().filename());
        ++nombre;
        const etude e = exemple(f.path().stem());
        const bilan b = bilan_de(e);
        ASSERT_FALSE(b.tours.empty());
        tenus += b.tient;
        const std::string voir = section(e, "À voir");
        EXPECT_NE(voir.find("\n- " + phrase_bilan(b, criteres_en_vigueur(e))), std::string::npos)
            << phrase_bilan(b, criteres_en_vigueur(e));
        chiffres += verifie_chiffres(voir, b.tours.back(), !e.modele.physique);
        for (const essai& x : essais(e)) {
            if (x.effet.find("tient") == std::string::npos) {
                EXPECT_TRUE(e.modele.physique) << x.effet; // of the attitude: see below
                continue;
            }
            SCOPED_TRACE(x.champs[0] + x.effet);
            const bilan apres = bilan_de(change(e, x.champs));
            EXPECT_EQ(apres.tient, x.effet.find("ne tient pas") == std::string::npos);
            chiffres += verifie_chiffres(x.effet, apres.tours.back(), true);
            repares += apres.tient && !b.tient;
        }
        EXPECT_GE(essais(e).size(), 3u);
    }
    EXPECT_EQ(nombre, 8);
    EXPECT_EQ(tenus, 7);
    EXPECT_GT(chiffres, 40);
    EXPECT_GE(repares, 2) << "the one that does not hold says how to mend it";
}

TEST(exemples, what_else_the_notes_tell_is_so) {
    // Two faces together, one at the Sun's highest.
    etude e = exemple("cubesat");
    EXPECT_NEAR(static_cast<double>(bilan_de(e).tours.size()), 12, 3) << "une dizaine de tours";
    const char* noms[] = {"gen_power", "sun_z", "pan_power"};
    calcul c(modeles_de(e), voies_de(noms, e.power), reglages_de(e));
    double haut = 0, plus_z = -1, au_plus_haut = 0;
    int ensemble = 0;
    while (c.suivant()) {
        const auto& v = c.ligne();
        const auto actives = std::count_if(v.begin() + 2, v.end(), [](double w) { return w > 0; });
        ensemble = std::max(ensemble, static_cast<int>(actives));
        haut = std::max(haut, v[0]);
        if (v[1] > plus_z) {
            plus_z = v[1];
            au_plus_haut = v[0];
            EXPECT_TRUE(plus_z < 0.85 || actives == 1);
        }
    }
    EXPECT_EQ(ensemble, 2);
    EXPECT_EQ(annonce(section(e, "À voir"), R"(ensemble jusqu'à ([\d,]+) W)", haut), 1);
    EXPECT_EQ(annonce(section(e, "À voir"), R"(une seule ([\d,]+) W)", au_plus_haut), 1);

    const etude micro = exemple("microsatellite");
    EXPECT_STREQ(bilan_de(change(micro, {"cel_np=4"})).raisons.at(0).critere, "derive");
    EXPECT_NEAR(bilan_de(micro).tours.back().e_gen /
                    bilan_de(change(micro, {"cel_ns=27"})).tours.back().e_gen,
                3, 0.3)
        << "trois fois moins";

    etude plan = change(exemple("hexagone"), {"debut=27290"});
    plan.modele.physique = true; // with J2 it follows the Sun
    const bilan suit = bilan_de(plan);
    EXPECT_TRUE(suit.tient);
    EXPECT_EQ(suit.tours.back().eclipse, 0);

    // The shadow of the Earth reaches asin(6378 / 42164) = 8.7 degrees over the plane: two seasons a year.
    const etude geo = exemple("geostationnaire");
    const auto annee = calcule_annee(geo, 24, {.dossier_donnees = DOSSIER_DATA});
    const date_bilan* pire = &annee.front();
    for (const date_bilan& d : annee) {
        EXPECT_EQ(d.resultat.tours.back().eclipse > 0, std::fabs(d.beta) < 8.7) << d.beta;
        if (d.resultat.tours.back().marge < pire->resultat.tours.back().marge) pire = &d;
    }
    EXPECT_EQ(annonce(section(geo, "À voir"), R"(Soleil est à (\d+)° du plan)", pire->beta), 1);
    EXPECT_NEAR(pire->date - geo.periode.j_debut, 93, 16) << "in June";
}

TEST(exemples, the_mast_swings_as_its_notes_tell) {
    const etude e = exemple("mat");
    const std::string voir = section(e, "À voir");
    const auto l = attitude(e, 6);
    EXPECT_NEAR(plus_grand(l, &ligne::tangage), 15, 0.5);
    EXPECT_LT(plus_grand(l, &ligne::lacet), 1);
    EXPECT_EQ(annonce(voir, R"(verticale, en ([\d,]+) min)", periode_tangage(l)), 1);
    // P. C. Hughes, Spacecraft Attitude Dynamics, 9.2: w = n sqrt(3 (Ixx - Izz) / Iyy), z along the mast.
    const mat3& I = e.attitude.I;
    const double a = e.orbit.orbite.orb_demi;
    const double tour = 2 * std::numbers::pi * std::sqrt(a * a * a / 398600.4418) / 60;
    EXPECT_EQ(annonce(voir, R"(dit ([\d,]+) min)", tour / std::sqrt(3 * (I(0, 0) - I(2, 2)) / I(1, 1))), 1);

    const auto x = essais(e);
    ASSERT_EQ(x.size(), 3u);
    EXPECT_GT(plus_grand(attitude(change(e, x[0].champs), 6), &ligne::lacet), 175); // without the wheel
    EXPECT_LT(plus_grand(l, &ligne::zenith), 20);
    EXPECT_GT(plus_grand(attitude(change(e, x[1].champs), 6), &ligne::zenith), 150); // without the mast
    EXPECT_EQ(annonce(x[2].effet, R"((\d+) min)", periode_tangage(attitude(change(e, x[2].champs), 12))), 1);

    etude amorti = change(e, {"gain=2000000", "dipole_max=5"});
    amorti.modele.controle.loi = loi_controle::b_dot;
    const double reste = plus_grand(attitude(amorti, 24), &ligne::tangage, 20);
    EXPECT_LT(reste, 8);
    EXPECT_GT(reste, 5);
}

TEST(exemples, the_tumbling_satellite_is_braked_as_its_notes_tell) {
    const etude e = exemple("culbute");
    const auto l = attitude(e, 24);
    EXPECT_NEAR(l.front().rotation, 7.07, 0.01);
    EXPECT_EQ(annonce(section(e, "À voir"), R"(1 °/s en (\d+) min)", freinee(l)), 1);
    double bas = 1, haut = 0; // the last half day
    for (const ligne& x : l)
        if (x.minutes > 720) bas = std::min(bas, x.rotation), haut = std::max(haut, x.rotation);
    EXPECT_LT(haut, 0.3);
    EXPECT_GT(haut, 0.2);
    EXPECT_LT(bas, 0.15);
    int dits = 0;
    for (const essai& x : essais(e))
        dits += annonce(x.effet, R"((\d+) min)", freinee(attitude(change(e, x.champs), 12)));
    EXPECT_EQ(dits, 5);
    etude libre = e;
    libre.modele.controle.loi = loi_controle::aucune;
    EXPECT_EQ(annonce(section(e, "À essayer"), R"(reste à ([\d,]+) °/s)", attitude(libre, 6).back().rotation),
              1);
}
