#include "power/windows/tableau_bord.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

#include "orbit/orb_trajecto.h"
#include "power/windows/icone_batterie.h"
#include "shell/formats.h"
#include "shell/utilitaires.h"
#include "widgets/graphe.h"
#include "widgets/jauge.h"
#include "widgets/style.h"
#include "widgets/textes.h"

using style::role;

namespace {

constexpr int pas_bande = 40;

/// What the strip shows: one orbit, or as many steps as make a curve where the step is long.
struct etendue_bande {
    double jours;
    bool une_orbite;
};

etendue_bande etendue_de(const session& s) {
    const double orbite = 1.0 / moy_mvt_de_demi(s.orbit.orbite.orb_demi);
    const double pas = pas_bande * s.periode.pas_sim / secondes_par_jour;
    return {std::max(orbite, pas), orbite >= pas};
}

QLabel* valeur(QGridLayout* g, int ligne, const QString& nom_objet, const QString& nom,
               const QString& bulle) {
    auto* n = new QLabel(nom);
    n->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* v = new QLabel;
    v->setObjectName(nom_objet);
    v->setToolTip(bulle);
    style::montre_calcule(v);
    v->setAlignment(Qt::AlignCenter);
    g->addWidget(n, ligne, 0);
    g->addWidget(v, ligne, 1);
    return v;
}

} // namespace

tableau_bord::tableau_bord(QWidget* parent) : QWidget(parent) {
    voltmetre_ = new jauge(tr("Tension"), QStringLiteral("lab_voltmeter"), QStringLiteral("VOLT"),
                           role::batterie, this);
    amperemetre_ = new jauge(tr("Courant"), QStringLiteral("lab_ammeter"), {}, role::batterie, this);
    amperemetre_->setToolTip(tr("Courant d'un accumulateur, en multiples de la capacité nominale [C]"));
    chargemetre_ = new jauge(tr("Charge"), QStringLiteral("lab_chargemeter"), {}, role::batterie, this);
    chargemetre_->setObjectName(QStringLiteral("pict_chargemeter"));
    chargemetre_->setToolTip(tr("État de charge de la batterie, de 0 (vide) à 1 (pleine)"));

    bande_ = new graphe(this);
    bande_->setObjectName(QStringLiteral("graphe_orbite"));
    bande_->setMinimumHeight(style::espace(31)); // with a legend of two rows it fits a screen of 540 px

    legende_ = new QLabel(this);
    legende_->setAlignment(Qt::AlignCenter);
    legende_->setWordWrap(true);
    auto* zone_bande = new QVBoxLayout;
    zone_bande->setSpacing(0);
    zone_bande->addWidget(legende_);
    zone_bande->addWidget(bande_, 1);
    montre_legende();

    auto* l = new QHBoxLayout(this);
    l->setContentsMargins(0, 0, 0, 0);
    l->setSpacing(style::espace(2));
    for (jauge* j : {voltmetre_, amperemetre_, chargemetre_}) l->addWidget(j, 2);
    l->addWidget(zone_etat());
    l->addLayout(zone_bande, 7);
}

QWidget* tableau_bord::zone_etat() {
    auto* zone = new QWidget(this);
    auto* g = new QGridLayout(zone);
    g->setContentsMargins(style::espace(), 0, style::espace(), 0);
    g->setVerticalSpacing(style::espace());
    lab_state_ = valeur(g, 1, QStringLiteral("lab_state"), tr("Batterie"), tr("État de la batterie"));
    QFont f = lab_state_->font();
    f.setBold(true);
    lab_state_->setFont(f);
    lab_chtime_ = valeur(g, 2, QStringLiteral("lab_chtime"), QStringLiteral("Temps de charge"),
                         tr("Durée de la charge en cours [hh:mm:ss]"));
    lab_distime_ = valeur(g, 3, QStringLiteral("lab_distime"), QStringLiteral("Temps de décharge"),
                          tr("Durée de la décharge en cours [hh:mm:ss]"));
    lab_cdate_ = valeur(g, 4, QStringLiteral("lab_cdate"), tr("Date"), tr("Date simulée [jj/mm/aaaa]"));
    lab_chour_ = valeur(g, 5, QStringLiteral("lab_chour"), tr("Heure"), tr("Heure simulée [hh:mm:ss]"));
    lab_state_->setMinimumWidth(lab_state_->fontMetrics().horizontalAdvance(QStringLiteral("  Déchargée  ")));
    g->setRowStretch(0, 1);
    g->setRowStretch(6, 1);
    zero_compteurs();
    return zone;
}

void tableau_bord::zero_compteurs() {
    for (QLabel* l : {lab_chtime_, lab_distime_}) l->setText(QString::fromStdString(format_duree(0)));
}

void tableau_bord::montre_mot(int etat) { lab_state_->setText(mot_batterie(etat)); }

