/// The attitude bench as a person uses it: libration of a mast under gravity gradient, damper off, undone;
/// detumbling with its saturations; the batch program is the judge.
#include "analysis/windows/page_banc.h"

#include <QAction>
#include <QComboBox>
#include <QProcess>
#include <QPushButton>
#include <QSettings>

#include <cmath>

#include "orbit/matrices.h"
#include "power/windows/vue3d_datee.h"
#include "project/etude_fichier.h"
#include "shell/windows/menu.h"
#include "tests/gestes.h"
#include "widgets/fenetre.h"
#include "widgets/traces.h"

using namespace gestes;

namespace {

struct banc : essai_fenetres {
    std::unique_ptr<menu> m;
    page_banc* p = nullptr;
    traces* t = nullptr;

    void SetUp() override {
        QSettings().remove("banc/courbes");
        for (const char* nom : {"igrf14.txt", "densite.txt", "flux_solaire.txt"})
            ASSERT_TRUE(QFile::copy(QString(DOSSIER_DATA "/") + nom, dossier.filePath(nom)));
        s.dossier_depart = dossier.path().toStdString();
        m = std::make_unique<menu>(s);
        m->fin_programme = [](int) {};
        m->resize(1366, 768);
        m->show();
        const std::string mat[] = {"I_corps[0][0]=60", "I_corps[1][1]=62",   "I_corps[2][2]=3",
                                   "dip_res[0]=0",     "dip_res[1]=0",       "dip_res[2]=0",
                                   "md[0]=2",          "ld[0]=1.5",          "c[0]=0.004",
                                   "k[0]=0.0000062",   "orb_inclinaison=98", "orb_demi=7078"};
        std::string raison;
        ASSERT_TRUE(change_champs(s, mat, raison)) << raison;
        controle<QAction>(m.get(), "mn_page_banc")->trigger();
        p = m->findChild<page_banc*>();
        t = p->findChild<traces*>();
        emit p->configuration_changee({});
        ASSERT_TRUE(attend());
    }
    bool attend() {
        QApplication::processEvents();
        return QTest::qWaitFor([this] { return p->resultat() && !p->calcule_en_cours(); }, 30000);
    }
    /// Each entry is a step of its own, and a run that follows.
    void saisit(const char* boite, const QString& texte) {
        tape(p, boite, texte, Qt::Key_Return);
        ASSERT_TRUE(attend());
    }
    void choisit(const QString& liste, int k) {
        auto* c = controle<QComboBox>(p, liste);
        c->setCurrentIndex(k);
        emit c->activated(k);
        ASSERT_TRUE(attend());
    }
    const serie& courbe(const char* nom) const { return p->resultat()->cherche(nom)->valeurs; }
    QString a_annuler() const { return m->findChild<QAction*>("mn_annuler")->text(); }
    /// The column of the batch program's run of the same étude.
    QList<double> du_batch(const QString& colonne) {
        std::string raison;
        EXPECT_TRUE(sauve_etude(dossier.filePath("e.kestrel").toStdString(), s, raison)) << raison;
        QProcess b;
        b.start(KESTREL_BATCH, {"attitude", "--etude", dossier.filePath("e.kestrel"), "--modele", "physique",
                                "--colonnes", colonne});
        EXPECT_TRUE(b.waitForFinished()) << b.errorString().toStdString();
        EXPECT_EQ(b.exitCode(), 0) << b.readAllStandardError().toStdString();
        QList<double> l;
        for (const QByteArray& ligne : b.readAllStandardOutput().split('\n').mid(1))
            if (!ligne.trimmed().isEmpty()) l << ligne.toDouble();
        return l;
    }
};

} // namespace

