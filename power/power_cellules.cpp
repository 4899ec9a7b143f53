#include "power/power_cellules.h"

#include "power/power_panneaux.h"

namespace {

constexpr double constante_solaire = 1368; ///< [W/m2] normalises the efficiency, nothing else
constexpr double dix_degres = 0.17453292519943278;

/// The four values of one cell at a temperature, end of life included.
struct point_cellule {
    double isc, imp, voc, vmp;

    point_cellule(const power_record& p, double t_celsius) {
        const double dT = t_celsius - p.cel_tref;
        voc = dT * p.cel_dvoc + p.cel_voc;
        vmp = dT * p.cel_dvmp + p.cel_vmp;
        imp = dT * p.cel_dimp + p.cel_imp;
        isc = dT * p.cel_disc + p.cel_isc;
        if (p.cel_opt_beol != 0) {
            voc *= p.cel_radvoc;
            vmp *= p.cel_radvmp;
            imp *= p.cel_radimp;
            isc *= p.cel_radisc;
        }
    }

    /// One-exponential model: current of one cell at the voltage v.
    double courant(double v) const {
        const double a = std::log(isc / (isc - imp));
        const double vt = (voc - vmp) / a;
        const double i0 = isc / (std::exp(voc / vt) - 1);
        return isc - i0 * (std::exp(v / vt) - 1);
    }
};

/// Area of the cells of one panel [m2].
double aire_cellules(const power_record& p) {
    return static_cast<double>(p.cel_np) * p.cel_ns * p.cel_surface / 10000;
}

} // namespace

double cell_efficiency(const power_record& p, double t_kelvin) {
    const point_cellule cellule(p, t_kelvin - zero_celsius);
    const double ns = p.cel_ns, np = p.cel_np;
    const double vb = p.gst_regulated != 0 ? static_cast<double>(p.gst_vregul) : p.bat_ns * p.bat_v;
    double i = 0;
    if (!(vb > ns * cellule.voc)) i = np * cellule.courant(vb / ns);
    return 10000 * i * vb / constante_solaire / p.cel_surface / np / ns;
}

void generator_ext_panels(power_record& p) {
    generator_ext_panels(p, incidence_de(p, sincos_de(p.pan_angle), azimut_de(p, pi)));
}

void generator_ext_panels(power_record& p, const incidence& panneau) {
    p.cell_eff[0] = static_cast<float>(cell_efficiency(p, p.node_t[0]));
    p.pan_power[0] = loi_cellule(p).flux(p, panneau) * p.cell_eff[0] * aire_cellules(p);
    p.gen_power = 2 * p.pan_power[0]; // two panels alike
}

void generator_cylinder(power_record& p) {
    generator_cylinder(p, incidences_corps(p, forme_corps::cylindre));
}
void generator_faces(power_record& p) { generator_faces(p, incidences_corps(p, forme_corps::prisme)); }

void generator_cylinder(power_record& p, const incidences_corps& vues) {
    // Area from the body's width alone, neither height nor cell count: that is meant.
    const double aire_bande = p.body_width * dix_degres;
    const loi_cellule loi(p, nb_bandes);
    p.gen_power = 0;
    for (int i = 0; i < nb_bandes; ++i) {
        p.cell_eff[i] = static_cast<float>(cell_efficiency(p, p.node_t[i]));
        p.pan_power[i] = loi.flux(p, vues.lateraux[i]) * p.cell_eff[i] * aire_bande;
        p.gen_power += p.pan_power[i];
    }
}

void generator_faces(power_record& p, const incidences_corps& vues) {
    const double aire = aire_cellules(p);
    const loi_cellule loi(p, p.nb_faces);
    p.gen_power = 0;
    for (int i = 0; i < p.nb_faces; ++i) {
        p.cell_eff[i] = static_cast<float>(cell_efficiency(p, p.node_t[i]));
        p.pan_power[i] = p.cell_eff[i] * loi.flux(p, vues.lateraux[i]) * aire;
        p.gen_power += p.pan_power[i];
    }
}

double cell_current(const power_record& p, double t_celsius, double v) {
    const point_cellule cellule(p, t_celsius);
    return v > cellule.voc ? 0 : cellule.courant(v);
}

double rendement_nominal(const power_record& p) {
    double puissance = static_cast<double>(p.cel_imp) * p.cel_vmp;
    if (p.cel_opt_beol != 0) puissance *= static_cast<double>(p.cel_radimp) * p.cel_radvmp;
    return puissance * 10000 / constante_solaire / p.cel_surface * 100;
}
