/// A face to the Sun, for every face, on orbits of all kinds.
#include <gtest/gtest.h>

#include "orbit/matrices.h"
#include "orbit/orb_trajecto.h"
#include "orbit/orientation_soleil.h"
#include "orbit/pointage.h"
#include "shell/utilitaires.h"
#include "tests/releve.h"

TEST(orientation, every_face_can_look_at_the_sun) {
    int cas = 0;
    for (const double inclinaison : {0.0, 28.5, 90.0, 97.8, 180.0})
        for (const double excentricite : {0.0, 0.3})
            for (double apres = 0; apres < 0.07; apres += 0.0033) // around a turn
                for (int face = 0; face < 6; ++face) {
                    orbit_state o;
                    o.orbite.orb_inclinaison = inclinaison;
                    o.orbite.orb_excentricite = excentricite;
                    o.orbite.orb_demi = 9500;
                    o.orbite.orb_ascension = 40 * excentricite;
                    o.pointage.spin = vrai; // the turn starts at the period's start: there it changes nothing
                    o.pointage.vspin = 0.5;
                    const double j = date_epoque(o.orbite.orb_an, o.orbite.orb_jour - 1) + 12 + apres;
                    ASSERT_TRUE(oriente_vers_soleil(o, face, j))
                        << inclinaison << ' ' << apres << ' ' << face;
                    EXPECT_EQ(o.pointage.orbital, faux);
                    // Entered again by the three inertial angles, as a file does, and looked at afresh.
                    orbit_state p;
                    p.orbite = o.orbite;
                    p.pointage.inertiel = o.pointage.inertiel;
                    orb_position(date_epoque(o.orbite.orb_an, o.orbite.orb_jour - 1), p);
                    pointage_inertiel(p);
                    EXPECT_EQ(p.pointage.lacet, o.pointage.lacet);
                    orb_position(j, p);
                    pointage_du_spin(j, j, p.pointage);
                    vec3 n{};
                    n[face % 3] = face < 3 ? 1 : -1;
                    const vec3 dehors = corps_vers_inertiel(p, n),
                               dedans = inertiel_vers_corps(p, p.vec_soleil);
                    EXPECT_GT(vec_scalaire(dehors, p.vec_soleil), 0);
                    EXPECT_GT(vec_scalaire(dedans, n), 0);
                    for (const vec3& biais : {vec_vectoriel(dehors, p.vec_soleil), vec_vectoriel(dedans, n)})
                        RELEVE("orientation.face", vec_norme(biais) / rad_par_degre, 0, 0.03);
                    ++cas;
                }
    EXPECT_GT(cas, 1000);
    orbit_state sans;
    sans.orbite.orb_demi = 0;
    const pointage_record avant = sans.pointage;
    EXPECT_FALSE(oriente_vers_soleil(sans, 0, 18707.5));
    EXPECT_EQ(sans.pointage.inertiel, avant.inertiel);
}
