/// The guide's tutorials, as a reader goes through them in the windows: what they tell is what is seen. Their
/// commands are run by the tests of the batch program and of the Python module.

#include <QAction>
#include <QComboBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTableWidget>

#include <cmath>

#include "analysis/calcul.h"
#include "analysis/reglages_etude.h"
#include "analysis/windows/page_annee.h"
#include "analysis/windows/page_banc.h"
#include "analysis/windows/page_etudes.h"
#include "shell/windows/menu.h"
#include "tests/gestes.h"
#include "widgets/fenetre.h"
#include "widgets/signe_verdict.h"

using namespace gestes;

namespace {

struct tutoriel : essai_fenetres {
    std::unique_ptr<menu> m;
    QString texte;

    void SetUp() override {
        s.dossier_depart = trouve_dossier_depart(dossier.path().toStdString(), {}, {DOSSIER_DATA});
        m = std::make_unique<menu>(s);
        m->fin_programme = [](int) {};
        m->resize(1366, 768);
        m->show();
    }
    void lit(const char* titre) {
        const QString guide =
            QString::fromUtf8(contenu(DOSSIER_DATA "/../docs/guide.md")).replace(QChar(0xa0), ' ');
        const qsizetype debut = guide.indexOf(QString("\n### ") + titre + "\n");
        ASSERT_GT(debut, 0) << titre;
        texte = guide.sliced(debut, guide.indexOf("\n### ", debut + 5) - debut);
    }
    /// What the text tells, by a pattern with one group.
    QString dit(const char* motif) const {
        const auto r = QRegularExpression(motif).match(texte);
        EXPECT_TRUE(r.hasMatch()) << motif;
        return r.captured(1);
    }
    double nombre(const char* motif) const {
        return dit(motif).replace(',', '.').replace(QChar(0x2212), '-').toDouble();
    }
    void ouvre_exemple() {
        const QString nom = dit("\\*\\*([^*]+)\\*\\*");
        for (auto* carte : m->findChildren<QPushButton*>())
            if (carte->accessibleName() == nom) return carte->click();
        ADD_FAILURE() << nom.toStdString();
    }
    void page(const char* nom) { controle<QAction>(m.get(), QString("mn_page_") + nom)->trigger(); }
    static bool devient(const signe_verdict* signe, const QString& morceau) {
        return QTest::qWaitFor([&] { return signe->phrase().contains(morceau); }, 30000);
    }
    /// An entry on the bench, and the run that follows.
    const resultat_courbes* saisit(const char* boite, const QString& valeur) {
        tape(m->findChild<page_banc*>(), boite, valeur, Qt::Key_Return);
        return banc();
    }
    /// The bench with its run done.
    const resultat_courbes* banc() {
        page("banc");
        auto* p = m->findChild<page_banc*>();
        QApplication::processEvents();
        // A run that would take too long waits for its button.
        if (auto* calcule = controle<QPushButton>(p, "cmd_banc_calcule"); calcule->isEnabled())
            calcule->click();
        EXPECT_TRUE(QTest::qWaitFor([p] { return p->resultat() && !p->calcule_en_cours(); }, 60000));
        return p->resultat();
    }
};

double plus_grand(const serie& y) {
    double m = 0;
    for (std::size_t i = 0; i < y.taille(); ++i) m = std::max(m, std::fabs(y.valeur(i)));
    return m;
}

} // namespace

