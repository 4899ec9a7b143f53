/// Draws the pictures of the documents: the real windows with the sample projects, used as a person does.
/// Started by docs/captures.sh: kestrel_captures DATA_FOLDER PICTURE_FOLDER [NAME...]
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QStandardPaths>
#include <QStyle>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <cstdio>

#include "analysis/rapport.h"
#include "analysis/windows/page_annee.h"
#include "analysis/windows/rapport_pdf.h"
#include "shell/windows/exemples.h"
#include "shell/windows/frmFirst.h"
#include "shell/windows/menu.h"
#include "widgets/fenetre.h"
#include "widgets/style.h"

namespace {

constexpr int attente_max = 60000; // [ms]

/// A box of colours of the median cut: a range of the list of colours.
struct boite {
    qsizetype debut, fin;
    int canal = 0, etendue = 0; ///< the channel (shift of its byte) that spreads most, and how far
};

int composante(QRgb c, int canal) { return int(c >> canal) & 0xff; }

boite mesure(const QList<QRgb>& couleurs, qsizetype debut, qsizetype fin) {
    boite b{debut, fin};
    for (const int canal : {0, 8, 16}) {
        int min = 255, max = 0;
        for (qsizetype i = debut; i < fin; ++i) {
            min = std::min(min, composante(couleurs[i], canal));
            max = std::max(max, composante(couleurs[i], canal));
        }
        if (max - min > b.etendue) b.canal = canal, b.etendue = max - min;
    }
    return b;
}

/// The picture in 256 colours: the most frequent ones as they are, so that flat areas keep their colour, and
/// the others by median cut (P. Heckbert, 1982). Documents stay small.
QImage reduit(const QImage& image) {
    constexpr qsizetype taille = 256, gardees = 128;
    QHash<QRgb, int> nombre;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) ++nombre[image.pixel(x, y)];
    QList<QRgb> couleurs = nombre.keys();
    std::sort(couleurs.begin(), couleurs.end(), [&](QRgb a, QRgb b) {
        return nombre[a] != nombre[b] ? nombre[a] > nombre[b] : a < b; // the same picture each time
    });
    QList<QRgb> table = couleurs.mid(0, couleurs.size() <= taille ? taille : gardees);
    couleurs.remove(0, table.size());
    QList<boite> boites;
    if (!couleurs.isEmpty()) boites << mesure(couleurs, 0, couleurs.size());
    while (!boites.isEmpty() && boites.size() < taille - table.size()) {
        const auto large = std::max_element(boites.begin(), boites.end(), [](const boite& a, const boite& b) {
            return a.etendue < b.etendue;
        });
        if (large->etendue == 0) break;
        const boite b = *large;
        std::sort(couleurs.begin() + b.debut, couleurs.begin() + b.fin,
                  [&](QRgb x, QRgb y) { return composante(x, b.canal) < composante(y, b.canal); });
        const qsizetype milieu = (b.debut + b.fin) / 2;
        *large = mesure(couleurs, b.debut, milieu);
        boites << mesure(couleurs, milieu, b.fin);
    }
    for (const boite& b : boites) table << couleurs[(b.debut + b.fin) / 2];
    return image.convertToFormat(QImage::Format_Indexed8, table, Qt::ThresholdDither);
}

/// The program with one sample open, and the camera.
class studio {
public:
    studio(const QString& donnees, const QString& images, const QStringList& choix)
        : images_(images), choix_(choix) {
        s.dossier_depart = trouve_dossier_depart(dossier_.path().toStdString(), {}, {donnees.toStdString()});
        principale = std::make_unique<menu>(s);
        principale->fin_programme = [](int) {};
        principale->resize(1080, 640);
        principale->show();
        attend(200);
    }

    void ouvre(const char* nom) {
        for (const exemple& e : lit_exemples(QString::fromStdString(s.dossier_depart)))
            if (e.base.endsWith(QLatin1String(nom))) principale->ouvre_exemple(e);
    }

