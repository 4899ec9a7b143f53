#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>

#include <algorithm>
#include <cmath>

#include "power/montage.h"
#include "power/power_thermique.h"
#include "project/etude_champs.h"
#include "project/windows/place_cellules.h"
#include "project/windows/power_conf_pages.h"
#include "widgets/acces.h"
#include "widgets/boite_date.h"
#include "widgets/graphe.h"
#include "widgets/rangee_souple.h"
#include "widgets/style.h"

namespace {

const QStringList noms_faces = {"Face X", "Face -X", "Face Y", "Face -Y", "Face Z", "Face -Z"};
const QStringList noms_surfaces = {"Panneaux", "Face supérieure", "Face inférieure"};

/// A row of the tables: what it is called, the end of its boxes' names, its fields in the two models.
struct ligne_thermique {
    const char *libelle, *nom, *champ_ext, *champ_fac;
};

constexpr ligne_thermique lignes[] = {
    {"Absorptivité initiale", "alpha", "ext_alpha0", "fac_alpha0"},
    {"Absorptivité limite", "alphalim", "ext_alpha_lim", "fac_alpha_lim"},
    {"Temps 99 %", "t99", "ext_t99", "fac_t99"},
    {"Émissivité", "eps", "ext_eps", "fac_eps"},
    {"Masse", "masse", "ext_mass", "fac_mass"},
    {"Chaleur spécifique", "cp", "ext_cp", "fac_cp"},
    {"Température initiale", "tinit", "ext_t_init", "fac_t_init"},
    {"Couplage conductif", "cond", "ext_cond", "fac_cond"},
    {"Couplage radiatif", "rad", "ext_rad", "fac_rad"},
};
constexpr int derniere_optique = 3, derniere_masse = 6; ///< rows of the rear side, rows of the internal node

/// A box of the table.
champ_saisie* etroite(champ_saisie* c) {
    style::boite_nombre(c, 7);
    return c;
}

QLabel* entete(const QString& texte) {
    auto* l = new QLabel(texte);
    l->setAlignment(Qt::AlignCenter);
    return l;
}

} // namespace

page_thermique::page_thermique(power_record& p) : page_power(p) {
    date_ = new boite_date(false);
    date_->setObjectName("th_txt_date");
    date_->setToolTip(
        "Date à laquelle les revêtements étaient neufs : début du vieillissement, de 1901 à 2099");
    lie_champ(date_, element_nomme("date_cell"));
    auto* lab_date = new QLabel("&Date initiale des cellules");
    lab_date->setBuddy(date_);
    auto* haut = new QHBoxLayout;
    haut->addWidget(lab_date);
    haut->addWidget(date_);
    haut->addStretch();
    haut->addLayout(boutons_composants("th"));

    auto* courbe = new QGroupBox("Vieillissement de l'absorptivité");
    auto* pile_courbe = new QVBoxLayout(courbe);
    vieillissement_ = new graphe;
    vieillissement_->setObjectName("th_graph_alpha");
    vieillissement_->setMinimumSize(style::espace(65), style::espace(60));
    pile_courbe->addWidget(vieillissement_);

    auto* gauche = new QVBoxLayout;
    gauche->addLayout(haut);
    gauche->addWidget(cadre_externes());
    gauche->addWidget(cadre_faces());
    place_ = new place_cellules("th_lab_place");
    gauche->addWidget(place_);
    gauche->addStretch();
    auto* colonne = new QWidget;
    colonne->setLayout(gauche);
    gauche->setContentsMargins(0, 0, 0, 0);
    auto* rangee = new rangee_souple;
    rangee->ajoute(colonne);
    rangee->ajoute(courbe, 1);
    (new QVBoxLayout(this))->addWidget(rangee);

    connect(date_, &boite_date::date_saisie, this, [this](double jour) {
        p_.date_cell = static_cast<int32_t>(std::nearbyint(jour));
        relit();
        emit edite();
    });
}

int page_thermique::surface() const {
    return montage_de(p_) == montage::externes ? 2 + faces_->currentRow() : surfaces_->currentRow();
}

QListWidget* page_thermique::liste(const QString& nom, const QStringList& entrees, const QString& aide) {
    auto* l = new QListWidget;
    l->setObjectName(nom);
    l->addItems(entrees);
    l->setCurrentRow(0);
    l->setToolTip(aide);
    l->setFixedHeight(l->sizeHintForRow(0) * static_cast<int>(entrees.size()) + style::espace(2));
    l->setMaximumWidth(style::espace(34));
    return l;
}

