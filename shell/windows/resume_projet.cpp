#include "shell/windows/resume_projet.h"

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <numbers>

#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include "analysis/phrase_bilan.h"
#include "analysis/windows/carte_terre.h"
#include "orbit/orb_trajecto.h"
#include "orbit/windows/dessin_orbite.h"
#include "power/power_step.h"
#include "shell/formats.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"
#include "shell/windows/dessin_satellite.h"
#include "shell/windows/notes_html.h"
#include "shell/windows/vignette.h"
#include "widgets/disposition_flux.h"
#include "widgets/marque_modele.h"
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

QString texte_panneaux(const power_record& p) {
    constexpr const char* corps[] = {"prisme carré", "prisme hexagonal", "cylindre"};
    return (p.opt_panel_ext == vrai ? QString("externes, ")
                                    : QString("sur %1, ").arg(corps[std::clamp<int>(p.opt_faces, 0, 2)])) +
           aire_panneaux(p);
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

/// Figures of the budget's last turn under the verdict.
struct chiffre {
    const char* nom;
    const char* titre;
    const char* unite;
    int decimales;
    double tour_bilan::*valeur;
    double facteur;
};
constexpr chiffre chiffres[] = {
    {"marge", "marge", "%", 0, &tour_bilan::marge, 1},
    {"dod", "profondeur de décharge", "%", 0, &tour_bilan::dod, 1},
    {"gen", "produits par orbite", "Wh", 1, &tour_bilan::e_gen, 1},
    {"demande", "demandés par orbite", "Wh", 1, &tour_bilan::e_demande, 1},
    {"eclipse", "d'éclipse par orbite", "min", 1, &tour_bilan::eclipse, 1. / 60},
    {"t_bat", "batterie au plus chaud", "°C", 0, &tour_bilan::t_bat_max, 1},
};

QString en_alerte(const QString& texte) {
    return QString("<span style=\"color:%1\">⚠ %2</span>")
        .arg(style::couleur(style::role::alerte).name(), texte.toHtmlEscaped());
}

} // namespace

resume_projet::resume_projet(session& s, QWidget* parent)
    : page("resume_projet", parent), s_(s), grille_(new QGridLayout(fait_defiler())), lab_perime_(new QLabel),
      lab_projet_(new QLabel), lab_modele_(marque_modele("lab_modele_resume")), z_verdict_(new QFrame),
      lab_avis_pas_(new QLabel), lab_notes_(new QLabel), trace_(720) {
    grille_->setContentsMargins(style::espace(5), style::espace(3), style::espace(5), style::espace(3));
    grille_->setSpacing(style::espace(3));
    construit_titre();
    construit_verdict();
    construit_notes();
    construit_vignettes();
    cadres_[0] = cadre("orbite", "Orbite",
                       {{"orbite", "Orbite", "orbito_conf:0"},
                        {"altitudes", "Altitudes", "orbito_conf:0"},
                        {"periode", "Période", "orbito_conf:0"},
                        {"inclinaison", "Inclinaison", "orbito_conf:0"},
                        {"eclipse", "Part d'éclipse", "orbito_conf:0"},
                        {"pointage", "Pointage", "orbito_conf:1"},
                        {"environnement", "Environnement", "orbito_conf:2"}});
    cadres_[1] = cadre("energie", "Énergie",
                       {{"panneaux", "Panneaux", "power_conf:0"},
                        {"cellules", "Cellules", "power_conf:1"},
                        {"bus", "Bus", "power_conf:1"},
                        {"batterie", "Batterie", "power_conf:3"},
                        {"demande", "Puissance demandée", "power_conf:4"},
                        {"calcul_energie", "À lancer", "power_sim_all:-1"},
                        {"tableaux_energie", "", "power_exp_data:-1"}});
    cadres_[2] = cadre("attitude", "Attitude",
                       {{"masse", "Masse", "att_conf:0"},
                        {"inertie", "Inerties", "att_conf:0"},
                        {"actionneurs", "Actionneurs", "att_conf:2"},
                        {"calcul_attitude", "À lancer", "att_sim:-1"},
                        {"tableaux_attitude", "", "att_exp_data:-1"}});
    dispose();
    montre("calcul_energie", "Simulation du sous-système énergie");
    montre("tableaux_energie", "Tableaux et courbes");
    montre("calcul_attitude", "Simulation de l'attitude");
    montre("tableaux_attitude", "Tableaux et courbes");
    rafraichit();
}

