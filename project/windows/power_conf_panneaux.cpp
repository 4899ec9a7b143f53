#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>

#include <cmath>

#include "project/etude_champs.h"
#include "project/windows/dessin_corps.h"
#include "project/windows/place_cellules.h"
#include "project/windows/power_conf_pages.h"
#include "shell/utilitaires.h"
#include "widgets/acces.h"
#include "widgets/style.h"

page_panneaux::page_panneaux(power_record& p) : page_power(p), opt_pan_(new QButtonGroup(this)) {
    auto* choix = new QGroupBox("Implantation des cellules");
    auto* pile_choix = new QVBoxLayout(choix);
    auto* externes = option(opt_pan_, "pan_opt_pan", 0, "Panneaux externes");
    externes->setToolTip("Deux panneaux identiques, hors du corps, qui peuvent suivre le Soleil");
    auto* faces = option(opt_pan_, "pan_opt_pan", 1, "Panneaux sur les faces");
    faces->setToolTip("Les cellules couvrent les faces latérales du corps");
    for (QWidget* o : {externes, faces}) lie_champ(o, element_nomme("opt_panel_ext"));
    pile_choix->addWidget(externes);
    pile_choix->addWidget(faces);

    auto* gauche = new QVBoxLayout;
    gauche->addWidget(choix);
    gauche->addWidget(groupe_externes());
    auto* cellules = new QGroupBox("Cellules");
    auto* pile_cellules = new QVBoxLayout(cellules);
    place_ = new place_cellules("pan_lab_place");
    pile_cellules->addWidget(place_);
    gauche->addWidget(cellules);
    gauche->addStretch();
    auto* pile = new QHBoxLayout(this);
    pile->addLayout(gauche);
    pile->addWidget(groupe_corps(), 1);

    connect(opt_pan_, &QButtonGroup::idToggled, this, [this](int indice, bool choisi) {
        if (choisi) choisit_option(indice);
    });
}

QWidget* page_panneaux::groupe_corps() {
    auto* g = new QGroupBox("Corps");
    liste_ = new QListWidget;
    liste_->setObjectName("pan_list_conf");
    liste_->addItems({"Prisme carré", "Prisme hexagonal", "Cylindre"});
    liste_->setToolTip("Forme du corps ; se choisit avec les panneaux sur les faces");
    liste_->setMaximumHeight(liste_->sizeHintForRow(0) * 3 + style::espace(3));
    liste_->setMaximumWidth(style::espace(50));

    auto* grille = new QGridLayout;
    auto* lab_h = pose_champ(grille, 0, 0, "Hauteur (m)", boite("pan_txt_h", "body_height"));
    lab_h->setObjectName("pan_lab_h");
    lab_s_ = pose_champ(grille, 1, 0, "Largeur (m)", boite("pan_txt_s", "body_width"));
    lab_s_->setObjectName("pan_lab_s");
    // The caption changes with the body: its place does not.
    lab_s_->setMinimumWidth(lab_s_->fontMetrics().horizontalAdvance("Diamètre (m)"));
    lab_s_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    auto* haut = new QHBoxLayout;
    haut->addWidget(liste_);
    haut->addSpacing(style::espace(6));
    haut->addLayout(grille);
    haut->addStretch();
    auto* pile = new QVBoxLayout(g);
    pile->addLayout(haut);
    constexpr std::array cotes = {4, 6, 0};
    for (int i = 0; i < 3; ++i) {
        images_[i] = new dessin_corps(cotes[i]);
        images_[i]->setObjectName(QString("pan_img_body_%1").arg(i));
        images_[i]->setToolTip("Le corps et ses dimensions ; les cellules sont en couleur");
        pile->addWidget(images_[i], 1);
    }
    lie_champ(liste_, element_nomme("opt_faces"));
    connect(liste_, &QListWidget::currentRowChanged, this, &page_panneaux::choisit_corps);
    return g;
}

QWidget* page_panneaux::groupe_externes() {
    externes_ = new QGroupBox("Panneaux externes");
    auto* grille = new QGridLayout(externes_);
    angle_ = boite("pan_txt_ext_ang", "pan_angle_init");
    pose_champ(grille, 0, 0, "Angle initial d'orientation", angle_);
    curseur_ = new QSlider(Qt::Horizontal);
    curseur_->setObjectName("pan_sld_ang");
    curseur_->setRange(-180, 180);
    curseur_->setPageStep(15);
    curseur_->setTickInterval(90);
    curseur_->setTickPosition(QSlider::TicksBelow);
    curseur_->setToolTip("Angle initial d'orientation, de -180° à 180°");
    grille->addWidget(curseur_, 1, 0, 1, 3);
    fixe_ = new QCheckBox("Sans liberté de basculement");
    fixe_->setObjectName("pan_chk_fix");
    fixe_->setToolTip("Coché : les panneaux restent à leur angle initial ; sinon ils suivent le Soleil");
    grille->addWidget(fixe_, 2, 0, 1, 3);
    pose_champ(grille, 3, 0, "Vitesse angulaire", boite("pan_txt_ext_omega", "pan_speed"));
    pose_champ(grille, 4, 0, "Retard de réponse", boite("pan_txt_ext_lag", "pan_delay"));
    pose_champ(grille, 5, 0, "Décalage admissible (°)", boite("pan_txt_ext_gap", "pan_tolerance"));

    lie_champ(fixe_, element_nomme("pan_fixed"));
    connect(curseur_, &QSlider::valueChanged, this, [this](int angle) {
        p_.pan_angle_init = static_cast<float>(angle);
        relit();
        emit edite();
    });
    connect(fixe_, &QCheckBox::toggled, this, [this](bool coche) {
        p_.pan_fixed = coche ? vrai : faux;
        relit();
        emit edite();
    });
    return externes_;
}

void page_panneaux::choisit_option(int indice) {
    p_.opt_panel_ext = indice == 0 ? vrai : faux;
    relit();
    emit edite();
}

void page_panneaux::choisit_corps(int indice) {
    if (indice < 0 || p_.opt_panel_ext != faux) return;
    p_.opt_faces = static_cast<int16_t>(indice);
    recalcule_faces(p_);
    relit();
    emit edite();
}

void page_panneaux::relit() {
    page_power::relit();
    const QSignalBlocker b1(opt_pan_), b2(liste_), b3(curseur_), b4(fixe_);
    const bool externes = p_.opt_panel_ext != faux;
    opt_pan_->button(externes ? 0 : 1)->setChecked(true);
    externes_->setEnabled(externes);
    liste_->setEnabled(!externes);
    liste_->setCurrentRow(p_.opt_faces == 0 ? 0 : p_.opt_faces == 1 ? 1 : 2);
    curseur_->setValue(static_cast<int>(std::lround(borne(p_.pan_angle_init, -180, 180))));
    fixe_->setChecked(p_.pan_fixed == vrai);
    montre_corps();
}

void page_panneaux::montre_corps() {
    const int forme = liste_->currentRow();
    lab_s_->setText(forme == 2 ? "Diamètre (m)" : "Largeur (m)");
    for (int i = 0; i < 3; ++i) {
        images_[i]->setVisible(i == forme);
        images_[i]->montre(p_.body_height, p_.body_width, p_.opt_panel_ext != faux, p_.pan_angle_init);
    }
}