void page_thermique::croise_absorptivites(champ_saisie* neuve, champ_saisie* limite) {
    neuve->bornes_mobiles([=] { return limites{.max = limite->stocke()}; }, "Au plus l'absorptivité limite");
    limite->bornes_mobiles([=] { return limites{.min = neuve->stocke()}; },
                           "Au moins l'absorptivité initiale");
}

QWidget* page_thermique::cadre_externes() {
    thex_ = new QGroupBox("Modèle des panneaux externes");
    thex_->setObjectName("thex_frm");
    faces_ = liste("thex_list_cubeface", noms_faces, "La face du corps dont les valeurs sont montrées");
    nom_face_ = entete(noms_faces[0]);
    auto* grille = new QGridLayout;
    grille->addWidget(entete("Panneau,\nface avant"), 0, 1);
    grille->addWidget(entete("Panneau,\nface arrière"), 0, 2);
    grille->addWidget(nom_face_, 0, 3);
    grille->addWidget(entete("Nœud\ninterne"), 0, 4);
    auto* lab_aire = new QLabel("Aire");
    grille->addWidget(lab_aire, 1, 0, Qt::AlignRight);
    auto* aire = etroite(boite("thex_txt_aire_0", "ext_area"));
    lab_aire->setBuddy(aire);
    grille->addWidget(aire, 1, 1);
    grille->addWidget(etroite(boite("thex_txt_aire_2", "body_face_area")), 1, 3);
    grille->addWidget(new QLabel("m²"), 1, 5);
    QList<champ_saisie*> optiques[2]; // of the first two rows: the absorptivities, new and aged
    for (int l = 0; l < static_cast<int>(std::size(lignes)); ++l) {
        const QList<champ_saisie*> boites = ligne_externe(grille, l);
        if (l < 2) optiques[l] = boites;
    }
    for (int c = 0; c < 3; ++c) croise_absorptivites(optiques[0][c], optiques[1][c]);

    auto* choix = new QVBoxLayout;
    choix->addWidget(new QLabel("Face du corps"));
    choix->addWidget(faces_);
    choix->addStretch();
    auto* pile = new QHBoxLayout(thex_);
    pile->addLayout(choix);
    pile->addLayout(grille, 1);
    connect(faces_, &QListWidget::currentRowChanged, this, &page_thermique::montre_face);
    return thex_;
}

/// A row of the table: front and rear of the panel, the face chosen, the internal node, as far as each has
/// it.
QList<champ_saisie*> page_thermique::ligne_externe(QGridLayout* grille, int l) {
    const ligne_thermique& t = lignes[l];
    QList<champ_saisie*> boites;
    const auto ajoute = [&](int colonne, int element) {
        auto* c = etroite(boite(QString("thex_txt_%1_%2").arg(t.nom).arg(colonne), t.champ_ext, element));
        grille->addWidget(c, l + 2, colonne + 1);
        boites << c;
        return c;
    };
    auto* lab = new QLabel(t.libelle);
    grille->addWidget(lab, l + 2, 0, Qt::AlignRight);
    if (l > derniere_masse) {
        couplages_face_ << ajoute(2, 0);
    } else {
        ajoute(0, 0);
        if (l <= derniere_optique) ajoute(1, 1);
        champs_face_ << ajoute(2, 2);
        if (l > derniere_optique) ajoute(3, 8);
    }
    lab->setBuddy(boites[0]);
    // The internal node's mass is a plain one.
    const QString unite = boites[0]->unite();
    grille->addWidget(new QLabel(unite == "kg/m²" ? "kg/m², kg" : unite), l + 2, 5);
    return boites;
}

