/// "Chercher…" (Ctrl+K): settings, variables and commands by a part of their name, and the way there.
#include "shell/windows/recherche.h"

#include <QComboBox>
#include <QSlider>
#include <QTreeWidget>

#include "project/etude_champs.h"
#include "shell/windows/etabli.h"
#include "shell/windows/menu.h"
#include "tests/gestes.h"
#include "widgets/acces.h"
#include "widgets/fenetre.h"

namespace {

struct ecran : gestes::essai_fenetres {
    std::unique_ptr<menu> m;

    void SetUp() override {
        s.dossier_depart = dossier.path().toStdString();
        m = std::make_unique<menu>(s);
        m->fin_programme = [](int) {};
        m->show();
    }
    /// Ctrl+K, words, Enter; the first line found.
    QString cherche(const QString& mots) {
        m->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m.get()));
        QString premiere;
        QTimer regard;
        QObject::connect(&regard, &QTimer::timeout, [&] {
            auto* boite = qobject_cast<recherche*>(QApplication::activeModalWidget());
            if (!boite) return;
            regard.stop();
            auto* texte = boite->findChild<QLineEdit*>("txt_recherche");
            QTest::keyClicks(texte, mots);
            premiere = boite->findChild<QListWidget*>()->item(0)->text();
            QTest::keyClick(texte, Qt::Key_Return);
            if (boite->isVisible()) boite->reject(); // nothing found
        });
        regard.start(5);
        QTest::keyClick(m.get(), Qt::Key_K, Qt::ControlModifier);
        return premiere;
    }
    /// The box in focus, once the window that holds it is in front.
    static QString en_main(const char* nom) {
        (void)QTest::qWaitFor([nom] {
            return QApplication::focusWidget() && QApplication::focusWidget()->objectName() == nom;
        });
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
    }
};

} // namespace

TEST_F(ecran, a_setting_is_found_by_name_title_or_unit_and_its_box_has_the_focus) {
    EXPECT_TRUE(cherche("bat_c").startsWith("Capacité nominale (Ah)")); // before bat_cmax
    EXPECT_EQ(en_main("bat_txt_c"), "bat_txt_c");
    EXPECT_TRUE(cherche("demi grand axe").startsWith("Demi-grand axe (kms)"));
    EXPECT_EQ(en_main("norad_demi"), "norad_demi");
    EXPECT_TRUE(cherche("chaleur specifique j/kg noeud").contains("ext_cp[8]"));
    EXPECT_EQ(en_main("thex_txt_cp_3"), "thex_txt_cp_3");
    // An element behind a list is brought there.
    EXPECT_TRUE(cherche("albedo mars").startsWith("Albédo de mars"));
    EXPECT_EQ(en_main("env_txt_albedo"), "env_txt_albedo");
    EXPECT_EQ(champ_du_controle(QApplication::focusWidget()), "energie.albedo[2]");
    EXPECT_TRUE(cherche("emissivite face -y").contains("ext_eps[5]"));
    EXPECT_EQ(en_main("thex_txt_eps_2"), "thex_txt_eps_2");
    EXPECT_EQ(champ_du_controle(QApplication::focusWidget()), "energie.ext_eps[5]");
    // Of another window, of a page, of the main window.
    EXPECT_TRUE(cherche("omega_init[1]").contains("deg/s"));
    EXPECT_EQ(en_main("txt_theta"), "txt_theta");
    EXPECT_TRUE(cherche("marge_min").startsWith("Marge d'énergie demandée (%)"));
    EXPECT_EQ(m->findChild<etabli*>()->courante(), "page_bilan");
    EXPECT_EQ(en_main("txt_marge_min"), "txt_marge_min");
    EXPECT_TRUE(cherche("periode fin jours 1950").startsWith("Fin"));
    EXPECT_EQ(en_main("txt_date_fin"), "txt_date_fin");
    // One that has no effect now says so.
    EXPECT_TRUE(cherche("cyl_cond").contains("cyl_cond"));
    EXPECT_TRUE(gestes::bandeau(gestes::fenetre_ouverte("power_conf")).contains("ne sert pas"));
}

TEST_F(ecran, a_variable_opens_its_curve_and_a_command_runs) {
    EXPECT_TRUE(cherche("gen_power").contains("Courbe"));
    auto* e = m->findChild<etabli*>();
    EXPECT_EQ(e->courante(), "page_courbes");
    const auto courbes = [&] {
        QStringList noms;
        for (QTreeWidgetItemIterator i(e->de("page_courbes")->findChild<QTreeWidget*>()); *i; ++i)
            if ((*i)->parent()) noms << (*i)->toolTip(0);
        return noms;
    };
    const QStringList avant = courbes();
    EXPECT_EQ(avant.count("gen_power"), 1); // it was there
    cherche("sat_alt");
    EXPECT_EQ(courbes().size(), avant.size() + 1);
    EXPECT_EQ(courbes().last(), "sat_alt");
    EXPECT_TRUE(cherche("page d'accueil").startsWith("Page d'accueil"));
    EXPECT_EQ(e->courante(), "accueil");
}

/// Whatever the étude holds and a window edits can be gone to.
TEST_F(ecran, every_setting_of_a_window_has_its_control) {
    QStringList sans;
    for (const champ_etude& c : etude_champs()) {
        if (c.annexe || c.liste || QString(c.fenetre).startsWith("page_") || !*c.fenetre) continue;
        QWidget* f =
            QString(c.fenetre) == "menu" ? static_cast<QWidget*>(m.get()) : m->montre_fenetre(c.fenetre);
        ASSERT_TRUE(f) << c.fenetre;
        if (!controle_du_champ(f, QString::fromStdString(chemin_element({&c, 0, 0})))) sans << c.nom.c_str();
    }
    EXPECT_TRUE(sans.isEmpty()) << qPrintable(sans.join(' '));
}