    /// The window of a name at a page and a size; nullptr, told, when the program has none.
    fenetre* montre(const char* nom, int page = -1, QSize taille = {}) {
        fenetre* f = principale->montre_fenetre(nom, page);
        if (!f) {
            std::fprintf(stderr, "pas de fenêtre %s\n", nom);
            return nullptr;
        }
        if (taille.isValid()) f->resize(taille);
        (void)QTest::qWaitForWindowActive(f);
        attend(300);
        return f;
    }

    /// `nom`.png, in 256 colours.
    void photo(QWidget* w, const char* nom) {
        if (!w || (!choix_.isEmpty() && !choix_.contains(QLatin1String(nom)))) return;
        const QImage image = reduit(w->grab().toImage().convertToFormat(QImage::Format_RGB32));
        const QString chemin = images_ + "/" + nom + ".png";
        if (!image.save(chemin, "PNG", 0)) {
            std::fprintf(stderr, "%s : écriture impossible\n", qPrintable(chemin));
            ++echecs;
        }
    }

    static void attend(int ms) { QTest::qWait(ms); }

    session s;
    std::unique_ptr<menu> principale;
    int echecs = 0;

private:
    QTemporaryDir dossier_;
    QString images_;
    QStringList choix_;
};

template <class T>
T* controle(QWidget* f, const char* nom) {
    T* c = f->findChild<T*>(QLatin1String(nom));
    if (!c) std::fprintf(stderr, "%s : pas de contrôle %s\n", qPrintable(f->objectName()), nom);
    return c;
}

void clique(QWidget* f, const char* nom) {
    if (auto* b = controle<QAbstractButton>(f, nom)) b->click();
}

void premiers_pas(studio& st) {
    frmFirst premiere(st.s);
    premiere.show();
    (void)QTest::qWaitForWindowExposed(&premiere);
    studio::attend(200);
    st.photo(&premiere, "premier_ecran");
    premiere.hide();
    // Start page and summary whole, as on a large screen; the verdicts come beside the window's thread.
    const QSize taille = st.principale->size();
    st.principale->resize(1366, 740);
    studio::attend(3000);
    st.photo(st.principale.get(), "accueil");
    st.principale->resize(1366, 950);
    st.ouvre("microsatellite");
    studio::attend(1500);
    st.photo(st.principale.get(), "resume");
    st.principale->resize(taille);
}

/// The first page of the report, dated as the documents are.
void page_du_rapport(studio& st) {
    const rapport r = fait_rapport(st.s, {.titre = "microsatellite",
                                          .date = "21/11/2026",
                                          .version = VERSION_KESTREL,
                                          .orbites = 0,
                                          .dossier_donnees = st.s.dossier_depart,
                                          .arret = {}});
    QLabel page;
    page.setPixmap(QPixmap::fromImage(rapport_page(r, 0)));
    page.resize(page.sizeHint());
    st.photo(&page, "rapport");
}

/// The map at the highest point of a pass, chosen by a click.
void carte(studio& st) {
    clique(st.principale.get(), "rail_page_carte");
    studio::attend(1500);
    auto* passages = controle<QTableView>(st.principale.get(), "grid_passages");
    QTest::mouseClick(passages->viewport(), Qt::LeftButton, {},
                      passages->visualRect(passages->model()->index(3, 1)).center());
    studio::attend(500);
    st.photo(st.principale.get(), "carte");
    clique(st.principale.get(), "rail_resume_projet");
}

/// Two pages of the tutorials: the year of the first example, and the mast on the attitude bench.
void tutoriels(studio& st) {
    const QSize taille = st.principale->size();
    st.principale->resize(1366, 900);
    controle<QAction>(st.principale.get(), "mn_modele_physique")->trigger();
    clique(st.principale.get(), "rail_page_bilan");
    if (auto* annee = st.principale->findChild<page_annee*>())
        for (auto* onglets : st.principale->findChildren<QTabWidget*>())
            for (int i = 0; i < onglets->count(); ++i)
                if (onglets->widget(i) == annee || onglets->widget(i)->isAncestorOf(annee))
                    onglets->setCurrentIndex(i);
    studio::attend(2500);
    st.photo(st.principale.get(), "annee");
    controle<QAction>(st.principale.get(), "mn_annuler")->trigger();
    st.principale->resize(1200, 700);
    st.ouvre("mat");
    clique(st.principale.get(), "rail_page_banc");
    studio::attend(3000);
    st.photo(st.principale.get(), "banc");
    st.ouvre("microsatellite");
    clique(st.principale.get(), "rail_resume_projet");
    st.principale->resize(taille);
}

