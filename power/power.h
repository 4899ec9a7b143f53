/// The power record: the settings of the power system and the working state of its simulation.
///
/// One instance lives in the session; all power models read and write it. Settings are single precision and
/// change only through the settings window or a project file; the working state is double precision, written
/// by `power_state_init` and `power_step`, and stays readable after a run.
#pragma once

#include <array>
#include <cstdint>

#include "orbit/orbite.h"

inline constexpr int nb_bandes = 36; ///< lateral strips of the cylinder
inline constexpr int nb_noeuds = 39; ///< largest thermal model
inline constexpr double zero_celsius = 273.15;
inline constexpr double sans_cible = 1000.0; ///< mark of `pan_target`: no target

/// Coefficients of one point of a battery curve: capacity % and its slopes in temperature and per decade of
/// current, then the same for the voltage.
using point_courbe = std::array<float, 6>;
/// Four points: 0, 1, 2 and the end point (overcharge, or 100 % discharge).
using courbe_batterie = std::array<point_courbe, 4>;

/// Catalogue curves of Nickel-Cadmium and Nickel-Hydrogen, the defaults too.
inline constexpr courbe_batterie charge_nickel = {{{0, 0, 0, 1.3f, 0, 0},
                                                   {15, .1f, -5, 1.4f, -.001f, .01f},
                                                   {65, .5f, -5, 1.41f, -.001f, .01f},
                                                   {120, .1f, -5, 1.59f, -.002f, .02f}}};
inline constexpr courbe_batterie decharge_nickel = {{{0, 0, 0, 1.3f, 0, 0},
                                                     {15, .1f, -5, 1.21f, .001f, -.01f},
                                                     {95, .1f, -2, 1.2f, .001f, -.01f},
                                                     {100, 0, 0, 1.0f, 0, 0}}};

struct power_record {
    // Cells and generator
    int16_t cel_type = 0;     ///< 0 AsGa, 1 Silicium
    float cel_isc = .53f;     ///< [A] short-circuit current at cel_tref
    float cel_imp = .5f;      ///< [A] current at the maximum power point
    float cel_voc = 1;        ///< [V] open-circuit voltage
    float cel_vmp = .86f;     ///< [V] voltage at the maximum power point
    float cel_disc = .0003f;  ///< [A/degC]
    float cel_dimp = .00025f; ///< [A/degC]
    float cel_dvoc = -.002f;  ///< [V/degC]
    float cel_dvmp = -.002f;  ///< [V/degC]
    float cel_radisc = 1;     ///< end-of-life ratios
    float cel_radimp = 1;
    float cel_radvoc = 1;
    float cel_radvmp = 1;
    float cel_ns = 1;          ///< cells in series
    float cel_np = 1;          ///< strings in parallel
    float cel_surface = 16;    ///< [cm2] area of one cell
    float cel_tref = 28;       ///< [degC]
    float inc_div = 50;        ///< [deg] the cosine law holds up to here
    float inc_max = 75;        ///< [deg] the cell yields nothing from here
    int32_t date_cell = 17897; ///< [days] date of new coatings (1 January 1999)
    int16_t cel_opt_beol = 0;  ///< 0 BOL, 1 EOL; not in the file

    // Geometry
    drapeau opt_panel_ext = vrai;      ///< external panels, else panels on the faces
    int16_t opt_faces = 0;             ///< 0 square prism, 1 hexagonal prism, 2 cylinder
    int16_t nb_faces = 4;              ///< lateral faces: 4 or 6 (0 for other options read from a file)
    float body_height = .8f;           ///< [m]
    float body_width = .4f;            ///< [m] side, or diameter
    std::array<double, 6> face_elev{}; ///< [rad] elevation of each lateral normal
    std::array<double, 6> face_azim = {0, 90 * rad_par_degre, 180 * rad_par_degre, 270 * rad_par_degre};

