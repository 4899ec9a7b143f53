// The three-dimensional view: what the mouse does to the camera, and what the picture shows.
#include "power/windows/vue3d.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

#include "orbit/orb_projection.h"
#include "orbit/orb_trajecto.h"
#include "power/power_step.h"
#include "project/orb_fichier.h"

namespace {

struct Vue3d : testing::Test {
    void SetUp() override {
        session_init(s);
        s.periode.j_courant = s.periode.j_debut;
        orb_position(s.periode.j_courant, s.orbit);
        if (!vue3d::opengl_disponible()) GTEST_SKIP() << "no OpenGL on this machine";
        v = std::make_unique<vue3d>(s);
        v->resize(400, 400);
        v->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(v.get()));
    }
    void glisse(QPoint de, QPoint a) {
        QTest::mousePress(v.get(), Qt::LeftButton, {}, de);
        QMouseEvent bouge(QEvent::MouseMove, a, v->mapToGlobal(a), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(v.get(), &bouge);
    }
    void lache() { QTest::mouseRelease(v.get(), Qt::LeftButton); }
    void roue(int pas) {
        QWheelEvent e(QPointF(200, 200), v->mapToGlobal(QPointF(200, 200)), {}, {0, 120 * pas}, Qt::NoButton,
                      {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(v.get(), &e);
    }
    /// Azimuth of the eye in the inertial frame [rad].
    double azimut_oeil() const { return -v->camera().angle_2; }
    /// Turns the Earth until the longitude [deg] stands under the eye.
    void tourne_terre(double longitude) {
        double j = s.periode.j_debut, meilleur = 10.0;
        for (int i = 0; i < 1440; ++i) {
            const double x = s.periode.j_debut + i / 1440.0;
            const double ecart = std::fabs(
                std::remainder(azimut_oeil() - temps_sideral(x) - longitude * rad_par_degre, deux_pi));
            if (ecart < meilleur) meilleur = ecart, j = x;
        }
        s.periode.j_courant = j;
    }
    /// Sun at an azimuth from the eye [rad], on the equator.
    void place_soleil(double depuis_oeil) {
        const double a = azimut_oeil() + depuis_oeil;
        s.orbit.soleil_pos = {1.5e8 * std::cos(a), 1.5e8 * std::sin(a), 0.0};
    }
    struct teinte {
        double r = 0, v = 0, b = 0;
        double clarte() const { return (r + v + b) / 3.0; }
    };
    static teinte moyenne(const QImage& image, const QRect& zone) {
        teinte t;
        for (int y = zone.top(); y <= zone.bottom(); ++y)
            for (int x = zone.left(); x <= zone.right(); ++x) {
                const QRgb p = image.pixel(x, y);
                t.r += qRed(p), t.v += qGreen(p), t.b += qBlue(p);
            }
        const double n = zone.width() * zone.height();
        return {t.r / n, t.v / n, t.b / n};
    }
    session s;
    std::unique_ptr<vue3d> v;
};

} // namespace

TEST_F(Vue3d, la_souris_tourne_et_agrandit) {
    const double a1 = v->camera().angle_1, a2 = v->camera().angle_2;
    glisse({200, 200}, {225, 190});
    EXPECT_NEAR(v->camera().angle_1, a1 + 10 / 50.0, 1e-12);
    EXPECT_NEAR(v->camera().angle_2, a2 + 25 / 50.0, 1e-12);
    EXPECT_EQ(v->cursor().shape(), Qt::BitmapCursor);
    lache();
    EXPECT_EQ(v->cursor().shape(), Qt::ArrowCursor);

    // Over the pole the angle stays at its limit, comes back at once, and the frame can still be drawn.
    glisse({200, 390}, {200, 5});
    EXPECT_EQ(v->camera().angle_1, demi_pi);
    const QImage du_pole = v->image();
    EXPECT_GT(moyenne(du_pole, {150, 150, 100, 100}).clarte(), 10.0);
    glisse({200, 100}, {200, 150});
    EXPECT_NEAR(v->camera().angle_1, demi_pi - 1.0, 1e-12);
    glisse({200, 5}, {200, 390});
    EXPECT_EQ(v->camera().angle_1, -demi_pi);
    lache();

    const double z = v->camera().zoom;
    roue(3);
    EXPECT_GT(v->camera().zoom, z);
    roue(-6);
    EXPECT_LT(v->camera().zoom, z);
    roue(-1000);
    EXPECT_GT(v->camera().zoom, 0.0);
    QTest::keyClick(v.get(), Qt::Key_S);
    EXPECT_NEAR(vec_norme(v->camera().centre) * 6378.137, vec_norme(s.orbit.sat_pos), 1.0);
    QTest::mouseClick(v->findChild<QToolButton*>("cmd_centre_terre"), Qt::LeftButton);
    EXPECT_EQ(v->camera().centre, vec3{});
    EXPECT_EQ(v->camera().zoom, z);
}

TEST_F(Vue3d, la_terre_tourne_sous_la_lumiere) {
    s.orbit.sat_pos = {}; // nothing stands before the Earth
    place_soleil(0.0);
    const QRect milieu(185, 185, 30, 30);
    tourne_terre(-150);
    const teinte pacifique = moyenne(v->image(), milieu);
    EXPECT_GT(pacifique.b, pacifique.r + 30);
    tourne_terre(15);
    const teinte sahara = moyenne(v->image(), milieu);
    EXPECT_GT(sahara.r, sahara.b + 30);
    tourne_terre(-60); // north is up: Amazonia below the middle, the Atlantic above
    const QImage amerique = v->image();
    const teinte foret = moyenne(amerique, {190, 250, 20, 20}), ocean = moyenne(amerique, {190, 170, 20, 20});
    EXPECT_GT(foret.v, foret.b);
    EXPECT_GT(ocean.b, ocean.v);

    tourne_terre(-150);
    const QRect gauche(90, 180, 50, 40), droite(260, 180, 50, 40);
    place_soleil(demi_pi);
    QImage image = v->image();
    EXPECT_GT(moyenne(image, droite).clarte(), 2.5 * moyenne(image, gauche).clarte());
    place_soleil(-demi_pi);
    image = v->image();
    EXPECT_GT(moyenne(image, gauche).clarte(), 2.5 * moyenne(image, droite).clarte());
    const teinte ciel = moyenne(image, {2, 2, 8, 8});
    EXPECT_NEAR(ciel.b, 51, 1);
    EXPECT_EQ(ciel.r, 0);
}

TEST_F(Vue3d, le_satellite_suit_sa_configuration) {
    // Before the Earth, seen from the Sun's side.
    const double a = azimut_oeil();
    s.orbit.sat_pos = {7200 * std::cos(a), 7200 * std::sin(a), 0.0};
    place_soleil(0.3);
    v->centre_satellite();
    std::vector<QImage> images;
    for (double angle : {0.0, 1.0}) {
        s.power.pan_angle = angle;
        images.push_back(v->image());
    }
    s.power.opt_panel_ext = faux;
    for (int16_t faces : {0, 1, 2}) {
        s.power.opt_faces = faces;
        images.push_back(v->image());
    }
    for (size_t i = 0; i < images.size(); ++i)
        for (size_t k = i + 1; k < images.size(); ++k) EXPECT_NE(images[i], images[k]) << i << " " << k;

    const QRect corps(185, 185, 30, 30);
    s.power.opt_panel_ext = vrai;
    s.power.eclipse = vrai;
    EXPECT_LT(moyenne(v->image(), corps).clarte(), 0.7 * moyenne(images[0], corps).clarte());

    // Behind the Earth a thin ring stands for it.
    s.power.eclipse = faux;
    v->centre_terre();
    s.orbit.sat_pos = vec_echelle(-1.0, s.orbit.sat_pos);
    const QImage cache = v->image();
    s.orbit.sat_pos = {};
    const QImage sans = v->image();
    int traits = 0;
    for (int y = 0; y < sans.height(); ++y)
        for (int x = 0; x < sans.width(); ++x) traits += sans.pixel(x, y) != cache.pixel(x, y);
    EXPECT_GT(traits, 20);
    EXPECT_LT(traits, 400);
}

TEST_F(Vue3d, le_satellite_reste_en_vue) {
    std::string raison;
    ASSERT_TRUE(
        charge_orbite(std::string(DOSSIER_DATA) + "/exemples/microsatellite.orb", s.orbit.orbite, raison));
    v->centre_satellite();
    const double tour = 1 / moy_mvt_de_demi(s.orbit.orbite.orb_demi),
                 debut = periode_par_defaut(s.orbit.orbite).j_debut;
    int vues = 0;
    for (int i = 0; i < 150; ++i) {
        orb_position(debut + 1.5 * tour * i / 150, s.orbit);
        if (i == 75) { // a drag that would put the Earth before it stops short
            glisse({200, 390}, {200, 5});
            lache();
        }
        v->redessine();
        v->image();
        EXPECT_FALSE(cache_par_la_terre(v->camera(), vec_echelle(1 / 6378.137, s.orbit.sat_pos))) << i;
        EXPECT_NEAR(vec_norme(v->camera().centre) * 6378.137, vec_norme(s.orbit.sat_pos), 1e-6);
        ++vues;
    }
    EXPECT_EQ(vues, 150);
    // The other views: the eye in the Sun, over the satellite, behind it.
    const auto angle = [](const vec3& a, const vec3& b) {
        return std::acos(std::min(1.0, vec_scalaire(a, b) / vec_norme(a) / vec_norme(b)));
    };
    QTest::keyClick(v.get(), Qt::Key_D);
    EXPECT_LT(angle(regard_de(v->camera()).oeil, s.orbit.soleil_pos), 1e-6);
    EXPECT_EQ(v->camera().centre, vec3{});
    QTest::keyClick(v.get(), Qt::Key_Z);
    EXPECT_LT(angle(regard_de(v->camera()).oeil, s.orbit.sat_pos), 1e-6);
    EXPECT_LT(angle(regard_de(v->camera()).haut, s.orbit.sat_vit), 0.1); // upwards, the way it goes
    QTest::keyClick(v.get(), Qt::Key_L);
    EXPECT_LT(angle(regard_de(v->camera()).oeil, vec_echelle(-1, s.orbit.sat_vit)), 0.25);
}

TEST_F(Vue3d, montre_fleches_et_couleurs) {
    const double a = azimut_oeil();
    s.orbit.sat_pos = {7200 * std::cos(a), 7200 * std::sin(a), 0.0};
    s.orbit.sat_vit = {-7.4 * std::sin(a), 7.4 * std::cos(a), 0.0};
    environment_update(s.periode.j_courant, s.power, s.orbit, s.periode);
    v->centre_satellite();
    std::vector<QImage> images = {v->image()};
    for (const char* nom :
         {"act_axes", "act_soleil", "act_nadir", "act_vitesse", "act_champ", "act_faces_flux"}) {
        v->findChild<QAction*>(nom)->trigger();
        images.push_back(v->image());
    }
    for (std::size_t i = 1; i < images.size(); ++i) EXPECT_NE(images[i], images[i - 1]) << i;

    // By the flux: the Sun's share by the cosine, and less than all that the Earth can give.
    affichage3d nu{.axes = false, .faces = couleur_faces::flux};
    v->affiche(nu);
    const valeurs_faces f = faces_par_flux(s.power, s.orbit);
    ASSERT_EQ(s.power.eclipse, faux);
    const vec3 soleil = {s.power.sun_sxy * std::cos(s.power.sun_az),
                         s.power.sun_sxy * std::sin(s.power.sun_az), s.power.sun_z};
    for (int face = 0; face < 6; ++face) {
        const double direct = s.power.flux_sun * std::max(0.0, (face % 2 ? -1 : 1) * soleil[face / 2]);
        EXPECT_GE(f.caisse[std::size_t(face)], direct - 0.1) << face;
        EXPECT_LE(f.caisse[std::size_t(face)], direct + s.power.flux_alb + s.power.flux_ir) << face;
    }
    // By the temperature: one even temperature, one colour from end to end.
    s.power.node_t.fill(300);
    nu.faces = couleur_faces::temperature;
    v->affiche(nu);
    const QImage even = v->image();
    const auto c = couleur_echelle((300 - 273.15 - 20) / 40);
    const teinte vue = moyenne(even, {190, 190, 6, 6});
    EXPECT_NEAR(vue.r, 255 * c[0], 3);
    EXPECT_NEAR(vue.v, 255 * c[1], 3);
    EXPECT_NEAR(vue.b, 255 * c[2], 3);
}

TEST_F(Vue3d, laisse_tomber_des_images_plutot_que_des_pas) {
    QTest::qWait(200);
    QElapsedTimer t;
    t.start();
    const int avant = v->images_dessinees();
    int pas = 0;
    for (; t.elapsed() < 400; ++pas) { // a run as fast as it can
        s.periode.j_courant += 1e-5;
        orb_position(s.periode.j_courant, s.orbit);
        v->redessine();
        QApplication::processEvents();
    }
    const int images = v->images_dessinees() - avant;
    EXPECT_GT(images, 0);
    EXPECT_GT(pas, 10 * images);
    v->redessine(); // the last state is drawn when its turn comes
    EXPECT_TRUE(QTest::qWaitFor([&] { return v->images_dessinees() - avant > images; }, 20000));
}

TEST(Vue3d_sans_opengl, le_dit_et_reste_en_vie) {
    session s;
    session_init(s);
    vue3d v(s, nullptr, true);
    v.show();
    const auto* texte = v.findChild<QLabel*>("lab_sans_opengl");
    ASSERT_NE(texte, nullptr);
    EXPECT_TRUE(texte->isVisible());
    EXPECT_TRUE(texte->text().contains("OpenGL"));
    v.redessine();
    v.centre_satellite();
    QTest::mousePress(&v, Qt::LeftButton);
    QTest::keyClick(&v, Qt::Key_S);
    EXPECT_TRUE(v.image().isNull());
}
