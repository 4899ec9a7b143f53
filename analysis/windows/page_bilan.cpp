#include "analysis/windows/page_bilan.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QTabWidget>
#include <QTableWidget>

#include <cmath>

#include "analysis/modes.h"
#include "analysis/phrase_bilan.h"
#include "analysis/windows/criteres_bilan.h"
#include "analysis/windows/flux_bilan.h"
#include "analysis/windows/page_annee.h"
#include "analysis/windows/page_modes.h"
#include "project/etude_compare.h"
#include "shell/utilitaires.h"
#include "widgets/rangee_souple.h"
#include "widgets/signe_verdict.h"
#include "widgets/style.h"

namespace {

QString cellule(const colonne_bilan& c, const tour_bilan& t) {
    if (c.valeur == &tour_bilan::debut)
        return QString::fromStdString(date_vers_texte(jour_vers_date(t.debut)));
    const double x = t.*c.valeur;
    return std::isnan(x) ? QString() : QString::fromStdString(nombre_fr(x, c.decimales));
}

} // namespace

page_bilan::page_bilan(session& s, QWidget* parent)
    : page("page_bilan", parent), s_(s), tache_(this, [this](bilan b) { montre(std::move(b)); }),
      verdict_(new signe_verdict), lab_conseils_(new QLabel), flux_(new flux_bilan),
      criteres_(new criteres_bilan(s)), tab_tours_(new QTableWidget), onglets_(new QTabWidget),
      annee_(new page_annee(s)), modes_(new page_modes(s)) {
    construit();
    connect(criteres_, &criteres_bilan::change, this,
            [this] { emit presentation_changee("Critères du bilan"); });
    connect(modes_, &page_modes::change, this, [this](const QString& l) { emit configuration_changee(l); });
    connect(annee_, &page_annee::periode_choisie, this,
            [this] { emit configuration_changee("Période à la date du bilan"); });
}

void page_bilan::construit() {
    auto* grille = new QGridLayout(fait_defiler());
    grille->setContentsMargins(style::espace(4), style::espace(3), style::espace(4), style::espace(3));
    grille->setSpacing(style::espace(3));
    grille->addWidget(verdict_, 0, 0, 1, 2);
    lab_conseils_->setObjectName("lab_conseils");
    lab_conseils_->setWordWrap(true);
    lab_conseils_->setTextFormat(Qt::RichText);
    grille->addWidget(lab_conseils_, 1, 0, 1, 2);

    auto* cadre_flux = new QGroupBox("Énergie de la dernière orbite");
    (new QVBoxLayout(cadre_flux))->addWidget(flux_);
    auto* rangee = new rangee_souple;
    rangee->ajoute(cadre_flux, 3);
    rangee->ajoute(criteres_, 2);
    grille->addWidget(rangee, 2, 0, 1, 2);

    onglets_->setObjectName("onglets_bilan");
    tab_tours_->setObjectName("tab_tours");
    tab_tours_->setAccessibleName("Bilan de chaque orbite");
    tab_tours_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tab_tours_->setAlternatingRowColors(true);
    tab_tours_->verticalHeader()->hide();
    tab_tours_->setFont(style::police_nombres());
    onglets_->addTab(annee_, "Anné&e");
    onglets_->addTab(tab_tours_, "&Orbites");
    onglets_->addTab(modes_, "&Modes de consommation");
    onglets_->setMinimumHeight(style::espace(70));
    grille->addWidget(onglets_, 3, 0, 1, 2);
    grille->setRowStretch(3, 1);
}

void page_bilan::rafraichit() {
    criteres_->relit();
    modes_->relit();
    if (!jamais_vue_ && meme_etude(vue_, s_)) return;
    calcule();
}

void page_bilan::calcule() {
    jamais_vue_ = false;
    vue_ = s_;
    verdict_->montre(etat_verdict::calcul);
    reglages_bilan r{.dossier_donnees = s_.dossier_depart};
    tache_.lance([e = vue_, r](std::stop_token arret) mutable {
        r.arret = std::move(arret);
        return calcule_bilan(std::move(e), r);
    });
    annee_->calcule(vue_);
}

void page_bilan::montre(bilan b) {
    bilan_ = std::move(b);
    const criteres_valeurs c = criteres_en_vigueur(vue_);
    const bool vide = bilan_.tours.empty();
    verdict_->montre(bilan_.faute || vide ? etat_verdict::inconnu
                     : bilan_.tient       ? etat_verdict::tient
                                          : etat_verdict::tient_pas,
                     QString::fromStdString(phrase_bilan(bilan_, c)));
    QStringList lignes, mesures;
    if (vue_.modele.physique) lignes << "Bilan du modèle physique.";
    if (const std::string avis = avis_pas(vue_); !avis.empty())
        lignes << "<b>⚠ " + QString::fromStdString(avis).toHtmlEscaped() + "</b>";
    if (!vue_.modes.empty()) lignes << QString::fromStdString(phrase_modes(vue_)).toHtmlEscaped();
    for (const std::string& l : conseils(bilan_, vue_)) mesures << QString::fromStdString(l).toHtmlEscaped();
    if (!mesures.isEmpty() && !bilan_.tient) mesures[0].prepend("<b>Pour qu'il tienne : </b>");
    lignes += mesures;
    lab_conseils_->setVisible(!lignes.isEmpty());
    lab_conseils_->setText(lignes.join("<br>"));
    if (vide)
        flux_->vide();
    else
        flux_->montre(bilan_.tours.back());
    criteres_->montre(bilan_, c);
    remplit_tours();
}

void page_bilan::remplit_tours() {
    const auto colonnes = colonnes_bilan();
    tab_tours_->setColumnCount(int(colonnes.size()));
    tab_tours_->setRowCount(int(bilan_.tours.size()));
    for (int c = 0; c < int(colonnes.size()); ++c) {
        const colonne_bilan& col = colonnes[std::size_t(c)];
        const QString unite = QString(col.unite).isEmpty() || col.valeur == &tour_bilan::debut
                                  ? QString()
                                  : QString(" (%1)").arg(col.unite);
        auto* tete = new QTableWidgetItem(QString(col.nom) + unite);
        tete->setToolTip(QString(col.titre) + unite);
        tab_tours_->setHorizontalHeaderItem(c, tete);
        for (int l = 0; l < int(bilan_.tours.size()); ++l) {
            auto* i = new QTableWidgetItem(cellule(col, bilan_.tours[std::size_t(l)]));
            i->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            tab_tours_->setItem(l, c, i);
        }
    }
    tab_tours_->resizeColumnsToContents();
}
