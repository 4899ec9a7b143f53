#include "project/windows/place_cellules.h"

#include "widgets/style.h"

namespace {

QString aire(double m2) { return QString("%1 m²").arg(m2, 0, 'g', 4); }

} // namespace

place_cellules::place_cellules(const QString& nom) {
    setObjectName(nom);
    setWordWrap(true);
    setToolTip("La puissance suit le nombre et la surface des cellules ; l'aire du panneau ne change que sa "
               "température");
}

void place_cellules::montre(const power_record& p) {
    constexpr double cm2_par_m2 = 10000;
    const bool externes = p.opt_panel_ext != faux, cylindre = !externes && p.opt_faces == 2;
    const double cellules = double(p.cel_np) * p.cel_ns * p.cel_surface / cm2_par_m2;
    const double place = externes ? p.ext_area : double(p.body_height) * p.body_width;
    const bool tiennent = cylindre || cellules <= place * (1 + 1e-6);
    if (cylindre)
        setText("Cylindre : la puissance suit le diamètre du corps, pas le nombre de cellules.");
    else
        setText(QString(tiennent ? "Les cellules d'%1 couvrent %2 sur %3. La puissance suit leur nombre, pas "
                                   "l'aire."
                                 : "⚠ Les cellules d'%1 couvrent %2 : elles ne tiennent pas sur %3.")
                    .arg(externes ? "un panneau" : "une face", aire(cellules), aire(place)));
    QPalette encre;
    if (!tiennent) encre.setColor(QPalette::WindowText, style::couleur(style::role::alerte));
    setPalette(encre);
}