TEST_F(banc, a_mast_librates_its_damper_is_switched_off_and_on_again) {
    saisit("txt_banc_duree", "24");
    EXPECT_TRUE(a_annuler().contains("Durée 1.6 → 24 h")) << a_annuler().toStdString();
    saisit("txt_banc_pas", "60");
    saisit("txt_banc_tangage", "15");
    saisit("txt_banc_omega_1", "0,0607");
    EXPECT_TRUE(a_annuler().contains("0 → 0.0607 deg/s")) << a_annuler().toStdString();
    EXPECT_NEAR((s.periode.j_fin - s.periode.j_debut) * 24, 24, 1e-6);
    EXPECT_EQ(s.periode.pas_sim, 60);

    // The chart's numbers are those of the batch program, to the last digit.
    const QList<double> tangage = du_batch("tangage");
    ASSERT_EQ(courbe("tangage").taille(), std::size_t(tangage.size()));
    ASSERT_GT(tangage.size(), 1000);
    for (const qsizetype i : {0LL, 100LL, 1000LL})
        EXPECT_EQ(courbe("tangage").valeur(std::size_t(i)), tangage[i]) << i;
    const trace_courbe& tracee = t->dessin().graphiques[0].courbes[1];
    EXPECT_EQ(tracee.titre, "Tangage");
    EXPECT_EQ(tracee.donnees->valeur(100), tangage[100]);

    // The damper brings it under five degrees for good; without it nothing does.
    EXPECT_TRUE(label(p, "lab_banc_reponse").contains("pour de bon après"))
        << label(p, "lab_banc_reponse").toStdString();
    clique(p, "chk_banc_amortisseurs");
    ASSERT_TRUE(attend());
    EXPECT_TRUE(s.modele.sans_amortisseurs);
    EXPECT_TRUE(label(p, "lab_banc_reponse").contains("n'y reste pas"));
    EXPECT_TRUE(a_annuler().contains("amortisseurs à ressort avec → sans")) << a_annuler().toStdString();
    controle<QAction>(m.get(), "mn_annuler")->trigger();
    ASSERT_TRUE(attend());
    EXPECT_TRUE(controle<QCheckBox>(p, "chk_banc_amortisseurs")->isChecked());
    EXPECT_EQ(courbe("tangage").valeur(1000), tangage[1000]);

    // Another level, and a date on the slider that the view shows as it is.
    tape(p, "txt_banc_seuil", "100", Qt::Key_Return);
    EXPECT_TRUE(label(p, "lab_banc_reponse").contains("sous 100° du début à la fin"));
    rotation montree;
    QObject::connect(p, &page_banc::attitude_montree, p,
                     [&](const orbit_state&, double, const rotation& A) { montree = A; });
    controle<QAbstractButton>(p, "cmd_banc_vue")->click();
    t->va_evenement(1);
    const auto* vue = p->findChild<vue3d_datee*>();
    ASSERT_NE(vue, nullptr);
    for (const vec3& axe : {vec3{1, 0, 0}, vec3{0, 0, 1}})
        EXPECT_LT(vec_norme(vec_difference(corps_vers_inertiel(vue->etat(), axe), montree.depuis_corps(axe))),
                  1e-4);

    tape(p, "txt_banc_duree", "-3", Qt::Key_Return);
    EXPECT_TRUE(messages.join("").contains("il faut plus que 0"));
    EXPECT_NEAR((s.periode.j_fin - s.periode.j_debut) * 24, 24, 1e-6);
}

TEST_F(banc, a_tumbling_satellite_is_braked_and_its_coils_saturate) {
    choisit("cbo_banc_loi", 1);
    EXPECT_TRUE(a_annuler().contains("loi aucune → B-dot")) << a_annuler().toStdString();
    EXPECT_EQ(t->dessin().graphiques[0].courbes[0].nom, "omega_x") << "the charts follow the law";
    for (const char* boite : {"txt_banc_omega_0", "txt_banc_omega_1", "txt_banc_omega_2"}) saisit(boite, "3");
    saisit("txt_banc_gain", "1e6");
    saisit("txt_banc_dipole_max", "0,5");
    EXPECT_EQ(s.modele.controle.dipole_max, .5);
    EXPECT_TRUE(label(p, "lab_banc_etat").contains("saturation : dipôle maximal (x "));
    EXPECT_TRUE(label(p, "lab_banc_etat").contains(" fois, y ")) << label(p, "lab_banc_etat").toStdString();
    EXPECT_LE(m->minimumSizeHint().width(), 960) << "the words about them fold";
    EXPECT_EQ(courbe("energie").valeur(20), du_batch("energie")[20]);
    EXPECT_LT(courbe("energie").valeurs().back(), .9 * courbe("energie").valeur(0));
    const bool marquee =
        std::any_of(t->dessin().evenements.begin(), t->dessin().evenements.end(),
                    [](const trace_evenement& e) { return e.texte.contains("Magnétocoupleur"); });
    EXPECT_TRUE(marquee);

    choisit("cbo_banc_loi", 2); // no wheel: it is said
    EXPECT_TRUE(label(p, "lab_banc_controle").contains("pas de roue sur l'axe x"));
    EXPECT_TRUE(controle<QWidget>(p, "txt_banc_frequence")->isVisible());
    EXPECT_FALSE(controle<QWidget>(p, "txt_banc_gain")->isVisible());
}

