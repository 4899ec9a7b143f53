#include "orbit/windows/page_attitude.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>

#include "attitude/att_defin_attitude.h"
#include "orbit/orb_champs.h"
#include "orbit/orb_trajecto.h"
#include "orbit/orientation_soleil.h"
#include "orbit/pointage.h"
#include "orbit/windows/dessin_pointage.h"
#include "project/etude_champs.h"
#include "shell/surveillance.h"
#include "shell/utilitaires.h"
#include "widgets/acces.h"
#include "widgets/conduite.h"
#include "widgets/style.h"
#include "widgets/textes.h"
#include "widgets/verifications.h"

namespace {

/// The boxes of the local orbital frame.
const champ_orb* const orbitaux[] = {&champ_orb_de("roulis"), &champ_orb_de("tangage"),
                                     &champ_orb_de("lacet")};
const champ_orb& inertiel = champ_orb_de("inertiel");
const champ_orb& vitesse_spin = champ_orb_de("vspin");

/// A box in a grid between its label and its unit.
QLineEdit* boite(QGridLayout* grille, int ligne, const char* nom, const QString& etiquette,
                 const QString& unite, const QString& aide) {
    auto* b = new QLineEdit;
    b->setObjectName(nom);
    b->setToolTip(aide);
    style::boite_nombre(b, 9);
    auto* l = new QLabel(etiquette);
    l->setBuddy(b);
    grille->addWidget(l, ligne, 0, Qt::AlignRight);
    grille->addWidget(b, ligne, 1);
    grille->addWidget(new QLabel(unite), ligne, 2);
    return b;
}

} // namespace

page_attitude::page_attitude(session& s, QWidget* parent) : QWidget(parent), s_(s) {
    auto* grille = new QGridLayout(this);
    grille->setSpacing(style::espace(3));
    grille->addWidget(cree_pointage(), 0, 0);
    grille->addWidget(cree_spin(), 1, 0);
    auto* cadre = new QGroupBox("Pointage nominal");
    auto* dedans = new QVBoxLayout(cadre);
    dessin_ = new dessin_pointage(s_.orbit.pointage);
    dedans->addWidget(dessin_);
    grille->addWidget(cadre, 0, 1, 2, 1);
    grille->setColumnStretch(1, 1);
    grille->setRowStretch(1, 1);
}

QWidget* page_attitude::cree_pointage() {
    auto* cadre = new QGroupBox("Attitude");
    auto* grille = new QGridLayout(cadre);
    grille->setHorizontalSpacing(style::espace(6));
    grille->setVerticalSpacing(style::espace(3));
    opt_att_ = new QRadioButton("Pointage repère orbital local");
    opt_att_->setObjectName("opt_att");
    opt_att_->setToolTip(
        "Angles donnés par rapport à l'orbite : X le long de la trace, Y normal au plan, Z radial");
    opt_iner_ = new QRadioButton("Pointage repère inertiel");
    opt_iner_->setObjectName("opt_iner");
    opt_iner_->setToolTip(
        "Angles donnés par rapport au repère de 1950 ; ils sont convertis à l'époque de l'orbite");
    for (QWidget* o : {opt_att_, opt_iner_}) lie_champ(o, element_nomme("orbital"));
    connect(opt_att_, &QRadioButton::clicked, this, [this] { choisit_repere(true); });
    connect(opt_iner_, &QRadioButton::clicked, this, [this] { choisit_repere(false); });
    auto* gauche = new QGridLayout;
    auto* droite = new QGridLayout;
    cree_angles(gauche, droite);
    grille->addWidget(opt_att_, 0, 0);
    grille->addWidget(opt_iner_, 0, 1);
    grille->addLayout(gauche, 1, 0);
    grille->addLayout(droite, 1, 1);
    grille->addLayout(cree_face(), 2, 0, 1, 2);
    grille->setColumnStretch(2, 1);
    return cadre;
}

/// The angles of the local orbital frame, and those of the inertial one.
void page_attitude::cree_angles(QGridLayout* gauche, QGridLayout* droite) {
    for (QGridLayout* g : {gauche, droite}) {
        g->setHorizontalSpacing(style::espace(2));
        g->setVerticalSpacing(style::espace(2));
        g->setColumnStretch(3, 1);
    }
    for (int i = 0; i < 3; ++i) {
        const champ_orb& a = *orbitaux[i];
        att_[i] = boite(gauche, i, a.controles[0], a.titre, a.unite, QString::fromStdString(infobulle(a)));
        connect(att_[i], &QLineEdit::editingFinished, this, [this, i] { saisie_orbitale(i); });
        iner_[i] = boite(droite, i, inertiel.controles[i], QString("Angle %1").arg("XYZ"[i]), inertiel.unite,
                         QString::fromStdString(infobulle(inertiel)));
        lie_champ(att_[i], element_de(a));
        lie_champ(iner_[i], element_de(inertiel, i));
        connect(iner_[i], &QLineEdit::editingFinished, this, [this, i] { saisie_inertielle(i); });
    }
}

