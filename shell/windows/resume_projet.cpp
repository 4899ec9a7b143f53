#include "shell/windows/resume_projet.h"

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <numbers>

#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>

#include "orbit/orb_trajecto.h"
#include "power/power_step.h"
#include "shell/formats.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"
#include "shell/windows/trace_sol.h"
#include "widgets/style.h"
#include "widgets/textes.h"

namespace {

QString nom_projet(const std::string& chemin, const std::string& modele) {
    if (!chemin.empty()) return QFileInfo(QString::fromStdString(chemin)).completeBaseName();
    return modele.empty() ? QString("sans_nom") : QString::fromStdString(modele) + " (exemple)";
}

/// Area that bears cells [m2], as text.
QString aire_panneaux(const power_record& p) {
    if (p.opt_panel_ext == vrai) return "2 × " + texte_image(p.ext_area, "0.00") + " m²";
    if (p.opt_faces == 0 || p.opt_faces == 1) {
        const int faces = p.opt_faces == 0 ? 4 : 6;
        return QString("%1 × %2 m²")
            .arg(faces)
            .arg(texte_image(double(p.body_height) * p.body_width, "0.00"));
    }
    return texte_image(std::numbers::pi * p.body_height * p.body_width, "0.00") + " m²";
}

bool non_nul(const vec3& v) { return v[0] != 0 || v[1] != 0 || v[2] != 0; }

QString actionneurs(const attitude_record& a) {
    QStringList liste;
    if (non_nul(a.mext)) liste << "mât à gradient de gravité";
    if (non_nul(a.dip_act)) liste << "magnétocoupleurs";
    if (non_nul(a.jets)) liste << "tuyères";
    if (non_nul(a.JR)) liste << "roues";
    if (non_nul(a.md)) liste << "amortisseurs";
    return liste.isEmpty() ? QString("aucun") : liste.join(", ");
}

constexpr const char* batteries[] = {"Nickel-Cadmium", "Nickel-Hydrogène", "Lithium-Ion", "Générique"};

} // namespace

resume_projet::resume_projet(session& s, QWidget* parent)
    : page("resume_projet", parent), s_(s), grille_(new QGridLayout(fait_defiler())), lab_perime_(new QLabel),
      lab_projet_(new QLabel), trace_(new trace_sol) {
    QGridLayout* grille = grille_;
    grille->setContentsMargins(style::espace(6), style::espace(4), style::espace(6), style::espace(4));
    grille->setSpacing(style::espace(4));

    QFont f = font();
    f.setPointSizeF(f.pointSizeF() * 1.4);
    f.setBold(true);
    lab_projet_->setObjectName("lab_projet");
    lab_projet_->setFont(f);
    lab_projet_->setTextFormat(Qt::PlainText);
    grille->addWidget(lab_projet_, 0, 0, 1, 2);
    auto* retour = new QLabel("<a href=\"accueil\">Page d'accueil et exemples</a>");
    retour->setObjectName("lab_accueil");
    connect(retour, &QLabel::linkActivated, this, [this] { emit demande_page("accueil"); });
    grille->addWidget(retour, 0, 2, Qt::AlignRight);
    lab_perime_->setObjectName("lab_perime");
    lab_perime_->setWordWrap(true);
    // Its line is kept, so that nothing jumps when it appears.
    QSizePolicy place = lab_perime_->sizePolicy();
    place.setRetainSizeWhenHidden(true);
    lab_perime_->setSizePolicy(place);
    lab_perime_->setMinimumHeight(fontMetrics().height());
    grille->addWidget(lab_perime_, 2, 0, 1, 3);

    cadre("orbite", "Orbite",
          {{"orbite", "Orbite", "orbito_conf:0"},
           {"altitudes", "Altitudes", "orbito_conf:0"},
           {"periode", "Période", "orbito_conf:0"},
           {"inclinaison", "Inclinaison", "orbito_conf:0"},
           {"eclipse", "Part d'éclipse", "orbito_conf:0"},
           {"pointage", "Pointage", "orbito_conf:1"},
           {"environnement", "Environnement", "orbito_conf:2"}});
    cadre("energie", "Énergie",
          {{"panneaux", "Panneaux", "power_conf:0"},
           {"cellules", "Cellules", "power_conf:1"},
           {"bus", "Bus", "power_conf:1"},
           {"batterie", "Batterie", "power_conf:3"},
           {"demande", "Puissance demandée", "power_conf:4"},
           {"calcul_energie", "À lancer", "power_sim_all:-1"},
           {"tableaux_energie", "", "power_exp_data:-1"}});
    cadre("attitude", "Attitude",
          {{"masse", "Masse", "att_conf:0"},
           {"inertie", "Inerties", "att_conf:0"},
           {"actionneurs", "Actionneurs", "att_conf:2"},
           {"calcul_attitude", "À lancer", "att_sim:-1"},
           {"tableaux_attitude", "", "att_exp_data:-1"}});
    auto* sol = new QGroupBox("Trace au sol d'une révolution");
    auto* pile = new QVBoxLayout(sol);
    pile->addWidget(trace_, 1);
    auto* legende = new QLabel("○ départ    ━ au Soleil    ╌ en éclipse");
    legende->setAlignment(Qt::AlignHCenter);
    pile->addWidget(legende);
    grille->addWidget(sol, 4, 0, 1, 3);
    grille->setRowStretch(4, 1);
    montre("calcul_energie", "Simulation du sous-système énergie");
    montre("tableaux_energie", "Tableaux et courbes");
    montre("calcul_attitude", "Simulation de l'attitude");
    montre("tableaux_attitude", "Tableaux et courbes");
    rafraichit();
}