/// The name of the project, the mark of the model, and the way back to the start page.
void resume_projet::construit_titre() {
    QFont f = font();
    f.setPointSizeF(f.pointSizeF() * 1.4);
    f.setBold(true);
    lab_projet_->setObjectName("lab_projet");
    lab_projet_->setFont(f);
    lab_projet_->setTextFormat(Qt::PlainText);
    lab_projet_->setWordWrap(true);
    auto* retour = new QLabel("<a href=\"accueil\">Page d'accueil et exemples</a>");
    retour->setObjectName("lab_accueil");
    connect(retour, &QLabel::linkActivated, this, [this] { emit demande_page("accueil"); });
    auto* titre = new QHBoxLayout;
    titre->setSpacing(style::espace(3));
    titre->addWidget(lab_projet_, 1);
    titre->addWidget(lab_modele_, 0, Qt::AlignTop);
    titre->addWidget(retour, 0, Qt::AlignRight | Qt::AlignTop);
    grille_->addLayout(titre, 0, 0, 1, -1);
}

/// The card of the verdict: its sign comes above these figures.
void resume_projet::construit_verdict() {
    z_verdict_->setObjectName("z_resume_verdict");
    z_verdict_->setFrameShape(QFrame::StyledPanel);
    auto* pile = new QVBoxLayout(z_verdict_);
    pile->setContentsMargins(style::espace(2), style::espace(2), style::espace(2), style::espace(2));
    auto* rangee = new QWidget;
    auto* flux = new disposition_flux(rangee);
    flux->setContentsMargins(style::espace(2), 0, style::espace(2), 0);
    flux->setSpacing(style::espace(5));
    for (const chiffre& c : chiffres) {
        auto* l = new QLabel;
        l->setObjectName(QString("lab_chiffre_") + c.nom);
        l->setTextFormat(Qt::RichText);
        flux->addWidget(l);
    }
    auto* lien = new QLabel("<a href=\"page_bilan\">Le bilan en détail</a>");
    lien->setObjectName("lab_vers_bilan");
    connect(lien, &QLabel::linkActivated, this, &page::demande_page);
    flux->addWidget(lien);
    lab_perime_->setObjectName("lab_perime");
    lab_perime_->setTextFormat(Qt::RichText);
    lab_perime_->setToolTip("Les réglages ont changé depuis le dernier calcul.");
    // Its place is kept, so that nothing jumps when it appears.
    QSizePolicy place = lab_perime_->sizePolicy();
    place.setRetainSizeWhenHidden(true);
    lab_perime_->setSizePolicy(place);
    flux->addWidget(lab_perime_);
    pile->addWidget(rangee);
    lab_avis_pas_->setObjectName("lab_avis_pas");
    lab_avis_pas_->setWordWrap(true);
    lab_avis_pas_->setContentsMargins(style::espace(2), 0, 0, 0);
    pile->addWidget(lab_avis_pas_);
    grille_->addWidget(z_verdict_, 1, 0, 1, -1);
    montre_bilan({});
}

void resume_projet::construit_notes() {
    lab_notes_->setObjectName("lab_notes");
    lab_notes_->setAccessibleName("Notes de l'étude");
    lab_notes_->setToolTip("Notes de l'étude : Fichier, Notes de l'étude…");
    lab_notes_->setTextFormat(Qt::RichText);
    lab_notes_->setWordWrap(true);
    lab_notes_->setFrameShape(QFrame::StyledPanel);
    lab_notes_->setMargin(style::espace(2));
    lab_notes_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse |
                                        Qt::LinksAccessibleByKeyboard);
    connect(lab_notes_, &QLabel::linkActivated, this, &resume_projet::va_a);
    grille_->addWidget(lab_notes_, 2, 0, 1, -1);
}