/// The complete simulation at full speed, until the charge has been through an eclipse and back in the Sun.
void simulation(studio& st) {
    fenetre* f = st.montre("power_sim_all", -1, {1180, 680});
    if (!f) return;
    auto* vitesse = controle<QComboBox>(f, "cmb_vitesse");
    vitesse->setCurrentIndex(vitesse->count() - 1);
    clique(f, "cmd_lance");
    const auto jusque = [&](auto condition) { return QTest::qWaitFor(condition, attente_max); };
    const power_record& p = st.s.power;
    const double debut = st.s.periode.j_debut, p_max = 2 * p.ext_area * 250;
    const auto minutes = [&] { return (st.s.periode.j_courant - debut) * 1440; };
    if (!jusque([&] { return p.eclipse != 0 && minutes() > 30 && p.t_discharge > 1200; })) ++st.echecs;
    clique(f, "cmd_pause");
    studio::attend(600);
    st.photo(f, "simulation_eclipse");
    clique(f, "cmd_lance");
    if (!jusque([&] { return p.eclipse == 0 && p.gen_power > 0.5 * p_max && minutes() > 150; })) ++st.echecs;
    clique(f, "cmd_pause");
    studio::attend(600);
    st.photo(f, "simulation_soleil");
    clique(f, "cmd_centre_satellite");
    if (auto* vue = controle<QWidget>(f, "Pict_visu3d"))
        for (const char* nom : {"act_soleil", "act_nadir", "act_vitesse", "act_champ", "act_faces_flux"})
            vue->findChild<QAction*>(QLatin1String(nom))->trigger();
    studio::attend(1500);
    st.photo(controle<QWidget>(f, "Pict_visu3d"), "vue3d");
    clique(f, "cmd_stop");
    studio::attend(200);
    f->close();
}

void orbite(studio& st) {
    const char* noms[] = {"orbito_orbite", "orbito_attitude", "orbito_environnement"};
    for (int page = 0; page < 3; ++page)
        if (fenetre* f = st.montre("orbito_conf", page, {1000, 560})) {
            st.photo(f, noms[page]);
            f->close();
        }
}

void energie(studio& st) {
    const char* noms[] = {"power_panneaux", "power_cellules", "power_thermique", "power_batteries",
                          "power_gestion"};
    for (int page = 0; page < 5; ++page)
        if (fenetre* f = st.montre("power_conf", page, {1080, 640})) {
            st.photo(f, noms[page]);
            f->close();
        }
}

void etudes(studio& st) {
    if (fenetre* f = st.montre("power_exp_pan", -1, {1080, 600})) {
        clique(f, "cmd_saisir");
        studio::attend(3000);
        st.photo(f, "etude_generateur");
        f->close();
    }
    if (fenetre* f = st.montre("power_exp_bat", -1, {1080, 600})) {
        for (const auto& [nom, texte] :
             {std::pair("txt_tecl", "34"), std::pair("txt_tchde", "15"), std::pair("txt_depuis", "0.222")}) {
            auto* boite = controle<QLineEdit>(f, nom);
            boite->setFocus();
            boite->selectAll();
            QTest::keyClicks(boite, texte);
            QTest::keyClick(boite, Qt::Key_Tab);
        }
        clique(f, "cmd_saisir");
        studio::attend(3000);
        st.photo(f, "etude_batterie");
        f->close();
    }
}

/// A variable of the list into a column, chosen as a person does.
void pose_colonne(fenetre* f, int colonne, const char* variable) {
    auto* liste = controle<QListWidget>(f, "list_var");
    const auto lignes = liste->findItems(QString::fromUtf8(variable), Qt::MatchStartsWith);
    if (lignes.isEmpty()) {
        std::fprintf(stderr, "pas de variable %s\n", variable);
        return;
    }
    liste->setCurrentItem(lignes.first());
    QTest::mouseClick(controle<QWidget>(f, qPrintable(QString("lab_col_%1").arg(colonne))), Qt::LeftButton);
}

