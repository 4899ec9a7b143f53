/// The report as its reader has it: the page of the batch program, and the file of the menu.
#include <gtest/gtest.h>

#include <QAction>
#include <QRegularExpression>
#include <QTest>
#include <QXmlStreamReader>

#include "analysis/phrase_bilan.h"
#include "analysis/rapport.h"
#include "project/etude_fichier.h"
#include "shell/windows/menu.h"
#include "tests/batch/lance_batch.h"
#include "tests/gestes.h"

namespace {

using rapport_essai = gestes::essai_fenetres;

const std::string exemples = DOSSIER_DATA "/exemples/";

/// What an XML reader finds in the page.
struct page_lue {
    QString faute, phrase;
    QStringList cases;                        ///< of the tables, row by row
    QHash<QString, QList<QPolygonF>> courbes; ///< of each drawing, by its title
};

page_lue lit_page(const std::string& html) {
    page_lue p;
    QXmlStreamReader x(QByteArray::fromStdString(html));
    QString dessin;
    while (!x.atEnd()) {
        x.readNext();
        if (!x.isStartElement()) continue;
        const QString classe = x.attributes().value("class").toString();
        if (x.name() == u"title")
            dessin = x.readElementText();
        else if (classe == "phrase")
            p.phrase = x.readElementText();
        else if (x.name() == u"td")
            p.cases << x.readElementText();
        else if (x.name() == u"polyline") {
            QPolygonF points;
            for (const QString& couple : x.attributes().value("points").toString().split(' '))
                points << QPointF(couple.section(',', 0, 0).toDouble(), couple.section(',', 1).toDouble());
            p.courbes[dessin] << points;
        }
    }
    if (x.hasError()) p.faute = x.errorString();
    return p;
}

TEST_F(rapport_essai, page_tells_the_budget_of_the_etude) {
    const std::string fichiers = "--orb " + exemples + "microsatellite.orb --pwr " + exemples +
                                 "microsatellite.pwr --champ p_demand[0]=120";
    const auto r = lance_batch("rapport " + fichiers + " --note 'a < b & \"c\"'");
    ASSERT_EQ(r.statut, 0) << r.erreurs;
    const page_lue p = lit_page(r.sortie);
    EXPECT_EQ(p.faute, "");

    // The same étude by the budget's own command, its rows and its words.
    std::string raison;
    const std::string chemin = dossier.filePath("e.kestrel").toStdString();
    ASSERT_EQ(lance_batch("etude " + fichiers + " -o " + chemin).statut, 0);
    etude e;
    ASSERT_TRUE(charge_etude(chemin, e, raison)) << raison;
    const bilan b = calcule_bilan(e);
    EXPECT_EQ(p.phrase.toStdString(), phrase_bilan(b, criteres_en_vigueur(e)));
    const auto mieux =
        QRegularExpression("d'environ (\\d+) W au lieu de (\\d+) W").match(QString::fromStdString(r.sortie));
    ASSERT_TRUE(mieux.hasMatch());
    EXPECT_LT(mieux.captured(1).toInt(), mieux.captured(2).toInt());
    EXPECT_NE(r.sortie.find("début de vie"), std::string::npos);
    const auto csv = lance_batch("bilan " + fichiers + " --colonnes e_gen,e_pertes,dod,t_pan_max,marge");
    const QStringList lignes = QString::fromStdString(csv.sortie).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lignes.size() - 1, qsizetype(b.tours.size()));
    for (const QString& ligne : lignes.mid(1)) {
        const QStringList n = ligne.split(',');
        for (int k = 0; k < 5; ++k)
            EXPECT_TRUE(p.cases.contains(QString::fromStdString(nombre_fr(n[k].toDouble(), k < 2 ? 2 : 1))))
                << ligne.toStdString() << " " << k;
    }

    // A point for each step of the last turn, within the frame; a legend line behind each curve.
    const auto puissances = p.courbes["Puissances de la dernière orbite"];
    ASSERT_EQ(puissances.size(), 4);
    for (const QPolygonF& c : puissances) {
        EXPECT_EQ(c.size(), std::lround(b.tours.back().duree / e.periode.pas_sim));
        EXPECT_GE(c.boundingRect().top(), 24);
        EXPECT_LE(c.boundingRect().bottom(), 168);
        EXPECT_NEAR(c.boundingRect().right(), 706, 0.01);
    }
}

TEST_F(rapport_essai, studies_at_the_edge_are_told_and_not_lost) {
    // A fault in the first turn, a geostationary orbit, a turn shorter than the step.
    for (const auto& [options, statut] : {std::pair("--champ bat_c=1e-30", 3),
                                          {"--champ orb_demi=42164", 0},
                                          {"--pas 9000", 0},
                                          {"--modele physique --orbites 1", 0}}) {
        const auto r = lance_batch(std::string("rapport ") + options);
        EXPECT_EQ(r.statut, statut) << options << r.erreurs;
        EXPECT_EQ(lit_page(r.sortie).faute, "") << options;
    }
    const auto cylindre =
        lance_batch("rapport --orb " + exemples + "cylindre.orb --pwr " + exemples + "cylindre.pwr");
    EXPECT_NE(cylindre.sortie.find("ici (0,60 m), multipliez-la par 0,30"), std::string::npos);
    const auto froid = lance_batch("rapport --orb " + exemples + "microsatellite.orb --pwr " + exemples +
                                   "microsatellite.pwr --champ criteres.t_bat_min=20");
    EXPECT_EQ(QString::fromStdString(froid.sortie).count("✗ non tenu"), 1);
    EXPECT_EQ(lance_batch("rapport -o /nulle/part.html").statut, 1);
    EXPECT_EQ(lance_batch("rapport -o x.pdf").statut, 2);
}

TEST_F(rapport_essai, menu_writes_both_forms_and_tells_what_it_cannot_write) {
    s.dossier_depart = DOSSIER_DATA;
    menu m(s);
    m.show();
    QString choisi;
    m.choisit_fichier = [&](QWidget*, const demande_fichier&) { return choisi; };
    auto* commande = m.findChild<QAction*>("mn_etude_rapport");
    ASSERT_TRUE(commande);
    for (const QString fin : {"pdf", "html"}) {
        choisi = dossier.filePath("r." + fin);
        commande->trigger();
        ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(choisi); }, 30000)) << fin.toStdString();
    }
    const std::string pdf = lit(dossier.filePath("r.pdf").toStdString());
    EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
    EXPECT_GT(pdf.size(), 20000U);
    EXPECT_EQ(lit_page(lit(choisi.toStdString())).faute, "");
    choisi = dossier.filePath("nulle/part.pdf");
    commande->trigger();
    ASSERT_TRUE(QTest::qWaitFor([] { return !gestes::messages.isEmpty(); }, 30000));
    EXPECT_TRUE(gestes::messages[0].contains("n'a pas pu"));
}

} // namespace