void resume_projet::construit_vignettes() {
    orbite_ = new dessin_orbite(s_.orbit.orbite);
    orbite_->setMinimumSize(style::espace(45), style::espace(44));
    satellite_ = new dessin_satellite(s_.power, s_.attitude);
    carte_ = new carte_terre;
    vignettes_[0] = new vignette("vig_orbite", "L'orbite dans son plan", orbite_, "Modifier l'orbite");
    vignettes_[1] = new vignette("vig_satellite", "Le satellite", satellite_, "Modifier les panneaux");
    vignettes_[2] = new vignette("vig_carte", "La trace du premier tour", carte_, "Ouvrir la page Carte");
    for (vignette* v : vignettes_) v->setMaximumHeight(style::espace(66)); // the figures stay in sight
    connect(vignettes_[0], &vignette::clicked, this, [this] { emit demande_fenetre("orbito_conf", 0); });
    connect(vignettes_[1], &vignette::clicked, this, [this] { emit demande_fenetre("power_conf", 0); });
    connect(vignettes_[2], &vignette::clicked, this, [this] { emit demande_page("page_carte"); });
    vignettes_[2]->legende("━ au Soleil    ╌ en éclipse");
}

void resume_projet::pose_verdict(QWidget* signe) {
    static_cast<QVBoxLayout*>(z_verdict_->layout())->insertWidget(0, signe);
}

void resume_projet::montre_bilan(const bilan& b) {
    for (const chiffre& c : chiffres) {
        const double x = b.tours.empty() ? NAN : b.tours.back().*c.valeur * c.facteur;
        const QString valeur = std::isfinite(x)
                                   ? QString::fromStdString(nombre_fr(x, c.decimales)) + " " + c.unite
                                   : QString("–");
        auto* l = findChild<QLabel*>(QString("lab_chiffre_") + c.nom);
        l->setText("<span style=\"font-size:large\"><b>" + valeur + "</b></span><br>" + c.titre);
        l->setAccessibleName(valeur + " " + c.titre);
    }
}

/// "power_conf:3", a window and its page, or a page of the workbench: "page_banc".
void resume_projet::va_a(const QString& cible) {
    const QString nom = cible.section(':', 0, 0);
    if (nom.startsWith("page_"))
        emit demande_page(nom);
    else
        emit demande_fenetre(nom, cible.section(':', 1).toInt());
}

/// One frame of lines: each value a link to the window and page that edit it.
QGroupBox* resume_projet::cadre(const char* nom, const QString& titre, const QList<QStringList>& lignes) {
    auto* boite = new QGroupBox(titre);
    boite->setObjectName(QString("z_resume_") + nom);
    auto* lignes_grille = new QGridLayout(boite);
    lignes_grille->setHorizontalSpacing(style::espace(3));
    lignes_grille->setVerticalSpacing(style::espace(1));
    for (int i = 0; i < int(lignes.size()); ++i) {
        auto* etiquette = new QLabel(lignes[i][1]);
        etiquette->setAlignment(Qt::AlignRight | Qt::AlignTop);
        auto* valeur = new QLabel;
        valeur->setObjectName("lab_resume_" + lignes[i][0]);
        valeur->setProperty("cible", lignes[i][2]);
        valeur->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
        valeur->setToolTip(lignes[i][2].endsWith("-1") ? "Ouvrir cette fenêtre" : "Modifier ce réglage");
        valeur->setWordWrap(true);
        connect(valeur, &QLabel::linkActivated, this, &resume_projet::va_a);
        lignes_grille->addWidget(etiquette, i, 0);
        lignes_grille->addWidget(valeur, i, 1);
    }
    lignes_grille->setColumnStretch(1, 1);
    lignes_grille->setRowStretch(int(lignes.size()), 1);
    return boite;
}

/// Three columns of picture over figures where there is room, else each picture beside its figures, else one
/// below the other.
void resume_projet::dispose() {
    const int colonnes = width() >= style::espace(225) ? 3 : width() >= style::espace(140) ? 2 : 1;
    if (colonnes == colonnes_) return;
    colonnes_ = colonnes;
    constexpr int premiere = 3; // row below the verdict and the notes
    for (int r = premiere; r < premiere + 7; ++r) grille_->setRowStretch(r, 0);
    for (int i = 0; i < 3; ++i) {
        grille_->setColumnStretch(i, i < colonnes ? 1 : 0);
        const bool large = colonnes == 3, paire = colonnes == 2;
        grille_->addWidget(vignettes_[i], premiere + (large ? 0 : paire ? i : 2 * i), large ? i : 0);
        grille_->addWidget(cadres_[i],
                           premiere + (large   ? 1
                                       : paire ? i
                                               : 2 * i + 1),
                           large   ? i
                           : paire ? 1
                                   : 0);
    }
    grille_->setRowStretch(premiere + 6, 1);
}

void resume_projet::resizeEvent(QResizeEvent* e) {
    page::resizeEvent(e);
    dispose();
}