void exploitation(studio& st, const char* nom, const QStringList& variables, QSize taille) {
    fenetre* f = st.montre(nom, -1, taille);
    if (!f) return;
    for (int c = 0; c < int(variables.size()); ++c) pose_colonne(f, c, qPrintable(variables[c]));
    clique(f, "cmd_saisir");
    studio::attend(1500);
}

void exploitation_energie(studio& st) {
    exploitation(st, "power_exp_data",
                 {"Puissance GS", "Puissance batterie", "Puissance utile", "Puissance excédente"},
                 {1120, 500});
    fenetre* f = st.montre("power_exp_data");
    if (!f) return;
    st.photo(f, "exploitation_tableau");
    clique(f, "opt_view_1");
    studio::attend(300);
    st.photo(f, "exploitation_graphe");
    f->close();
}

void attitude(studio& st) {
    const char* noms[] = {"att_masses", "att_proprietes", "att_actionneurs"};
    for (int page = 0; page < 3; ++page)
        if (fenetre* f = st.montre("att_conf", page, {1080, 620})) {
            st.photo(f, noms[page]);
            f->close();
        }
    exploitation(
        st, "att_exp_data",
        {"Couple radiation", "Couple frottement", "Couple magnétique", "Couple gradient", "Couple total"},
        {1120, 500});
    if (fenetre* f = st.montre("att_exp_data")) {
        clique(f, "opt_view_1");
        studio::attend(300);
        st.photo(f, "att_exploitation");
        f->close();
    }
    if (fenetre* f = st.montre("att_sim", -1, {1080, 640})) { // it runs when it opens
        studio::attend(3000);
        st.photo(f, "att_sim_bandeau");
        controle<QComboBox>(st.principale.get(), "cmb_pas")->setCurrentText("1 s");
        clique(f, "cmd_relance");
        studio::attend(5000);
        st.photo(f, "att_sim");
        f->close();
    }
}

/// The attitude bench: a mast that librates, with its 3D view; a satellite that is braked.
void banc(studio& st) {
    const QString exemples = QString::fromStdString(st.s.dossier_depart) + "/exemples/";
    const auto ouvre = [&](const char* nom) {
        st.s.gardee = st.s; // nothing to ask about
        st.principale->ouvre_etude(exemples + nom);
    };
    const QSize avant = st.principale->size();
    st.principale->resize(1366, 768);
    ouvre("mat.kestrel");
    clique(st.principale.get(), "rail_page_banc");
    studio::attend(1500);
    clique(st.principale.get(), "cmd_banc_vue");
    auto* curseur = controle<QWidget>(st.principale.get(), "temps_banc")->findChild<QSlider*>("curseur_date");
    curseur->setValue(curseur->maximum() / 4);
    studio::attend(2000);
    st.photo(st.principale.get(), "banc_libration");
    clique(st.principale.get(), "cmd_banc_vue");
    ouvre("culbute.kestrel");
    clique(st.principale.get(), "rail_page_banc");
    studio::attend(1500);
    st.photo(st.principale.get(), "banc_b_dot");
    st.principale->resize(avant);
    clique(st.principale.get(), "rail_resume_projet");
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        std::fprintf(stderr, "kestrel_captures DOSSIER_DATA DOSSIER_IMAGES [NOM...]\n");
        return 2;
    }
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName("kestrel-captures");
    QCoreApplication::setApplicationName(QString("captures-%1").arg(QCoreApplication::applicationPid()));
    QCoreApplication::setApplicationVersion(VERSION_KESTREL);
    style::applique(app);
    QGuiApplication::setQuitOnLastWindowClosed(false);

    studio st(arguments[1], arguments[2], arguments.mid(3));
    premiers_pas(st);
    page_du_rapport(st);
    carte(st);
    tutoriels(st);
    orbite(st);
    energie(st);
    simulation(st);
    etudes(st);
    exploitation_energie(st);
    attitude(st);
    banc(st);
    return st.echecs ? 1 : 0;
}