void resume_projet::pose_verdict(QWidget* signe) { grille_->addWidget(signe, 1, 0, 1, 3); }

/// One frame of lines: each value a link to the window and page that edit it.
void resume_projet::cadre(const char* nom, const QString& titre, const QList<QStringList>& lignes) {
    auto* boite = new QGroupBox(titre);
    auto* lignes_grille = new QGridLayout(boite);
    lignes_grille->setHorizontalSpacing(style::espace(3));
    lignes_grille->setVerticalSpacing(style::espace(2));
    for (int i = 0; i < int(lignes.size()); ++i) {
        auto* etiquette = new QLabel(lignes[i][1]);
        etiquette->setAlignment(Qt::AlignRight | Qt::AlignTop);
        auto* valeur = new QLabel;
        valeur->setObjectName("lab_resume_" + lignes[i][0]);
        valeur->setProperty("cible", lignes[i][2]);
        valeur->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
        valeur->setToolTip(lignes[i][2].endsWith("-1") ? "Ouvrir cette fenêtre" : "Modifier ce réglage");
        valeur->setWordWrap(true);
        connect(valeur, &QLabel::linkActivated, this, [this](const QString& cible) {
            emit demande_fenetre(cible.section(':', 0, 0), cible.section(':', 1).toInt());
        });
        lignes_grille->addWidget(etiquette, i, 0);
        lignes_grille->addWidget(valeur, i, 1);
    }
    lignes_grille->setColumnStretch(1, 1);
    lignes_grille->setRowStretch(int(lignes.size()), 1);
    boite->setObjectName(QString("z_resume_") + nom);
    const int colonne = int(findChildren<QGroupBox*>().size());
    grille_->addWidget(boite, 3, colonne);
    grille_->setColumnStretch(colonne, 1);
}

void resume_projet::montre(const char* nom, const QString& texte, const QString& alerte) {
    auto* l = findChild<QLabel*>(QString("lab_resume_") + nom);
    QString t = "<a href=\"" + l->property("cible").toString() + "\">" + texte.toHtmlEscaped() + "</a>";
    if (!alerte.isEmpty())
        t += QString("<br><span style=\"color:%1\">⚠ %2</span>")
                 .arg(style::couleur(style::role::alerte).name(), alerte.toHtmlEscaped());
    l->setText(t);
}

void resume_projet::montre_orbite() {
    const record_orbite& o = s_.orbit.orbite;
    const double perigee = (1.0 - o.orb_excentricite) * o.orb_demi - rayon_terre;
    const double apogee = (1.0 + o.orb_excentricite) * o.orb_demi - rayon_terre;
    montre("orbite", QString::fromStdString(s_.nom_orbite) +
                         (modifiee(s_, rubrique::orbite) ? " (modifiée, à enregistrer)" : ""));
    montre("altitudes", texte_image(perigee, "0.0") + " à " + texte_image(apogee, "0.0") + " km");
    const double periode = 1.0 / o.orb_moy_mvt;
    montre("periode", std::isfinite(periode) && std::fabs(periode) < 1e4
                          ? QString::fromStdString(format_duree(std::lround(periode * secondes_par_jour)))
                          : QString("indéfinie"));
    montre("inclinaison", texte_image(o.orb_inclinaison, "0.00") + "°");
    const surveillance veille;
    trace_->montre(s_.orbit, s_.periode.j_debut);
    montre("eclipse", veille.faute()
                          ? QString("indéfinie : orbite hors du domaine du modèle")
                          : texte_image(100.0 * trace_->part_eclipse(), "0.0") + " % de la période");
    montre("environnement", "albédo " + texte_image(s_.power.albedo[0], "0.00") + ", Terre " +
                                texte_image(s_.power.earth_ir[0], "0") + " W/m² en janvier");
    const pointage_record& p = s_.orbit.pointage;
    montre("pointage",
           (p.orbital == vrai ? QString("repère orbital local") : QString("repère inertiel")) +
               (p.spin == vrai ? ", spin " + texte_image(p.vspin, "0.000") + " tr/mn" : QString()));
}