    // External panel drive
    drapeau pan_fixed = faux;
    float pan_angle_init = 0;  ///< [deg]
    float pan_tolerance = .5f; ///< [deg] misalignment that starts a correction
    int32_t pan_delay = 2;     ///< [s] wait before moving
    float pan_speed = 10;      ///< [deg/s]

    // Thermal model of external panels: 0 panel front, 1 rear, 2..7 faces X -X Y -Y Z -Z, 8 internal node
    float ext_area = .5f;     ///< [m2] one external panel
    float body_face_area = 1; ///< [m2] a face of the central body
    std::array<float, 8> ext_alpha0 = {.75f, .16f, .3f, .3f, .3f, .3f, .3f, .3f};
    std::array<float, 8> ext_alpha_lim = {.77f, .3f, .5f, .5f, .5f, .5f, .5f, .5f};
    std::array<float, 8> ext_eps = {.76f, .85f, .75f, .75f, .75f, .75f, .75f, .75f};
    std::array<int32_t, 8> ext_t99 = {20000, 20000, 20000, 20000, 20000, 20000, 20000, 20000}; ///< [h]
    std::array<float, 6> ext_cond = {.01f, .01f, .01f, .01f, .01f, .01f};                      ///< [W/m2/K]
    std::array<float, 6> ext_rad = {.005f, .005f, .005f, .005f, .005f, .005f};
    std::array<float, 9> ext_mass = {20, 0, 10, 10, 10, 10, 10, 10, 40};       ///< [kg/m2], [kg] for 8
    std::array<float, 9> ext_cp = {800, 0, 800, 800, 800, 800, 800, 800, 800}; ///< [J/kg/K]
    std::array<float, 9> ext_t_init = {25, 0, 25, 25, 25, 25, 25, 25, 25};     ///< [degC]

    // Thermal model of panels on the faces: 0 lateral, 1 top, 2 bottom
    std::array<float, 3> fac_cond = {.01f, .01f, .01f}; ///< [W/m2/K]
    std::array<float, 3> fac_t_init = {25, 25, 25};     ///< [degC]
    std::array<float, 3> fac_alpha0 = {.75f, .16f, .16f};
    std::array<float, 3> fac_alpha_lim = {.77f, .3f, .4f};
    std::array<int32_t, 3> fac_t99 = {20000, 20000, 20000}; ///< [h]
    std::array<float, 3> fac_eps = {.76f, .85f, .85f};
    std::array<float, 3> fac_cp = {800, 800, 800}; ///< [J/kg/K]
    std::array<float, 3> fac_mass = {5, 2, 2};     ///< [kg/m2]
    std::array<float, 3> fac_rad = {.005f, .005f, .005f};
    float int_mass = 40;    ///< [kg] internal node
    float int_cp = 800;     ///< [J/kg/K]
    float int_t_init = 25;  ///< [degC] also the temperature of the battery's first voltage
    float cyl_cond = .001f; ///< [W/m/K] circumferential conduction of the cylinder wall

    // Environment, January first
    std::array<float, 12> albedo = {.38f, .38f, .38f, .38f, .38f, .38f, .38f, .38f, .38f, .38f, .38f, .38f};
    std::array<float, 12> earth_ir = {237, 237, 237, 237, 237, 237, 237, 237, 237, 237, 237, 237}; ///< [W/m2]
    double sun_power = 3.8e26; ///< [W] total radiated power of the Sun

    // Management; index 0 day, 1 night
    float gst_charge_init = 100;              ///< [%]
    float gst_vch_max = 1.5f;                 ///< [V/accumulator]
    float gst_i_maint = .001f;                ///< [A/accumulator]
    float gst_ich_max = 100;                  ///< [A/accumulator]
    float gst_k_recharge = 1.05f;             ///< charged over discharged capacity
    float gst_rend_bat = 90;                  ///< [%] battery to payload
    float gst_rend_gs = 90;                   ///< [%] generator to payload
    float gst_vregul = 0;                     ///< [V] regulated bus
    std::array<float, 2> p_demand = {50, 50}; ///< [W]
    std::array<float, 2> p_dissip = {15, 15}; ///< [%] share dissipated inside
    int16_t gst_regulated = 0;                ///< regulated bus when not 0

