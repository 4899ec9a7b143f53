/// Cells and generator. Expected values: the catalogue's own points (short circuit, maximum power, open
/// circuit) that the one-exponential model must pass through.
#include "power/power_cellules.h"

#include <gtest/gtest.h>

#include "power/power_panneaux.h"
#include "shell/surveillance.h"
#include "tests/releve.h"

namespace {

/// Regulated bus at a share of the cell's voltage at maximum power, at the reference temperature.
power_record regule(double v_par_cellule) {
    power_record p;
    p.cel_ns = 12;
    p.cel_np = 3;
    p.gst_regulated = 1;
    p.gst_vregul = static_cast<float>(12 * v_par_cellule);
    return p;
}

double t_reference(const power_record& p) { return p.cel_tref + zero_celsius; }

} // namespace

TEST(cellules, catalogue_points) {
    const power_record p = regule(0.86);
    const double nominal = 0.5 * 0.86 * 1e4 / 1368 / 16;
    RELEVE("cellule.rendement", cell_efficiency(p, t_reference(p)) / nominal, 1, 1e-7);
    EXPECT_NEAR(rendement_nominal(p), 100 * nominal, 1e-5);
    RELEVE("cellule.points", cell_current(p, p.cel_tref, 0), 0.53, 1e-7) << "short circuit";
    RELEVE("cellule.points", cell_current(p, p.cel_tref, 0.86), 0.5, 1e-7);
    RELEVE("cellule.vide", cell_current(p, p.cel_tref, 1.0), 0, 1e-8) << "open circuit";
    double meilleur = 0;
    for (double v = 0.5; v < 1; v += 0.001) meilleur = std::max(meilleur, v * cell_current(p, p.cel_tref, v));
    RELEVE("cellule.maximum", meilleur / 0.43, 1, 0.01) << "no point of the curve is much better";
}

TEST(cellules, bus_voltage_decides) {
    power_record p = regule(0.86);
    p.gst_regulated = 0; // the battery holds the bus
    p.bat_ns = 8;
    p.bat_v = 12 * 0.86 / 8;
    EXPECT_NEAR(cell_efficiency(p, t_reference(p)), cell_efficiency(regule(0.86), t_reference(p)), 1e-8);
    p.bat_v = 0;
    EXPECT_EQ(cell_efficiency(p, t_reference(p)), 0);
    p.bat_v = 2; // 16 V over an open circuit of 12 V
    const surveillance watch;
    EXPECT_EQ(cell_efficiency(p, t_reference(p)), 0);
    p.bat_v = 1e6;
    EXPECT_EQ(cell_efficiency(p, t_reference(p)), 0) << "the exponential is not evaluated";
    EXPECT_FALSE(watch.faute());
}

TEST(cellules, temperature_and_end_of_life) {
    power_record p;
    // 40 degrees hotter: the four values move along their slopes.
    EXPECT_NEAR(cell_current(p, 68, 0), 0.53 + 40 * 0.0003, 1e-6);
    EXPECT_NEAR(cell_current(p, 68, 0.86 - 0.08), 0.5 + 40 * 0.00025, 1e-6);
    EXPECT_EQ(cell_current(p, 68, 0.921), 0) << "open circuit at 0.92 V";
    p.cel_radisc = p.cel_radimp = 0.9f;
    p.cel_radvmp = 0.95f;
    const double jeune = rendement_nominal(p);
    p.cel_opt_beol = 1;
    EXPECT_NEAR(rendement_nominal(p) / jeune, 0.9 * 0.95, 1e-7);
    EXPECT_NEAR(cell_current(p, 28, 0), 0.9 * 0.53, 1e-7);
    p.cel_radvoc = 0.97f;
    EXPECT_GT(cell_current(p, 28, 0.969), 0);
    EXPECT_EQ(cell_current(p, 28, 0.971), 0);
    p.cel_imp = p.cel_isc; // no knee left
    p.cel_radimp = p.cel_radisc;
    const surveillance watch;
    cell_current(p, 28, 0.5);
    EXPECT_TRUE(watch.faute());
}