void tableau_bord::reinitialise(const session& s) {
    voltmetre_->echelle(echelle_ronde(std::max(1.0, 1.05 * s.power.bat_ns * s.power.gst_vch_max)), true);
    amperemetre_->echelle(0.5, true);
    chargemetre_->echelle(1, false);
    eclipses_.clear();
    en_eclipse_ = false;
    bande_->efface();
    bande_->axes({}, tr("Puissance [W]"));
    bande_->axe_droit(tr("Charge [%]"));
    bande_->abscisses_dates();
    bande_->limites_y(0, 105, true);
    c_generateur_ = bande_->courbe(tr("Générateur"), style::couleur(role::generateur));
    c_utile_ = bande_->courbe(tr("Charge utile"), style::couleur(role::charge_utile), Qt::DashLine);
    c_charge_ = bande_->courbe(tr("Charge"), style::couleur(role::batterie), Qt::DashDotLine, true);
    p_max_ = 1.2 * std::max({1.0, static_cast<double>(s.power.p_demand[0]),
                             static_cast<double>(s.power.p_demand[1])});
}

/// Above the chart, where it hides no curve.
void tableau_bord::montre_legende() {
    const auto entree = [](const char* trait, role r, const QString& nom) {
        return QStringLiteral(" &nbsp;&nbsp;<span style='color:%1'><b>%2</b></span>&nbsp;%3")
            .arg(style::couleur(r).name(), QString::fromUtf8(trait), QString(nom).replace(' ', "&nbsp;"));
    };
    legende_->setText(QStringLiteral("<b>%1</b>")
                          .arg(une_orbite_ ? tr("Dernière orbite") : tr("%1 derniers pas").arg(pas_bande)) +
                      entree("━━", role::generateur, tr("Générateur")) +
                      entree("╍╍", role::charge_utile, tr("Charge utile")) +
                      entree("━·━", role::batterie, tr("Charge")) +
                      entree("▒", role::eclipse, tr("Éclipse")));
}

void tableau_bord::changeEvent(QEvent* e) {
    QWidget::changeEvent(e);
    if (e->type() == QEvent::PaletteChange) montre_legende();
}

void tableau_bord::affiche(const session& s) {
    affiche_jauges(s.power);
    lab_chtime_->setText(QString::fromStdString(format_duree(s.power.t_charge)));
    lab_distime_->setText(QString::fromStdString(format_duree(s.power.t_discharge)));
    // Half a millisecond keeps a whole second from showing as the one before.
    const date_record d = jour_vers_date(s.periode.j_courant + 0.0005 / secondes_par_jour);
    const QString date = QString::fromStdString(date_vers_texte(d));
    lab_cdate_->setText(date.section(' ', 0, 0));
    lab_chour_->setText(date.section(' ', 1));
    ajoute_a_la_bande(s);
}

void tableau_bord::affiche_jauges(const power_record& p) {
    voltmetre_->setToolTip(
        tr("Tension de la batterie entière [V] : %1 accumulateurs en série de %2 V chacun ; "
           "« OFF » quand elle ne débite ni ne charge")
            .arg(p.bat_ns)
            .arg(texte_image(p.bat_v, "0.00")));
    const double tension = p.bat_ns * p.bat_v;
    const bool active = p.bat_p != 0;
    voltmetre_->montre(tension, active ? texte_image(tension, "00.00 ") : QStringLiteral("OFF"), active);
    const double courant = p.bat_i / p.bat_c;
    amperemetre_->montre(courant, texte_image(courant, "0.00C"));
    chargemetre_->montre(p.bat_soc, texte_image(p.bat_soc, "0.00 "));
}

void tableau_bord::ajoute_a_la_bande(const session& s) {
    const auto [duree, une_orbite] = etendue_de(s);
    const double j = s.periode.j_courant;
    if (une_orbite != une_orbite_) {
        une_orbite_ = une_orbite;
        montre_legende();
    }
    // The clock of the real-time mode may have been put back: the strip needs sorted dates.
    if (bande_->nombre_points(c_generateur_) > 0 && j <= dernier_) reinitialise(s);
    if (bande_->nombre_points(c_generateur_) == 0) depart_ = j;

    const bool eclipse = s.power.eclipse == vrai;
    if (en_eclipse_)
        eclipses_.back().second = j;
    else if (eclipse)
        eclipses_.push_back({j, j});
    en_eclipse_ = eclipse;
    dernier_ = j;

    bande_->ajoute_point(c_generateur_, j, s.power.gen_power);
    bande_->ajoute_point(c_utile_, j, s.power.p_payload);
    bande_->ajoute_point(c_charge_, j, 100 * s.power.bat_soc);
    const double debut = std::max(depart_, j - duree);
    for (const int c : {c_generateur_, c_utile_, c_charge_}) bande_->oublie_avant(c, debut);
    while (!eclipses_.empty() && eclipses_.front().second < debut) eclipses_.removeFirst();
    bande_->bandes(eclipses_);
    p_max_ = std::max({p_max_, 1.1 * s.power.gen_power, 1.1 * s.power.p_payload});
    bande_->suit(); // a zoom lasts until the next step
    bande_->limites_y(0, p_max_);
    bande_->limites_x(debut, debut + duree); // fills from the left, then moves on
    bande_->retrace();
}