QWidget* page_thermique::cadre_faces() {
    thbd_ = new QGroupBox("Modèle des panneaux sur les faces");
    thbd_->setObjectName("thbd_frm");
    surfaces_ = liste("thbd_list_cond", noms_surfaces, "La surface dont les valeurs sont montrées");
    nom_surface_ = entete(noms_surfaces[0]);
    auto* grille = new QGridLayout;
    grille->addWidget(nom_surface_, 0, 1);
    grille->addWidget(entete("Nœud interne"), 0, 3);
    QList<champ_saisie*> surface;
    for (int l = 0; l < static_cast<int>(std::size(lignes)); ++l) {
        auto* c = boite(QString("thbd_txt_%1").arg(lignes[l].nom), lignes[l].champ_fac);
        pose_champ(grille, l + 1, 0, lignes[l].libelle, c);
        champs_surface_ << c;
    }
    croise_absorptivites(champs_surface_[0], champs_surface_[1]);
    const std::pair<const char*, const char*> interne[] = {{"thbd_txt_masse_int", "int_mass"},
                                                           {"thbd_txt_cp_int", "int_cp"},
                                                           {"thbd_txt_tinit_int", "int_t_init"}};
    for (int l = 0; l < 3; ++l) {
        auto* c = boite(interne[l].first, interne[l].second);
        grille->addWidget(c, derniere_optique + 2 + l, 3);
        grille->addWidget(new QLabel(c->unite()), derniere_optique + 2 + l, 4);
    }
    auto* cylindre = boite("thbd_txt_condcyl", "cyl_cond");
    grille->setRowMinimumHeight(static_cast<int>(std::size(lignes)) + 1, style::espace(3));
    pose_champ(grille, static_cast<int>(std::size(lignes)) + 2, 0, "Paroi du cylindre", cylindre);

    auto* choix = new QVBoxLayout;
    choix->addWidget(new QLabel("Surface"));
    choix->addWidget(surfaces_);
    choix->addStretch();
    auto* pile = new QHBoxLayout(thbd_);
    pile->addLayout(choix);
    pile->addLayout(grille, 1);
    connect(surfaces_, &QListWidget::currentRowChanged, this, &page_thermique::montre_surface);
    return thbd_;
}

void page_thermique::montre_modele() {
    const bool externes = p_.opt_panel_ext != faux;
    thex_->setVisible(externes);
    thbd_->setVisible(!externes);
    trace();
}

void page_thermique::montre_face() {
    const int face = std::max(0, faces_->currentRow());
    nom_face_->setText(noms_faces[face]);
    for (champ_saisie* c : champs_face_) c->choisit_element(face + 2);
    for (champ_saisie* c : couplages_face_) c->choisit_element(face);
    trace();
}

void page_thermique::montre_surface() {
    const int surface = std::max(0, surfaces_->currentRow());
    nom_surface_->setText(noms_surfaces[surface]);
    for (champ_saisie* c : champs_surface_) c->choisit_element(surface);
    trace();
}

void page_thermique::relit() {
    page_power::relit();
    date_->montre(p_.date_cell);
    montre_modele();
}

void page_thermique::trace() {
    vieillissement_->efface();
    vieillissement_->axes("Temps (h)", "Absorptivité");
    vieillissement_->legende(true, 1);
    int n = 0;
    double fin = 0;
    auto voit = [&](int32_t t99) { fin = std::max<double>(fin, t99); };
    auto ajoute = [&](const QString& nom, double a0, double lim, double t99) {
        QVector<double> x, y;
        for (int i = 0; i <= 60 && fin > 0; ++i) {
            const double h = 1.2 * fin * i / 60;
            // Days from a date near 0: the model takes its date in single precision.
            power_record neuf;
            neuf.date_cell = 0;
            const double a = alpha(neuf, static_cast<float>(h / 24), a0, lim, t99);
            if (std::isfinite(a)) x << h, y << a;
        }
        vieillissement_->donnees(vieillissement_->courbe(nom, style::couleur_courbe(n++)), x, y);
    };
    if (p_.opt_panel_ext != faux) {
        const int face = std::max(0, faces_->currentRow()) + 2;
        const std::pair<QString, int> courbes[] = {
            {"Panneau, face avant", 0}, {"Panneau, face arrière", 1}, {noms_faces[face - 2], face}};
        for (const auto& c : courbes) voit(p_.ext_t99[c.second]);
        for (const auto& [nom, i] : courbes)
            ajoute(nom, p_.ext_alpha0[i], p_.ext_alpha_lim[i], p_.ext_t99[i]);
    } else {
        for (int i = 0; i < 3; ++i) voit(p_.fac_t99[i]);
        for (int i = 0; i < 3; ++i)
            ajoute(noms_surfaces[i], p_.fac_alpha0[i], p_.fac_alpha_lim[i], p_.fac_t99[i]);
    }
    vieillissement_->limites_y(0, 1);
    vieillissement_->retrace();
}