    // Battery
    uint8_t bat_type = 0; ///< 0 Nickel-Cadmium, 1 Nickel-Hydrogene, 2 Lithium-Ion, 3 Generique
    uint8_t bat_ns = 10;  ///< accumulators in series
    uint8_t bat_np = 1;   ///< accumulators in parallel
    float bat_c = 10;     ///< [Ah] nominal capacity
    courbe_batterie ch_pt = charge_nickel;
    courbe_batterie de_pt = decharge_nickel;
    float bat_cmax = 1.2f;   ///< capacity ratio at low current
    float bat_c10 = .6f;     ///< capacity ratio at 10C
    float bat_cmin_pct = 30; ///< [%] capacity at the minimum temperature
    float bat_t999 = 50;     ///< [degC] capacity reaches 99.9 %
    float bat_tmin = -50;    ///< [degC]
    float bat_tau0 = 100;    ///< [days] self-discharge at 0 degC; stored, not applied
    float bat_tau50 = 15;    ///< [days] self-discharge at 50 degC; stored, not applied

    // Working state
    std::array<double, nb_noeuds> node_t{};    ///< [K]
    std::array<float, nb_bandes> cell_eff{};   ///< conversion efficiency
    std::array<double, nb_bandes> pan_power{}; ///< [W]
    double gen_power = 0;                      ///< [W]
    double t_bat = 0;                          ///< [degC]
    double pan_angle = 0;                      ///< [rad]
    double pan_target = 0;                     ///< [rad], 1000.0 without a target
    int32_t pan_wait = 0;                      ///< [s] -1 without a delay
    drapeau pan_moving = faux;
    double sun_z = 0, sun_sxy = 0, sun_az = 0; ///< Sun in body axes: z, its complement, azimuth [rad]
    double nad_z = 0, nad_sxy = 0, nad_az = 0; ///< Earth's centre in body axes
    float flux_sun = 0;                        ///< [W/m2]
    double flux_alb = 0;                       ///< [W/m2]
    double flux_ir = 0;                        ///< [W/m2]
    drapeau eclipse = faux; ///< behind the Earth of 6378.137 km (the orbit's own flag is another)
    double part_soleil = 1; ///< visible share of the Sun: 1, or 0 in eclipse
    double earth_half = 0;  ///< [rad] half-angle of the Earth
    double sun_nadir_cos = 0;
    double bat_soc = 0;            ///< 0..1
    double bat_v = 0;              ///< [V/accumulator]
    double bat_i = 0;              ///< [A/string]
    double bat_p = 0;              ///< [W] positive in discharge, negative in charge
    double p_demande = 0;          ///< [W] demand of the step
    double p_payload = 0;          ///< [W] delivered to the payload
    double p_excess = 0;           ///< [W] positive excess, negative shortage
    double p_loss_ch = 0;          ///< [W] charge
    double p_loss_de = 0;          ///< [W] discharge
    double p_loss_gs = 0;          ///< [W] generator transfer
    double p_loss_pl = 0;          ///< [W] payload
    double p_heat = 0;             ///< [W] into the internal node
    drapeau bat_state_full = faux; ///< -1, and 0 in the step in which the charge reaches 100 %
    int32_t t_charge = 0;          ///< [s]
    int32_t t_discharge = 0;       ///< [s]

    /// Set by `bat_v_charge` when the charge curve fails; the caller shows the message once for a run.
    bool courbe_charge_incompatible = false;
};

/// The message of a charge curve that fails.
inline constexpr const char* message_charge_incompatible =
    "Incompatibilité entre les paramètres de charge des batteries !!";

/// Lateral faces of the body option `opt_faces` and the directions of their normals.
void recalcule_faces(power_record& p);