/// Its path through the windows is walked in parcours_test; here are its numbers.
TEST_F(tutoriel, the_first_hour_tells_true_numbers) {
    lit("1. Démarrer et ouvrir un exemple");
    texte.remove(0, texte.indexOf("Cliquez sur **Micro"));
    ouvre_exemple();
    double batterie = 0, utile = 0, perte = 0, generateur = 0; // of the last step in eclipse
    const auto charge_min = [&](etude e) {
        const char* noms[] = {"eclipse", "gen_power", "bat_p", "p_payload", "p_loss_de", "bat_soc"};
        calcul c(modeles_de(e), voies_de(noms, e.power), reglages_de(e));
        double min = 1;
        while (c.suivant()) {
            const auto& v = c.ligne();
            if (v[0] != 0) generateur = v[1], batterie = v[2], utile = v[3], perte = v[4];
            if (c.date() > e.periode.j_debut + 1 / e.orbit.orbite.orb_moy_mvt) min = std::min(min, v[5]);
        }
        return min; // from the second turn on
    };
    const double quinze = charge_min(s);
    lit("4. Regarder une éclipse");
    EXPECT_EQ(generateur, 0);
    EXPECT_NEAR(batterie, nombre("fournit ([\\d,]+) W"), 0.005);
    EXPECT_NEAR(utile, nombre("pour que (\\d+) W"), 0.005);
    EXPECT_NEAR(perte, nombre("les ([\\d,]+) W perdus"), 0.005);
    EXPECT_EQ(s.power.gst_rend_bat, nombre("transfert est de (\\d+) %"));

    lit("5. Trouver la profondeur de décharge");
    EXPECT_EQ(s.power.gst_charge_init, nombre("initiale, (\\d+) %"));
    EXPECT_NEAR(quinze, nombre("descend de 1 à ([\\d,]+)"), 0.005);
    EXPECT_NEAR(100 * (1 - quinze), nombre("d'environ (\\d+) %"), 0.5);
    fenetre* etude_batterie = m->montre_fenetre("power_exp_bat");
    EXPECT_NEAR(controle<QLineEdit>(etude_batterie, "txt_depuis")->text().replace(',', '.').toDouble(),
                nombre("projet : ([\\d,]+) V/h"), 0.0005);
    tape(etude_batterie, "txt_tecl", dit("éclipse à (\\d+) minutes"));
    clique(etude_batterie, "cmd_saisir");
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return label(etude_batterie, "lab_dod") == dit("un DOD de (\\d+) %"); }, 20000))
        << label(etude_batterie, "lab_dod").toStdString();
    etude_batterie->close();

    lit("6. Changer la batterie et recommencer");
    etude petite = s;
    petite.power.bat_c = float(nombre("mettez \\*\\*(\\d+)"));
    const double six = charge_min(petite);
    EXPECT_NEAR(six, nombre("maintenant à ([\\d,]+)"), 0.005);
    EXPECT_NEAR(100 * (1 - six), nombre(": (\\d+) % de profondeur"), 0.5);

    lit("9. L'attitude");
    EXPECT_NEAR(s.attitude.dip_res[0], nombre("ici de ([\\d,]+) A"), 0.005);
    EXPECT_EQ(s.attitude.Mt, nombre("satellite de (\\d+) kg"));
    fenetre* simulation = m->montre_fenetre("att_sim");
    const QString conseil = "un pas de " + dit("prenez-le \\((\\d+) s\\)") + " s";
    EXPECT_TRUE(QTest::qWaitFor([&] { return bandeau(simulation).contains(conseil); }, 60000))
        << bandeau(simulation).toStdString();
}

TEST_F(tutoriel, a_battery_is_sized) {
    lit("Dimensionner une batterie");
    ouvre_exemple();
    const auto* resume = m->findChild<QWidget*>("resume_projet")->findChild<signe_verdict*>();
    EXPECT_TRUE(devient(resume, "marge " + dit("marge (\\d+) %")));
    EXPECT_TRUE(devient(resume, "décharge " + dit("décharge ([\\d,]+) % pour") + " % (limite " +
                                    dit("limite de (\\d+) %")));

    emit controle<QLabel>(m.get(), "lab_resume_batterie")->linkActivated("power_conf:3");
    fenetre* reglages = fenetre_ouverte<fenetre>("power_conf");
    const auto* pied = reglages->findChild<signe_verdict*>();
    tape(reglages, "bat_txt_c", dit("mettez \\*\\*(\\d+)"));
    EXPECT_TRUE(devient(pied, "tient : marge"));
    EXPECT_TRUE(devient(pied, "décharge " + dit("suit : profondeur de décharge (\\d+) %")));
    tape(reglages, "bat_txt_c", dit("Mettez \\*\\*(\\d+)"));
    EXPECT_TRUE(devient(pied, "ne tient pas : profondeur de décharge " + dit("monte à (\\d+) %")));
    reglages->close();

    page("etudes");
    auto* etudes = m->findChild<page_etudes*>();
    tape(etudes, "txt_valeurs_0", dit("valeurs `([^`]+)`"));
    clique(etudes, "cmd_lance_etude");
    const auto* table = controle<QTableWidget>(etudes, "tab_variantes");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !etudes->en_cours(); }, 60000));
    ASSERT_EQ(table->rowCount(), nombre("a (\\d+) lignes"));
    int tient = 0, ligne = 0;
    while (tient < table->columnCount() && table->horizontalHeaderItem(tient)->text() != "tient") ++tient;
    while (ligne < table->rowCount() && table->item(ligne, tient)->text().toDouble() == 0) ++ligne;
    ASSERT_LT(ligne, table->rowCount());
    emit const_cast<QTableWidget*>(table)->cellDoubleClicked(ligne, 0);
    EXPECT_EQ(s.power.bat_c, nombre("celle de (\\d+) Ah"));
}