TEST_F(banc, the_model_is_chosen_once_and_every_title_says_so) {
    fenetre* complete = m->montre_fenetre("power_sim_all");
    const QString avant = complete->windowTitle();
    s.modes = {
        {.nom = "TX", .puissance = 12, .quand = {.genre = genre_quand::station, .station = "Nulle part"}}};
    choisit("cbo_modele", 1);
    EXPECT_TRUE(s.modele.physique);
    EXPECT_EQ(complete->windowTitle(), avant + " – modèle physique");
    EXPECT_TRUE(m->windowTitle().contains("modèle physique"));
    EXPECT_TRUE(
        label(complete, "lab_note").contains("Un mode de consommation s'ajoute à la demande, 12,0 W"));
    const fenetre* attitude = m->montre_fenetre("att_sim");
    EXPECT_TRUE(attitude->windowTitle().endsWith("modèle physique"));
    EXPECT_TRUE(label(attitude, "lab_note").contains("modèle de référence"));
    EXPECT_TRUE(controle<QAction>(m.get(), "mn_modele_physique")->isChecked());

    controle<QAction>(m.get(), "mn_page_bilan")->trigger();
    EXPECT_TRUE(label(m.get(), "lab_stations_inconnues").contains("« TX » : la station « Nulle part »"));
    controle<QAction>(m.get(), "mn_page_etudes")->trigger();
    EXPECT_TRUE(label(m.get(), "lab_base_etude").startsWith("Modèle physique. Un mode de consommation"));
    controle<QAction>(m.get(), "mn_annuler")->trigger();
    EXPECT_FALSE(s.modele.physique);
    EXPECT_EQ(complete->windowTitle(), avant);
    EXPECT_TRUE(controle<QLabel>(complete, "lab_note")->isHidden()) << "the mode came with that step";
    controle<QAction>(m.get(), "mn_modele_physique")->trigger();
    EXPECT_TRUE(s.modele.physique);
    ASSERT_TRUE(attend());
    EXPECT_TRUE(a_annuler().contains("Modèle de référence → physique")) << a_annuler().toStdString();
}

TEST_F(banc, a_long_run_waits_for_the_button_and_stops) {
    tape(p, "txt_banc_duree", "20000", Qt::Key_Return);
    auto* calcule = controle<QPushButton>(p, "cmd_banc_calcule");
    ASSERT_TRUE(calcule->isEnabled());
    EXPECT_FALSE(p->calcule_en_cours());
    calcule->click();
    QTest::qWait(150);
    controle<QPushButton>(p, "cmd_banc_arrete")->click();
    ASSERT_TRUE(attend());
    EXPECT_TRUE(p->resultat()->partiel);
    EXPECT_GT(courbe("roulis").taille(), 5u);
    EXPECT_LT(p->resultat()->fin, s.periode.j_fin - 1);
    EXPECT_TRUE(label(p, "lab_banc_etat").contains("partiel"));

    // A body that cannot turn is told, and the bench goes on once it is mended.
    saisit("txt_banc_duree", "2");
    const auto inertie = [&](const std::string& valeur) {
        const std::string entrees[] = {"I_corps[0][0]=" + valeur};
        std::string raison;
        ASSERT_TRUE(change_champs(s, entrees, raison)) << raison;
        p->rafraichit();
        ASSERT_TRUE(attend());
    };
    inertie("0");
    EXPECT_TRUE(label(p, "lab_banc_reponse").contains("ne peut pas être calculée"));
    EXPECT_TRUE(label(p, "lab_banc_etat").contains("division par zéro"))
        << label(p, "lab_banc_etat").toStdString();
    inertie("60");
    EXPECT_FALSE(p->resultat()->partiel);
    EXPECT_GT(courbe("roulis").taille(), 5u);
}
