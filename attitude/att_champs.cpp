#include "attitude/att_champs.h"

#include <cmath>

#include "shell/formats.h"
#include "shell/octets.h"

namespace {

constexpr const char* axes[] = {"x", "y", "z"};
constexpr const char* faces[] = {"+x", "+y", "+z", "-x", "-y", "-z"};
constexpr const char* taux[] = {"theta", "phi", "psi"};
constexpr const char* tenseur[] = {"xx", "yx", "zx", "xy", "yy", "zy", "xz", "yz", "zz"};
constexpr const char* centres[] = {"+x, coordonnée x", "+y, coordonnée x", "+z, coordonnée x",
                                   "+x, coordonnée y", "+y, coordonnée y", "+z, coordonnée y",
                                   "+x, coordonnée z", "+y, coordonnée z", "+z, coordonnée z"};

constexpr int8_t ordre_taux[] = {1, 2, 0};
/// Face by face in the record, coordinate by coordinate in the file.
constexpr int8_t ordre_centres[] = {0, 3, 6, 1, 4, 7, 2, 5, 8};

#define PLACE(champ) offsetof(attitude_record, champ)
using enum type_att;

const champ_att table[] = {
    {.nom = "I_corps",
     .decalage = 0,
     .type = f64,
     .nombre = 9,
     .place = PLACE(I_corps),
     .ordre = nullptr,
     .unite = "kg m²",
     .sens = "Inertie du corps central",
     // the upper triangle counts
     .controles = {"I_xx", nullptr, nullptr, "I_xy", "I_yy", nullptr, "I_xz", "I_yz", "I_zz"},
     .elements = tenseur,
     .min = -100,
     .max = 100},
    {.nom = "dim",
     .decalage = 72,
     .type = f64,
     .nombre = 3,
     .place = PLACE(dim),
     .ordre = nullptr,
     .unite = "m",
     .sens = "Dimension du corps central selon",
     .controles = {"dimens1", "dimens2", "dimens3"},
     .elements = axes,
     .min = 0,
     .max = 90},
    {.nom = "Masse",
     .decalage = 96,
     .type = f64,
     .nombre = 1,
     .place = PLACE(Masse),
     .ordre = nullptr,
     .unite = "kg",
     .sens = "Masse du corps central",
     .controles = {"Masse"},
     .min = -100,
     .max = 100},
    {.nom = "cm",
     .decalage = 104,
     .type = f64,
     .nombre = 3,
     .place = PLACE(cm),
     .ordre = nullptr,
     .unite = "m",
     .sens = "Position du centre de masse du corps central selon",
     .controles = {"cmx", "cmy", "cmz"},
     .elements = axes,
     .demi_dim = true},
    {.nom = "dext",
     .decalage = 128,
     .type = f64,
     .nombre = 3,
     .place = PLACE(dext),
     .ordre = nullptr,
     .unite = "m",
     .sens = "Distance de la masse externe selon",
     .controles = {"txt_dist_grad", "txt_dist_grad", "txt_dist_grad"},
     .elements = axes,
     .min = -500, // on the negative side of the axis
     .max = 500},
    {.nom = "mext",
     .decalage = 152,
     .type = f64,
     .nombre = 3,
     .place = PLACE(mext),
     .ordre = nullptr,
     .unite = "kg",
     .sens = "Masse externe selon",
     .controles = {"txt_masse_grad", "txt_masse_grad", "txt_masse_grad"},
     .elements = axes,
     .min = 0,
     .max = 100},
    {.nom = "omega_init",
     .decalage = 176,
     .type = f64,
     .nombre = 3,
     .place = PLACE(omega_init),
     .ordre = ordre_taux,
     .unite = "deg/s",
     .sens = "Vitesse de rotation initiale",
     .controles = {"txt_theta", "txt_fi", "txt_psi"},
     .elements = taux,
     .degres = true},
    {.nom = "dip_tot",
     .decalage = 200,
     .type = f64,
     .nombre = 3,
     .place = PLACE(dip_tot),
     .ordre = nullptr,
     .unite = "A m²",
     .sens = "Dipôle en vigueur",
     .elements = axes},
    {.nom = "dip_res",
     .decalage = 224,
     .type = f64,
     .nombre = 3,
     .place = PLACE(dip_res),
     .ordre = nullptr,
     .unite = "A m²",
     .sens = "Dipôle résiduel",
     .controles = {"dip_x", "dip_y", "dip_z"},
     .elements = axes,
     .min = -10,
     .max = 10},
    {.nom = "dip_act",
     .decalage = 248,
     .type = f64,
     .nombre = 3,
     .place = PLACE(dip_act),
     .ordre = nullptr,
     .unite = "A m²",
     .sens = "Dipôle du magnétocoupleur",
     .controles = {"dip_x_act", "dip_y_act", "dip_z_act"},
     .elements = axes,
     .min = -10,
     .max = 10},
    {.nom = "dip_cmd",
     .decalage = 272,
     .type = i16,
     .nombre = 3,
     .place = PLACE(dip_cmd),
     .ordre = nullptr,
     .unite = "",
     .sens = "Commande du magnétocoupleur",
     .elements = axes},
    {.nom = "jets",
     .decalage = 278,
     .type = f64,
     .nombre = 3,
     .place = PLACE(jets),
     .ordre = nullptr,
     .unite = "N m",
     .sens = "Couple constant des tuyères",
     .controles = {"txt_jets_x", "txt_jets_y", "txt_jets_z"},
     .elements = axes,
     .min = -10,
     .max = 10},
    {.nom = "jet_cmd",
     .decalage = 302,
     .type = i16,
     .nombre = 3,
     .place = PLACE(jet_cmd),
     .ordre = nullptr,
     .unite = "",
     .sens = "Commande des tuyères",
     .elements = axes},
    {.nom = "JR",
     .decalage = 308,
     .type = f64,
     .nombre = 3,
     .place = PLACE(JR),
     .ordre = nullptr,
     .unite = "kg m²",
     .sens = "Inertie de la roue",
     .controles = {"txt_JR1", "txt_JR2", "txt_JR3"},
     .elements = axes},
    {.nom = "OM_init",
     .decalage = 332,
     .type = f64,
     .nombre = 3,
     .place = PLACE(OM_init),
     .ordre = nullptr,
     .unite = "deg/s",
     .sens = "Vitesse de la roue",
     .controles = {"txt_OM1", "txt_OM2", "txt_OM3"},
     .elements = axes,
     .degres = true},
    {.nom = "md",
     .decalage = 356,
     .type = f64,
     .nombre = 3,
     .place = PLACE(md),
     .ordre = nullptr,
     .unite = "kg",
     .sens = "Masse de l'amortisseur",
     .controles = {"txt_md1", "txt_md2", "txt_md3"},
     .elements = axes},
    {.nom = "ld",
     .decalage = 380,
     .type = f64,
     .nombre = 3,
     .place = PLACE(ld),
     .ordre = nullptr,
     .unite = "m",
     .sens = "Bras de levier de l'amortisseur",
     .controles = {"txt_ld1", "txt_ld2", "txt_ld3"},
     .elements = axes},
    {.nom = "c",
     .decalage = 404,
     .type = f64,
     .nombre = 3,
     .place = PLACE(c),
     .ordre = nullptr,
     .unite = "N s/m",
     .sens = "Viscosité de l'amortisseur",
     .controles = {"txt_c1", "txt_c2", "txt_c3"},
     .elements = axes},
    {.nom = "k",
     .decalage = 428,
     .type = f64,
     .nombre = 3,
     .place = PLACE(k),
     .ordre = nullptr,
     .unite = "N/m",
     .sens = "Raideur de l'amortisseur",
     .controles = {"txt_k1", "txt_k2", "txt_k3"},
     .elements = axes},
    {.nom = "Mt",
     .decalage = 452,
     .type = f64,
     .nombre = 1,
     .place = PLACE(Mt),
     .ordre = nullptr,
     .unite = "kg",
     .sens = "Masse totale"},
    {.nom = "cm_total",
     .decalage = 460,
     .type = f64,
     .nombre = 3,
     .place = PLACE(cm_total),
     .ordre = nullptr,
     .unite = "m",
     .sens = "Position du centre de masse de l'ensemble selon",
     .elements = axes},
    {.nom = "I",
     .decalage = 484,
     .type = f64,
     .nombre = 9,
     .place = PLACE(I),
     .ordre = nullptr,
     .unite = "kg m²",
     .sens = "Inertie totale",
     .elements = tenseur},
    {.nom = "face_c",
     .decalage = 556,
     .type = f64,
     .nombre = 9,
     .place = PLACE(face_c),
     .ordre = ordre_centres,
     .unite = "m",
     .sens = "Centre de la face",
     .elements = centres},
    {.nom = "sn",
     .decalage = 628,
     .type = f64,
     .nombre = 6,
     .place = PLACE(sn),
     .ordre = nullptr,
     .unite = "",
     .sens = "Coefficient aérodynamique normal, face",
     .controles = {"sx_pos", "sy_pos", "sz_pos", "sx_neg", "sy_neg", "sz_neg"},
     .elements = faces,
     .min = 0,
     .max = 10},
    {.nom = "st",
     .decalage = 676,
     .type = f64,
     .nombre = 6,
     .place = PLACE(st),
     .ordre = nullptr,
     .unite = "",
     .sens = "Coefficient aérodynamique tangentiel, face",
     .controles = {"sxt_pos", "syt_pos", "szt_pos", "sxt_neg", "syt_neg", "szt_neg"},
     .elements = faces,
     .min = 0,
     .max = 10},
    {.nom = "cr",
     .decalage = 724,
     .type = f64,
     .nombre = 6,
     .place = PLACE(cr),
     .ordre = nullptr,
     .unite = "",
     .sens = "Coefficient de réflexion de la lumière, face",
     .controles = {"crx_pos", "cry_pos", "crz_pos", "crx_neg", "cry_neg", "crz_neg"},
     .elements = faces,
     .min = 0,
     .max = 10},
    {.nom = "cd",
     .decalage = 772,
     .type = f64,
     .nombre = 6,
     .place = PLACE(cd),
     .ordre = nullptr,
     .unite = "",
     .sens = "Coefficient de diffusion de la lumière, face",
     .controles = {"cdx_pos", "cdy_pos", "cdz_pos", "cdx_neg", "cdy_neg", "cdz_neg"},
     .elements = faces,
     .min = 0,
     .max = 10},
};
#undef PLACE

std::size_t octet(const champ_att& c, int element) {
    const std::size_t largeur = c.type == type_att::f64 ? 8 : 2;
    return c.place + largeur * static_cast<std::size_t>(c.ordre ? c.ordre[element] : element);
}

} // namespace

