/// Calendar. Expected values: std::chrono's civil calendar, with which the program's agrees from 1901 to
/// 2099.
#include "shell/utilitaires.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

namespace {

constexpr std::chrono::sys_days origine = std::chrono::year{1950} / 1 / 1;

} // namespace

TEST(calendrier, every_day_from_1901_to_2099) {
    using namespace std::chrono;
    for (sys_days jour = year{1901} / 1 / 1; jour <= sys_days{year{2099} / 12 / 31}; jour += days{1}) {
        const year_month_day civil{jour};
        const double j = (jour - origine).count();
        date_record d;
        d.an = static_cast<int16_t>(int(civil.year()));
        d.mois = static_cast<int16_t>(unsigned(civil.month()));
        d.jour = static_cast<int16_t>(unsigned(civil.day()));
        ASSERT_EQ(date_vers_jour(d), j) << d.an << '-' << d.mois << '-' << d.jour;
        const date_record retour = jour_vers_date(j + 0.75);
        ASSERT_EQ(retour.an, d.an) << j;
        ASSERT_EQ(retour.mois, d.mois) << j;
        ASSERT_EQ(retour.jour, d.jour) << j;
        ASSERT_EQ(retour.heure, 18) << j;
    }
}

TEST(calendrier, time_of_day_and_text) {
    date_record d;
    d.an = 2000, d.mois = 2, d.jour = 29, d.heure = 23, d.minute = 59, d.seconde = 58, d.ms = 250;
    const date_record r = jour_vers_date(date_vers_jour(d));
    EXPECT_EQ(date_vers_texte(r), "29/02/2000 23:59:58");
    EXPECT_NEAR(r.ms, 250, 1);
    EXPECT_NEAR(std::fmod(date_vers_jour(d), 1) * 86400, 86398.25, 1e-6);
    EXPECT_EQ(date_vers_texte(jour_vers_date(0)), "01/01/1950 00:00:00");
    EXPECT_EQ(date_vers_texte(jour_vers_date(-0.5)), "31/12/1949 12:00:00");
}

TEST(calendrier, no_century_rule) {
    date_record d;
    d.an = 2100, d.mois = 2, d.jour = 29;
    EXPECT_EQ(date_vers_texte(jour_vers_date(date_vers_jour(d))), "29/02/2100 00:00:00");
    for (int16_t an = 1901; an < 2200; ++an) {
        d.an = an, d.mois = 1, d.jour = 1;
        ASSERT_EQ(date_epoque(an, 0), date_vers_jour(d)) << "the rule of the propagation, " << an;
    }
}

TEST(calendrier, dates_as_text) {
    double j = -1;
    EXPECT_TRUE(texte_vers_jour("2000-02-29 12:00:00", j));
    EXPECT_EQ(j, 18321.5);
    EXPECT_TRUE(texte_vers_jour("1950-01-02", j));
    EXPECT_EQ(j, 1);
    EXPECT_TRUE(texte_vers_jour("18707.55001", j));
    EXPECT_EQ(j, 18707.55001);
    for (const char* faux : {"", "2001-02-29", "2001-13-01", "2001-00-01", "2001-01-32",
                             "2001-01-01 24:00:00", "2001-01-01 12:60:00", "2001-01-01 12:00:60",
                             "2001-01-01x", "2001-01-01 12:00", "1900-12-31", "nan", "inf", "hier", "12,5"})
        EXPECT_FALSE(texte_vers_jour(faux, j)) << faux;
    EXPECT_EQ(j, 18707.55001) << "a refused text leaves the date";
}

TEST(utilitaires, small_helpers) {
    EXPECT_EQ(borne(5, 0, 1), 1);
    EXPECT_EQ(borne(-5, 0, 1), 0);
    EXPECT_EQ(borne(0.5, 0, 1), 0.5);
    EXPECT_EQ(ligne_valeur(" 12            Label"), " 12           ");
    EXPECT_EQ(ligne_valeur("! a comment longer than that"), "! a comment longer than that");
    EXPECT_EQ(ligne_valeur("7"), "7");
    EXPECT_TRUE(est_dossier(DONNEES_TEST));
    EXPECT_FALSE(est_dossier(std::string(DONNEES_TEST) + "/soleil_reference.csv"));
    EXPECT_FALSE(est_dossier(""));
}