void resume_projet::montre(const char* nom, const QString& texte, const QString& alerte) {
    auto* l = findChild<QLabel*>(QString("lab_resume_") + nom);
    QString t = "<a href=\"" + l->property("cible").toString() + "\">" + texte.toHtmlEscaped() + "</a>";
    if (!alerte.isEmpty()) t += "<br>" + en_alerte(alerte);
    l->setText(t);
}

void resume_projet::montre_orbite() {
    const record_orbite& o = s_.orbit.orbite;
    const double perigee = altitude_perigee(o);
    const double apogee = altitude_apogee(o);
    montre("orbite", QString::fromStdString(s_.nom_orbite) +
                         (modifiee(s_, rubrique::orbite) ? " (modifiée, à enregistrer)" : ""));
    montre("altitudes", texte_image(perigee, "0.0") + " à " + texte_image(apogee, "0.0") + " km");
    const double periode = 1.0 / o.orb_moy_mvt;
    montre("periode", std::isfinite(periode) && std::fabs(periode) < 1e4
                          ? QString::fromStdString(format_duree(std::lround(periode * secondes_par_jour)))
                          : QString("indéfinie"));
    vignettes_[0]->legende("périgée " + texte_image(perigee, "0") + " km, apogée " +
                           texte_image(apogee, "0") + " km, inclinaison " +
                           texte_image(o.orb_inclinaison, "0.0") + "°");
    montre("inclinaison", texte_image(o.orb_inclinaison, "0.00") + "°");
    montre_trace();
    montre("environnement", "albédo " + texte_image(s_.power.albedo[0], "0.00") + ", Terre " +
                                texte_image(s_.power.earth_ir[0], "0") + " W/m² en janvier");
    const pointage_record& p = s_.orbit.pointage;
    montre("pointage",
           (p.orbital == vrai ? QString("repère orbital local") : QString("repère inertiel")) +
               (p.spin == vrai ? ", spin " + texte_image(p.vspin, "0.000") + " tr/min" : QString()));
}

/// The first turn from the start of the period, on the map and in its share of eclipse.
void resume_projet::montre_trace() {
    const surveillance veille;
    const double j = s_.periode.j_debut;
    contenu_carte c;
    c.trace = trace_.autour(s_.orbit.orbite, s_.modele, j, 0, 1);
    c.soleil = point_subsolaire(s_.modele, j);
    double eclipse = 0; // [days]
    for (std::size_t i = 1; i < c.trace.size(); ++i)
        eclipse += (c.trace[i].j - c.trace[i - 1].j) * (c.trace[i].eclipse + c.trace[i - 1].eclipse) / 2;
    const bool bonne = !veille.faute() && !c.trace.empty();
    if (bonne) c.satellite = place_au_sol(s_.orbit.orbite, s_.modele, j);
    montre("eclipse", !bonne ? QString("indéfinie : orbite hors du domaine du modèle")
                             : texte_image(100.0 * eclipse / (c.trace.back().j - c.trace.front().j), "0.0") +
                                   " % de la période");
    carte_->montre(std::move(c));
}

void resume_projet::montre_energie() {
    const power_record& p = s_.power;
    montre("panneaux", texte_panneaux(p));
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
    vignettes_[1]->legende("panneaux " + texte_panneaux(s_.power) + ", " + texte_image(a.Mt, "0.0") + " kg");
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
    else if (!s_.modele_etude.empty())
        projet = "Étude : " + QString::fromStdString(s_.modele_etude) + " (copie de l'exemple)";
    lab_projet_->setText(projet);
    lab_modele_->setVisible(s_.modele.physique);
    lab_perime_->setVisible(resultats_perimes(s_));
    lab_perime_->setText(QString("<span style=\"color:%1; font-size:large\"><b>⚠ Résultats périmés</b></span>"
                                 "<br>relancez la simulation")
                             .arg(style::couleur(style::role::alerte).name()));
    const std::string avis = avis_pas(s_);
    lab_avis_pas_->setVisible(!avis.empty());
    lab_avis_pas_->setText(en_alerte(QString::fromStdString(avis)));
    montre_orbite();
    montre_energie();
    montre_attitude();
    lab_notes_->setVisible(!s_.notes.empty());
    lab_notes_->setText(notes_en_html(s_));
    orbite_->update();
    satellite_->update();
    std::fesetenv(&etat);
}