void resume_projet::montre_energie() {
    const power_record& p = s_.power;
    constexpr const char* corps[] = {"prisme carré", "prisme hexagonal", "cylindre"};
    montre("panneaux",
           (p.opt_panel_ext == vrai ? QString("externes, ")
                                    : QString("sur %1, ").arg(corps[std::clamp<int>(p.opt_faces, 0, 2)])) +
               aire_panneaux(p));
    montre("cellules", QString("%1, %2 en série × %3 en parallèle")
                           .arg(p.cel_type == 0 ? "AsGa" : "Silicium", texte_image(p.cel_ns, "0"),
                                texte_image(p.cel_np, "0")));
    montre_bus();
    montre("batterie", QString("%1, %2 × %3 accumulateurs de %4 Ah")
                           .arg(batteries[std::clamp<int>(p.bat_type, 0, 3)])
                           .arg(p.bat_ns)
                           .arg(p.bat_np)
                           .arg(texte_image(p.bat_c, "0.0")));
    montre("demande", QString("%1 W de jour, %2 W en éclipse")
                          .arg(texte_image(p.p_demand[0], "0.0"), texte_image(p.p_demand[1], "0.0")));
}

/// Whether the generator can give anything to the bus as a run begins it: below the bus voltage its strings
/// carry no current at all.
void resume_projet::montre_bus() {
    power_record p = s_.power;
    power_state_init(p);
    const double bus = p.gst_regulated != 0 ? double(p.gst_vregul) : p.bat_ns * p.bat_v;
    const double vide = p.cel_ns * double(p.cel_voc) * (p.cel_opt_beol != 0 ? double(p.cel_radvoc) : 1.0);
    const QString tensions =
        QString("%1 V, générateur à vide %2 V à %3 °C")
            .arg(texte_image(bus, "0.0"), texte_image(vide, "0.0"), texte_image(p.cel_tref, "0"));
    QString alerte;
    if (p.gst_regulated != 0 && bus == 0)
        alerte = "tension régulée à saisir";
    else if (vide < bus)
        alerte = "le générateur n'atteint pas le bus et ne fournit rien : ajoutez des cellules en série";
    montre("bus", tensions, alerte);
}

void resume_projet::montre_attitude() {
    const attitude_record& a = s_.attitude;
    montre("masse", texte_image(a.Mt, "0.00") + " kg");
    montre("inertie", QString("%1, %2, %3 kg m²")
                          .arg(texte_image(a.I(0, 0), "0.000"), texte_image(a.I(1, 1), "0.000"),
                               texte_image(a.I(2, 2), "0.000")));
    montre("actionneurs", actionneurs(a));
}

void resume_projet::rafraichit() {
    // A run in progress watches the floating-point flags: what is computed here leaves them as they were.
    std::fenv_t etat;
    std::fegetenv(&etat);
    QString projet = "Énergie : " + nom_projet(s_.chemin_energie, s_.modele_energie);
    projet += "   ·   Attitude : " + nom_projet(s_.chemin_attitude, s_.modele_attitude);
    if (!s_.chemin_etude.empty())
        projet = "Étude : " + QFileInfo(QString::fromStdString(s_.chemin_etude)).completeBaseName();
    lab_projet_->setText(projet);
    const bool perime = resultats_perimes(s_);
    lab_perime_->setVisible(perime);
    if (perime)
        lab_perime_->setText(QString("<span style=\"color:%1\"><b>⚠ Résultats périmés</b></span> : les "
                                     "réglages ont changé depuis le dernier calcul. Relancez la simulation.")
                                 .arg(style::couleur(style::role::alerte).name()));
    montre_orbite();
    montre_energie();
    montre_attitude();
    std::fesetenv(&etat);
}
