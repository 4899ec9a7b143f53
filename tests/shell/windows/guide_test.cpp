/// The guide as it is delivered (docs/guide.md), read in its window: contents, pictures, search, F1.
#include "shell/windows/guide.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeWidget>
#include <QtTest>

#include "shell/windows/fenetres.h"
#include "shell/windows/menu.h"
#include "shell/windows/menu_actions.h"
#include "tests/gestes.h"

namespace {

class ecran : public gestes::essai_fenetres {
protected:
    void SetUp() override {
        s.dossier_depart =
            trouve_dossier_depart(dossier.path().toStdString(), {}, {std::string(DOSSIER_DATA)});
        ASSERT_FALSE(guide::fichier(s).isEmpty());
        principale.reset(new menu(s));
        principale->fin_programme = [](int) {};
        principale->show();
    }

    QStringList titres() {
        QStringList liste;
        for (QTreeWidgetItemIterator i(g->findChild<QTreeWidget*>("sommaire")); *i; ++i)
            liste << (*i)->text(0);
        return liste;
    }
    /// Number of pictures; each must be there and no wider than the text.
    int images_a_la_largeur() {
        int images = 0;
        for (QTextBlock b = texte->document()->begin(); b.isValid(); b = b.next())
            for (auto i = b.begin(); !i.atEnd(); ++i) {
                const QTextImageFormat f = i.fragment().charFormat().toImageFormat();
                if (!f.isValid()) continue;
                ++images;
                const auto image =
                    texte->document()->resource(QTextDocument::ImageResource, f.name()).value<QImage>();
                EXPECT_FALSE(image.isNull()) << qPrintable(f.name());
                EXPECT_LT(image.width() / image.devicePixelRatio(), texte->viewport()->width());
            }
        return images;
    }
    /// The heading over the first line that is shown.
    QString section_lue() {
        QTextBlock b = texte->cursorForPosition({20, 40}).block();
        while (b.isValid() && b.blockFormat().headingLevel() < 2) b = b.previous();
        return b.text();
    }
    void ouvre_guide() {
        g = principale->montre_fenetre("guide");
        texte = g->findChild<QTextBrowser*>("txt_guide");
        ASSERT_TRUE(QTest::qWaitForWindowActive(g));
        attend_la_largeur();
    }
    /// The pictures take the width of the window a moment after it changes.
    void attend_la_largeur() {
        QApplication::processEvents();
        const auto* regard = texte->findChild<QTimer*>("apres_taille");
        ASSERT_TRUE(QTest::qWaitFor([&] { return !regard->isActive(); }, 60'000));
    }

    std::unique_ptr<menu> principale;
    fenetre* g = nullptr;
    QTextBrowser* texte = nullptr;
};

} // namespace

TEST_F(ecran, every_window_has_its_section_and_every_picture_is_there) {
    ouvre_guide();
    const QStringList liste = titres();
    for (const entree_menu& e : entrees_menu()) {
        const QString nom = e.fenetre;
        if (nom.isEmpty() || nom == "guide") continue;
        EXPECT_TRUE(liste.contains(guide::titre_page(guide::page_de(nom)))) << qPrintable(nom);
    }
    EXPECT_GT(images_a_la_largeur(), 10);
    EXPECT_LE(texte->document()->size().width(), texte->viewport()->width());
    g->resize(g->width() - 300, g->height());
    attend_la_largeur();
    EXPECT_GT(images_a_la_largeur(), 10);
}

TEST_F(ecran, f1_opens_the_section_of_the_window_and_the_contents_lead_anywhere) {
    fenetre* reglages = principale->montre_fenetre("power_conf", 3);
    ASSERT_TRUE(QTest::qWaitForWindowActive(reglages));
    QTest::keyClick(reglages, Qt::Key_F1);
    ouvre_guide();
    EXPECT_EQ(section_lue(), "Réglages du système énergie");

    auto* sommaire = g->findChild<QTreeWidget*>("sommaire");
    const auto trouves = sommaire->findItems("Étude d'une batterie", Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(trouves.size(), 1);
    sommaire->scrollToItem(trouves[0]);
    QTest::mouseClick(sommaire->viewport(), Qt::LeftButton, {},
                      sommaire->visualItemRect(trouves[0]).center());
    EXPECT_EQ(section_lue(), "Étude d'une batterie");
    // Reading on moves the mark of the contents.
    texte->verticalScrollBar()->setValue(0);
    EXPECT_NE(sommaire->currentItem(), trouves[0]);

    g->resize(g->width() - 200, g->height());
    attend_la_largeur();
    EXPECT_EQ(titres().count("Étude d'une batterie"), 1);
    QTest::keyClick(texte, Qt::Key_Escape);
    EXPECT_FALSE(g->isVisible());
}

TEST_F(ecran, f1_in_a_box_opens_the_entry_of_its_setting) {
    const struct {
        const char *fenetre, *boite, *titre;
        QStringList dit;
    } cas[] = {
        {"power_conf",
         "bat_txt_c",
         "Capacité nominale · bat_c",
         {"unité Ah", "supérieur à 0", "10 par défaut", "Symbole C", "Formule : "}},
        {"power_conf",
         "bat_txt_och_3",
         "Courbe de charge · ch_pt",
         {"surcharge", "[3] tension du point (V)", "Source : "}},
        {"att_conf", "dip_y", "Dipôle résiduel · dip_res", {"D × B", "IGRF"}},
        {"orbito_conf", "norad_excentricite", "Excentricité · orb_excentricite", {"de 0 à", "E - e sin E"}},
        {"orbito_conf", "Chk_spin", "Rotation · spin", {"Non par défaut"}},
        {"menu", "cmb_pas", "Pas · pas", {"unité s", "au moins 1 ;"}},
    };
    for (const auto& c : cas) {
        QWidget* f = principale.get();
        if (QString(c.fenetre) != "menu") f = principale->montre_fenetre(c.fenetre);
        f->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(f));
        auto* boite = f->findChild<QWidget*>(c.boite);
        ASSERT_TRUE(boite) << c.boite;
        gestes::montre_page_de(boite);
        boite->setEnabled(true);
        boite->setFocus();
        QTest::keyClick(boite, Qt::Key_F1);
        ouvre_guide();
        const QTextBlock titre = texte->textCursor().block();
        EXPECT_EQ(titre.text(), c.titre);
        EXPECT_TRUE(texte->viewport()->rect().contains(texte->cursorRect().center())) << c.boite;
        QString entree;
        for (QTextBlock b = titre.next(); b.isValid() && !b.blockFormat().headingLevel(); b = b.next())
            entree += b.text().replace(QChar::Nbsp, ' ') + '\n';
        for (const QString& dit : c.dit)
            EXPECT_TRUE(entree.contains(dit)) << qPrintable(dit + " in: " + entree);
        g->close();
    }
}

TEST_F(ecran, search_goes_round_and_says_when_there_is_nothing) {
    ouvre_guide();
    QTest::keyClick(texte, Qt::Key_F, Qt::ControlModifier);
    auto* boite = g->findChild<QLineEdit*>("txt_cherche");
    auto* dit = g->findChild<QLabel*>("lab_cherche");
    ASSERT_TRUE(boite->hasFocus());
    QTest::keyClicks(boite, "profondeur");
    QTest::keyClick(boite, Qt::Key_Return);
    EXPECT_EQ(texte->textCursor().selectedText().toLower(), "profondeur");
    const int premiere = texte->textCursor().position();
    QTest::keyClick(boite, Qt::Key_Return);
    EXPECT_GT(texte->textCursor().position(), premiere);
    QTest::keyClick(boite, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(texte->textCursor().position(), premiere);
    QTest::keyClick(boite, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_GT(texte->textCursor().position(), premiere); // round by the end
    EXPECT_EQ(dit->text(), "reprise à l'autre bout");

    boite->clear();
    QTest::keyClicks(boite, "zzzz");
    QTest::keyClick(boite, Qt::Key_Return);
    EXPECT_EQ(dit->text(), "introuvable");
    EXPECT_EQ(texte->textCursor().selectedText().toLower(), "profondeur"); // the place is kept
}

TEST_F(ecran, a_dark_palette_keeps_the_place_and_the_text_readable) {
    ouvre_guide();
    g->montre_page(guide::page_de("att_sim"));
    QPalette fonce = qApp->palette(), clair = fonce;
    fonce.setColor(QPalette::Window, QColor(45, 45, 48));
    fonce.setColor(QPalette::Base, QColor(30, 30, 32));
    fonce.setColor(QPalette::Text, Qt::white);
    fonce.setColor(QPalette::AlternateBase, QColor(50, 50, 52));
    qApp->setPalette(fonce);
    const auto sombre = [&] {
        int blocs = 0;
        for (QTextBlock b = texte->document()->begin(); b.isValid(); b = b.next())
            if (b.blockFormat().hasProperty(QTextFormat::BlockCodeFence)) {
                if (b.blockFormat().background().color().lightness() >= 80) return false;
                ++blocs;
            }
        return blocs > 0;
    };
    EXPECT_TRUE(QTest::qWaitFor(sombre, 60'000));
    EXPECT_EQ(section_lue(), "Simulation de l'attitude");
    qApp->setPalette(clair);
}