/// The face that points, and the two commands that turn it to the Sun.
QLayout* page_attitude::cree_face() {
    cmd_sun_ = new QPushButton(style::icone("soleil"), "&Pointage soleil");
    cmd_sun_->setObjectName("cmd_sun");
    cmd_sun_->setToolTip("Tourne la face choisie vers le Soleil à l'époque de l'orbite");
    cmd_sun_->setAutoDefault(false);
    connect(cmd_sun_, &QPushButton::clicked, this, &page_attitude::pointe_soleil);
    auto* vers_soleil = new QPushButton("&Orienter vers le Soleil");
    vers_soleil->setObjectName("cmd_oriente_soleil");
    vers_soleil->setToolTip(
        "Choisit les angles inertiels pour que la face regarde le Soleil au début de la période");
    vers_soleil->setAutoDefault(false);
    auto* faces = new QMenu(vers_soleil);
    for (int f = 0; f < 6; ++f)
        connect(faces->addAction(QString("Face %1").arg(noms_faces[f])), &QAction::triggered, this,
                [this, f] { oriente(f); });
    vers_soleil->setMenu(faces);
    face_ = new QComboBox;
    face_->setObjectName("cmb_pointage");
    face_->addItems({"+X", "+Y", "+Z", "-X", "-Y", "-Z"});
    face_->setToolTip("La face qui pointe (le choix « -Y » laisse la face précédente)");
    lie_champ(face_, element_nomme("mode_pointage"));
    connect(face_, &QComboBox::activated, this, [this] {
        choisit_face(s_.orbit.pointage, face_->currentText().toLatin1().constData());
        emit modifiee();
    });
    auto* rangee = new QHBoxLayout;
    rangee->setSpacing(style::espace(2));
    rangee->addWidget(new QLabel("Face"));
    rangee->addWidget(face_);
    rangee->addSpacing(style::espace(4));
    rangee->addWidget(cmd_sun_);
    rangee->addWidget(vers_soleil);
    rangee->addStretch(1);
    return rangee;
}

QWidget* page_attitude::cree_spin() {
    auto* cadre = new QGroupBox("Rotation");
    auto* grille = new QGridLayout(cadre);
    spin_ = new QCheckBox("&Spin");
    spin_->setObjectName("Chk_spin");
    spin_->setToolTip("Fait tourner le satellite depuis le début de la simulation");
    connect(spin_, &QCheckBox::clicked, this, &page_attitude::saisie_spin);
    grille->addWidget(spin_, 0, 0, 1, 2);
    vspin_ = boite(grille, 1, "txt_vspin", vitesse_spin.titre, vitesse_spin.unite,
                   QString::fromStdString(infobulle(vitesse_spin)));
    connect(vspin_, &QLineEdit::editingFinished, this, &page_attitude::saisie_spin);
    axe_ = new QComboBox;
    axe_->setObjectName("Cmb_Spin");
    axe_->addItems({"X", "Y", "Z"});
    axe_->setToolTip("Axe enregistré avec la session ; le modèle tourne autour du lacet seul");
    connect(axe_, &QComboBox::activated, this, &page_attitude::saisie_spin);
    lie_champ(spin_, element_nomme("spin"));
    lie_champ(vspin_, element_nomme("vspin"));
    lie_champ(axe_, element_nomme("axe_spin"));
    grille->addWidget(new QLabel("Autour de"), 2, 0, Qt::AlignRight);
    grille->addWidget(axe_, 2, 1, Qt::AlignLeft);
    auto* note =
        new QLabel("La simulation d'énergie tourne autour de l'axe de lacet, quel que soit l'axe choisi.");
    note->setWordWrap(true);
    note->setEnabled(false);
    grille->addWidget(note, 3, 0, 1, 4);
    grille->setColumnStretch(3, 1);
    grille->setRowStretch(4, 1);
    return cadre;
}