TEST_F(tutoriel, a_year_of_a_sun_synchronous_orbit) {
    lit("Une année d'orbite héliosynchrone");
    ouvre_exemple();
    page("bilan");
    auto* annee = m->findChild<page_annee*>();
    const auto tenues = [&](const QString& n) {
        return QTest::qWaitFor(
            [&] { return label(annee, "lab_pire").contains("le satellite tient à " + n + ". "); }, 60000);
    };
    EXPECT_TRUE(tenues(dit("tient à (\\d+)\\."))) << label(annee, "lab_pire").toStdString();
    double bas = 0, haut = 0;
    for (const date_bilan& d : annee->annee()) bas = std::min(bas, d.beta), haut = std::max(haut, d.beta);
    EXPECT_EQ(std::round(bas), nombre("va de (.\\d+)°"));
    EXPECT_EQ(std::round(haut), nombre("à (\\d+)° : à ces"));

    controle<QAction>(m.get(), "mn_modele_physique")->trigger();
    EXPECT_TRUE(tenues(dit("tient aux (\\d+) dates"))) << label(annee, "lab_pire").toStdString();
    EXPECT_TRUE(label(annee, "lab_pire").contains("/07/2024"));
    EXPECT_TRUE(label(annee, "lab_pire").contains("marge " + dit("loin : marge (\\d+) %")));

    tape(m->montre_fenetre("orbito_conf", 0), "norad_inclinaison", dit("98,19° à (\\d+)°"));
    EXPECT_TRUE(tenues(dit("plus qu'à (\\d+) dates"))) << label(annee, "lab_pire").toStdString();
}

TEST_F(tutoriel, a_mast_stands_by_gravity) {
    lit("Tenir debout par le gradient de gravité");
    ouvre_exemple();
    const resultat_courbes* r = banc();
    const serie& tangage = r->cherche("tangage")->valeurs;
    EXPECT_NEAR(tangage.valeur(0), nombre("Lâché à (\\d+)°"), 1e-9);
    std::vector<double> zeros; // rows: one a minute
    for (std::size_t i = 1; i < tangage.taille(); ++i)
        if (tangage.valeur(i - 1) > 0 && tangage.valeur(i) <= 0)
            zeros.push_back(double(i) - tangage.valeur(i) / (tangage.valeur(i) - tangage.valeur(i - 1)));
    ASSERT_GT(zeros.size(), 4u);
    EXPECT_NEAR((zeros.back() - zeros.front()) / double(zeros.size() - 1), nombre("courbes : ([\\d,]+) min"),
                0.05);
    EXPECT_LT(plus_grand(r->cherche("lacet")->valeurs), nombre("à moins de (\\d+)°"));

    auto* p = m->findChild<page_banc*>();
    clique(p, "chk_banc_roues");
    EXPECT_GT(plus_grand(banc()->cherche("lacet")->valeurs), 175);
    clique(p, "chk_banc_roues");
    EXPECT_LT(plus_grand(banc()->cherche("lacet")->valeurs), 1);

    auto* loi = controle<QComboBox>(p, "cbo_banc_loi");
    loi->setCurrentIndex(1);
    emit loi->activated(1);
    banc();
    saisit("txt_banc_gain", dit("gain (\\d+)"));
    saisit("txt_banc_dipole_max", dit("dipôle (\\d+)"));
    const serie& amorti = saisit("txt_banc_duree", dit("durée de (\\d+) h"))->cherche("tangage")->valeurs;
    ASSERT_GE(amorti.taille(), 1440u);
    double fin = 0; // the last four hours
    for (std::size_t i = amorti.taille() - 240; i < amorti.taille(); ++i)
        fin = std::max(fin, std::fabs(amorti.valeur(i)));
    EXPECT_NEAR(fin / 15, 0.5, 0.1) << "by half in a day";
}

TEST_F(tutoriel, a_tumbling_satellite_is_braked) {
    lit("Arrêter un satellite qui culbute");
    ouvre_exemple();
    const auto minutes = [&](double seuil) {
        const resultat_courbes* r = banc();
        double derniere = NAN;
        const serie& x = r->cherche("omega_x")->valeurs;
        for (std::size_t i = 0; i < x.taille(); ++i) {
            double n = 0;
            for (const char* axe : {"omega_x", "omega_y", "omega_z"})
                n = std::hypot(n, r->cherche(axe)->valeurs.valeur(i));
            if (i == 0) {
                EXPECT_NEAR(n, nombre("part de ([\\d,]+) °/s"), 0.05);
            }
            if (n >= seuil) derniere = double(i + 1) * s.periode.pas_sim / 60;
        }
        return derniere;
    };
    EXPECT_NEAR(minutes(1), nombre("sous 1 °/s après (\\d+) min"), s.periode.pas_sim / 60.);
    saisit("txt_banc_gain", dit("Doublez le gain \\((\\d+)\\)"));
    EXPECT_NEAR(minutes(1), nombre("gain  40000 : sous 1 °/s après +(\\d+) min"), s.periode.pas_sim / 60.);
    saisit("txt_banc_gain", dit(", puis (\\d+)"));
    EXPECT_NEAR(minutes(1), nombre("gain 100000 : sous 1 °/s après +(\\d+) min"), s.periode.pas_sim / 60.);
    EXPECT_TRUE(label(m.get(), "lab_banc_etat").contains("dipôle maximal")) << "the bench says so";
}