std::span<const champ_att> att_champs() { return table; }

bool champ_att_du_controle(std::string_view controle, const champ_att*& champ, int& element) {
    for (const champ_att& c : table)
        for (int i = 0; i < c.nombre; ++i)
            if (c.controles[i] && c.controles[i] == controle) {
                champ = &c;
                element = i;
                return true;
            }
    return false;
}

double valeur(const attitude_record& a, const champ_att& c, int element) {
    const char* place = reinterpret_cast<const char*>(&a) + octet(c, element);
    return c.type == type_att::i16 ? lit_octets<int16_t>(place) : lit_octets<double>(place);
}

void change(attitude_record& a, const champ_att& c, double x, int element) {
    char* place = reinterpret_cast<char*>(&a) + octet(c, element);
    c.type == type_att::i16 ? ecrit_octets<int16_t>(place, x) : ecrit_octets<double>(place, x);
}

double& reel(attitude_record& a, const champ_att& c, int element) {
    return *reinterpret_cast<double*>(reinterpret_cast<char*>(&a) + octet(c, element));
}

std::string infobulle(const champ_att& c, int element) {
    std::string texte = c.sens;
    if (c.elements) texte += std::string(" ") + c.elements[element];
    if (*c.unite) texte += std::string(" (") + c.unite + ")";
    if (c.demi_dim)
        texte += ", dans les limites de plus ou moins la demi-dimension";
    else if (std::isfinite(c.min))
        texte += ", de " + format_court(c.min) + " à " + format_court(c.max);
    return texte + ".";
}
