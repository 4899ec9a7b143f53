#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QSignalBlocker>

#include "project/etude_champs.h"
#include "project/windows/dessin_bus.h"
#include "project/windows/power_conf_pages.h"
#include "widgets/acces.h"
#include "widgets/style.h"

namespace {

QGridLayout* grille_de(QGroupBox* g) {
    auto* grille = new QGridLayout(g);
    grille->setColumnStretch(3, 1);
    return grille;
}

} // namespace

page_gestion::page_gestion(power_record& p) : page_power(p), regul_(new QButtonGroup(this)) {
    auto* schema = new QGroupBox("Circulation de la puissance");
    auto* pile_schema = new QVBoxLayout(schema);
    bus_ = new dessin_bus;
    bus_->setObjectName("gst_img_bus");
    pile_schema->addWidget(bus_);

    auto* gauche = new QVBoxLayout;
    for (QWidget* g : {groupe_batterie(), groupe_bus(), groupe_charge()}) gauche->addWidget(g);
    gauche->addStretch();
    auto* pile = new QHBoxLayout(this);
    pile->addLayout(gauche);
    pile->addWidget(schema, 1);

    connect(regul_, &QButtonGroup::idToggled, this, [this](int indice, bool choisi) {
        if (!choisi) return;
        p_.gst_regulated = indice == 0 ? 1 : 0;
        relit();
        emit edite();
    });
}

QWidget* page_gestion::groupe_batterie() {
    auto* cadre = new QGroupBox("Charge de la batterie");
    auto* g = grille_de(cadre);
    pose_champ(g, 0, 0, "Charge initiale", boite("gst_txt_chini", "gst_charge_init"));
    pose_champ(g, 1, 0, "Tension de charge max", boite("gst_txt_chvmax", "gst_vch_max"));
    pose_champ(g, 2, 0, "Courant d'entretien", boite("gst_txt_cour_ent", "gst_i_maint"));
    pose_champ(g, 3, 0, "Courant de charge max", boite("gst_txt_ichmax", "gst_ich_max"));
    pose_champ(g, 4, 0, "Coefficient de recharge", boite("gst_txt_kcharge", "gst_k_recharge"));
    return cadre;
}

QWidget* page_gestion::groupe_bus() {
    auto* cadre = new QGroupBox("Bus");
    auto* g = grille_de(cadre);
    auto* regulee = option(regul_, "gst_opt_regul", 0, "Régulée");
    regulee->setToolTip("Le bus est tenu à la tension régulée");
    auto* libre = option(regul_, "gst_opt_regul", 1, "Non régulée");
    libre->setToolTip("Le bus suit la tension de la batterie");
    for (QWidget* o : {regulee, libre}) lie_champ(o, element_nomme("gst_regulated"));
    auto* choix = new QHBoxLayout;
    choix->addWidget(regulee);
    choix->addWidget(libre);
    choix->addStretch();
    g->addLayout(choix, 0, 0, 1, 4);
    vregul_ = boite("gst_txt_Vregul", "gst_vregul");
    pose_champ(g, 1, 0, "Tension régulée", vregul_);
    avis_vregul_ =
        new QLabel("⚠ Saisissez la tension régulée, de 0.1 à 100 V : sans elle le générateur ne donne rien.");
    avis_vregul_->setObjectName("gst_lab_vregul");
    avis_vregul_->setWordWrap(true);
    g->addWidget(avis_vregul_, 4, 0, 1, 4);
    pose_champ(g, 2, 0, "Rendement batterie/CU", boite("gst_txt_rendbat", "gst_rend_bat"));
    pose_champ(g, 3, 0, "Rendement GS/CU", boite("gst_txt_rendgs", "gst_rend_gs"));
    return cadre;
}

/// By day and in the shadow.
QWidget* page_gestion::groupe_charge() {
    auto* cadre = new QGroupBox("Charge utile");
    auto* g = grille_de(cadre);
    g->addWidget(new QLabel("Jour"), 0, 1, Qt::AlignCenter);
    g->addWidget(new QLabel("Eclipse "), 0, 2, Qt::AlignCenter);
    const char* champs[2][2] = {{"p_demand_jour", "p_demand_nuit"}, {"p_dissip_jour", "p_dissip_nuit"}};
    const char* noms[2] = {"gst_txt_pdem", "gst_txt_diss"};
    const char* libelles[2] = {"Puissance demandée", "Part dissipée à bord"};
    for (int l = 0; l < 2; ++l) {
        auto* lab = new QLabel(libelles[l]);
        g->addWidget(lab, l + 1, 0, Qt::AlignRight | Qt::AlignVCenter);
        for (int s = 0; s < 2; ++s) {
            auto* c = boite(QString("%1_%2").arg(noms[l]).arg(s), champs[l][s]);
            g->addWidget(c, l + 1, s + 1);
            if (s == 0) lab->setBuddy(c);
            if (s == 1) g->addWidget(new QLabel(c->unite()), l + 1, 3);
        }
    }
    return cadre;
}

void page_gestion::relit() {
    page_power::relit();
    const QSignalBlocker b(regul_);
    const bool regule = p_.gst_regulated != 0;
    regul_->button(regule ? 0 : 1)->setChecked(true);
    vregul_->setEnabled(regule);
    const bool absente = regule && !vregul_->permise();
    style::marque(vregul_, absente);
    QPalette encre;
    encre.setColor(QPalette::WindowText, style::couleur(style::role::alerte));
    avis_vregul_->setPalette(encre);
    avis_vregul_->setVisible(absente);
    bus_->montre(p_);
}