void page_attitude::rafraichit() {
    const pointage_record& p = s_.orbit.pointage;
    opt_att_->setChecked(p.orbital != faux);
    opt_iner_->setChecked(p.orbital == faux);
    for (int i = 0; i < 3; ++i) {
        att_[i]->setText(texte_image(valeur(s_.orbit, *orbitaux[i]), orbitaux[i]->image));
        att_[i]->setEnabled(p.orbital != faux);
        iner_[i]->setText(texte_image(radians_vers_degres(p.inertiel[i]), inertiel.image));
        iner_[i]->setEnabled(p.orbital == faux);
    }
    constexpr int place_de_mode[] = {0, 0, 1, 2, 3, 5, 5}; // "-Z" is stored as 5
    face_->setCurrentIndex(p.mode_pointage >= 1 && p.mode_pointage <= 6 ? place_de_mode[p.mode_pointage]
                                                                        : -1);
    spin_->setChecked(p.spin != faux);
    vspin_->setText(texte_image(p.vspin, vitesse_spin.image));
    vspin_->setEnabled(p.spin != faux);
    axe_->setCurrentIndex(p.axe_spin);
    axe_->setEnabled(p.spin != faux);
    dessin_->update();
}

void page_attitude::choisit_repere(bool orbital) {
    s_.orbit.pointage.orbital = orbital ? vrai : faux;
    rafraichit();
    emit modifiee();
}

void page_attitude::place_a_l_epoque() {
    const record_orbite& o = s_.orbit.orbite;
    orb_position(date_epoque(o.orb_an, o.orb_jour - 1.0), s_.orbit);
}

/// Reads an edited box within its range; false when the hand has not changed it or the text is no number.
bool page_attitude::lit_saisie(QLineEdit* b, const champ_orb& c, double montre, double& x) {
    const QString texte = b->text();
    if (!touchee(b) || !verif_double(b, texte, texte_image(montre, c.image), x)) return false;
    const double tape = x;
    x = borne(x, c.min, c.max);
    emit avis(
        tape == x
            ? QString()
            : QString("« %1 » a été ramené à %2 (de %3 à %4).").arg(texte).arg(x).arg(c.min).arg(c.max));
    return true;
}

void page_attitude::saisie_orbitale(int axe) {
    pointage_record& p = s_.orbit.pointage;
    const champ_orb& a = *orbitaux[axe];
    double x = 0;
    if (!lit_saisie(att_[axe], a, valeur(s_.orbit, a), x)) return;
    change(s_.orbit, a, x);
    place_a_l_epoque();
    pointage_orbital(s_.orbit, p.roulis, p.tangage, p.lacet);
    rafraichit();
    emit modifiee();
}

void page_attitude::saisie_inertielle(int axe) {
    pointage_record& p = s_.orbit.pointage;
    double x = 0;
    if (!lit_saisie(iner_[axe], inertiel, radians_vers_degres(p.inertiel[axe]), x)) return;
    p.inertiel[axe] = degres_vers_radians(x);
    place_a_l_epoque();
    pointage_inertiel(s_.orbit);
    rafraichit();
    emit modifiee();
}

void page_attitude::saisie_spin() {
    pointage_record& p = s_.orbit.pointage;
    const drapeau spin = spin_->isChecked() ? vrai : faux;
    const auto axe = static_cast<int16_t>(axe_->currentIndex());
    double vitesse = p.vspin;
    const bool tapee = lit_saisie(vspin_, vitesse_spin, p.vspin, vitesse);
    if (!tapee && spin == p.spin && axe == p.axe_spin) return; // the box was only passed through
    p.spin = spin;
    p.axe_spin = axe;
    p.vspin = vitesse;
    rafraichit();
    emit modifiee();
}

void page_attitude::pointe_soleil() {
    const record_orbite& o = s_.orbit.orbite;
    place_a_l_epoque();
    const surveillance veille;
    pointage_soleil(date_epoque(o.orb_an, o.orb_jour - 1.0), s_.attitude, s_.orbit);
    if (veille.faute()) {
        emit faute_soleil(QString::fromStdString(surveillance::description()));
        return;
    }
    const auto& yd = s_.attitude.yd;
    pointage_orbital(s_.orbit, yd[0], yd[2], yd[1]);
    rafraichit();
    emit modifiee();
}

void page_attitude::oriente(int face) {
    const surveillance veille;
    if (!oriente_vers_soleil(s_.orbit, face, s_.periode.j_debut)) {
        emit avis(
            "L'orbite ne donne pas de position au début de la période : la face ne peut pas être orientée.");
        return;
    }
    rafraichit();
    emit modifiee();
    emit avis(QString("La face %1 regarde le Soleil le %2.")
                  .arg(noms_faces[face],
                       QString::fromStdString(date_vers_texte(jour_vers_date(s_.periode.j_debut)))));
}
