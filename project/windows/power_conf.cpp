#include "project/windows/power_conf.h"

#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "project/windows/choix_composant.h"
#include "project/windows/power_conf_pages.h"
#include "widgets/style.h"
#include "widgets/verifications.h"

namespace {

constexpr int onglet_thermique = 2, onglet_batteries = 3;
constexpr unsigned types_cellule = 2, types_batterie = 4; ///< in the lists

bool cellule_inconnue(const power_record& p) { return static_cast<unsigned>(p.cel_type) >= types_cellule; }
bool batterie_inconnue(const power_record& p) { return static_cast<unsigned>(p.bat_type) >= types_batterie; }

} // namespace

power_conf::power_conf(session& s, QWidget* parent)
    : fenetre(s, "power_conf", "Définition système énergie", parent), s_(s), power_(s.power),
      onglets_(new QTabWidget), panneaux_(new page_panneaux(s.power)), cellules_(new page_cellules(s.power)),
      thermique_(new page_thermique(s.power)), batteries_(new page_batteries(s.power)),
      gestion_(new page_gestion(s.power)) {
    onglets_->setObjectName("Onglet_power");
    const std::pair<page_power*, const char*> pages[] = {{panneaux_, "&Panneaux"},
                                                         {cellules_, "&Cellules"},
                                                         {thermique_, "&Thermique"},
                                                         {batteries_, "&Batteries"},
                                                         {gestion_, "&Gestion"}};
    for (const auto& [page, titre] : pages) onglets_->addTab(defilee(page), titre);
    auto* quitter = new QPushButton("&Quitter");
    quitter->setObjectName("cmd_quit");
    quitter->setToolTip("Ferme la fenêtre ; les réglages sont déjà pris en compte");
    pose_quitter(quitter);

    auto* pile = new QVBoxLayout(contenu());
    pile->setContentsMargins(style::espace(2), style::espace(2), style::espace(2), style::espace(2));
    pile->addWidget(onglets_, 1);
    resize(style::espace(310), style::espace(176));

    connect(quitter, &QPushButton::clicked, this, &QWidget::close);
    connect(onglets_, &QTabWidget::currentChanged, this, [this](int page) {
        if (page == onglet_thermique) thermique_->montre_modele();
    });
    for (const auto& [page, titre] : pages)
        connect(page, &page_power::edite, this, [this] {
            for (page_power* p : std::initializer_list<page_power*>{panneaux_, cellules_, thermique_})
                p->montre_place();
            marque_changement();
        });
    connect(panneaux_, &page_power::edite, gestion_, &page_power::relit); // its drawing names the panels
    connect(batteries_, &page_batteries::catalogue_choisi, gestion_, &page_power::relit);
    connect(batteries_, &page_batteries::etat_courbes, this, [this](bool tracees) {
        montre_bandeau(tracees ? QString() : QString::fromUtf8(message_charge_incompatible));
    });
    const std::pair<page_power*, genre_composant> listes[] = {{cellules_, genre_composant::cellule},
                                                              {batteries_, genre_composant::batterie},
                                                              {thermique_, genre_composant::revetement}};
    for (const auto& [page, genre] : listes) {
        connect(page, &page_power::demande_composant, this, [this, g = genre] { choisit_composant(g); });
        connect(page, &page_power::garde_composant, this, [this, g = genre] { garde_composant_en_place(g); });
    }
    connect(batteries_, &page_batteries::courbe_incompatible, this, &power_conf::dit_courbe_incompatible);
    update_powerconf();
}

void power_conf::montre_page(int page) { onglets_->setCurrentIndex(page); }

void power_conf::update_powerconf() {
    // The batteries last: their curves may have a message.
    for (page_power* p :
         std::initializer_list<page_power*>{panneaux_, cellules_, thermique_, gestion_, batteries_})
        p->relit();
    QStringList inconnus;
    if (cellule_inconnue(power_)) inconnus << QString("de cellule %1").arg(power_.cel_type);
    if (batterie_inconnue(power_)) inconnus << QString("de batterie %1").arg(power_.bat_type);
    if (!inconnus.isEmpty())
        montre_bandeau(
            QString("Type %1 inconnu : les valeurs du projet restent ; choisissez un type de la liste "
                    "pour les remplacer.")
                .arg(inconnus.join(" et type ")));
}

void power_conf::choisit_composant(genre_composant g) {
    QStringList surfaces;
    if (g == genre_composant::revetement)
        for (const std::string& t : surfaces_a_revetir(power_)) surfaces << QString::fromStdString(t);
    choix_composant d(g, s_.dossier_depart, surfaces, thermique_->surface(), this);
    if (d.exec() != QDialog::Accepted || !d.choisi()) return;
    std::string raison;
    if (!pose_composant(s_, *d.choisi(), d.surface(), raison)) {
        message(this, gravite::arret,
                "« " + QString::fromStdString(d.choisi()->nom) + " » : " + QString::fromStdString(raison));
        return;
    }
    static constexpr const char* sujets[] = {"Cellules", "Batterie", "Revêtement"};
    s_.libelle_etape = std::string(sujets[static_cast<int>(g)]) +
                       (surfaces.isEmpty() ? "" : " (" + surfaces[d.surface()].toStdString() + ")") + " : " +
                       d.choisi()->nom;
    update_powerconf();
    marque_changement();
}

void power_conf::garde_composant_en_place(genre_composant g) {
    composant c = composant_en_place(s_, g, thermique_->surface());
    if (!demande_nom_composant(this, c)) return;
    std::string raison;
    if (garde_composant(s_.dossier_depart, c, raison))
        signale("Composant ajouté à votre liste : " + QString::fromStdString(c.nom));
    else
        message(this, gravite::arret,
                "Le composant n'a pas pu être gardé.\n" + QString::fromStdString(raison));
}

void power_conf::dit_courbe_incompatible() {
    if (!isVisible()) return; // the bar says it when the window comes: a run that opens it has told it
    montre_page(onglet_batteries);
    message(this, gravite::arret, QString::fromUtf8(message_charge_incompatible));
    // Later: the click that has left the box may still go on to another page or window.
    const auto revient = [this] {
        montre_page(onglet_batteries);
        emit demande_fenetre(objectName(), onglet_batteries);
    };
    QMetaObject::invokeMethod(this, revient, Qt::QueuedConnection);
}
