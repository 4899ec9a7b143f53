#include "analysis/windows/table_stations.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>

#include <cmath>

#include "shell/formats.h"
#include "widgets/style.h"

namespace {

struct colonne {
    const char* titre;
    const char* nom; ///< in the label of an undo step
    const char* aide;
    double station::*valeur; ///< nullptr: the name
};
constexpr colonne colonnes[] = {
    {"Station", "nom", "Nom de la station", nullptr},
    {"Latitude", "latitude", "Latitude géodésique, degrés, nord positif", &station::latitude},
    {"Longitude", "longitude", "Longitude, degrés, est positif", &station::longitude},
    {"Altitude", "altitude", "Altitude au-dessus de l'ellipsoïde, km", &station::altitude},
    {"Masque", "masque", "Élévation au-dessous de laquelle la station ne voit pas, degrés", &station::masque},
};
constexpr int nb_colonnes = int(std::size(colonnes));

QString texte(const station& s, int c) {
    return colonnes[c].valeur ? QString::fromStdString(format_court(s.*colonnes[c].valeur))
                              : QString::fromStdString(s.nom);
}

} // namespace

table_stations::table_stations(QWidget* parent) : QWidget(parent) {
    setObjectName("stations");
    auto* pile = new QVBoxLayout(this);
    pile->setContentsMargins(0, style::espace(2), 0, 0);
    table_ = new QTableWidget(0, nb_colonnes);
    table_->setObjectName("grid_stations");
    table_->setAccessibleName("Stations");
    table_->verticalHeader()->hide();
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setAlternatingRowColors(true);
    for (int c = 0; c < nb_colonnes; ++c) {
        auto* titre = new QTableWidgetItem(colonnes[c].titre);
        titre->setToolTip(colonnes[c].aide);
        table_->setHorizontalHeaderItem(c, titre);
        table_->horizontalHeader()->setSectionResizeMode(c, c == 0 ? QHeaderView::Stretch
                                                                   : QHeaderView::ResizeToContents);
    }
    pile->addWidget(table_, 1);
    mot_ = new QLabel;
    mot_->setObjectName("lab_stations");
    mot_->setWordWrap(true);
    pile->addWidget(mot_);
    auto* rangee = new QHBoxLayout;
    auto* cmd_ajoute =
        style::bouton("cmd_station_ajoute", "A&jouter", "Ajouter une station (ou clic droit sur la carte)");
    retire_ = style::bouton("cmd_station_retire", "&Retirer", "Retirer la station choisie");
    auto* defaut = style::bouton("cmd_station_defaut", "Du pro&gramme",
                                 "Reprendre les stations fournies avec le programme");
    rangee->addWidget(cmd_ajoute);
    rangee->addWidget(retire_);
    rangee->addStretch();
    rangee->addWidget(defaut);
    pile->addLayout(rangee);

    connect(table_, &QTableWidget::cellChanged, this, &table_stations::lit_case);
    connect(cmd_ajoute, &QPushButton::clicked, this, [this] { ajoute(0, 0); });
    connect(retire_, &QPushButton::clicked, this, &table_stations::retire);
    connect(defaut, &QPushButton::clicked, this, &table_stations::demande_defaut);
}

void table_stations::montre(const std::vector<station>& stations, bool du_programme) {
    const QSignalBlocker muet(table_);
    const int ligne = table_->currentRow();
    if (stations != stations_ || table_->rowCount() != int(stations.size())) {
        stations_ = stations;
        table_->setRowCount(int(stations.size()));
        for (int l = 0; l < table_->rowCount(); ++l)
            for (int c = 0; c < nb_colonnes; ++c) {
                auto* i = new QTableWidgetItem(texte(stations_[std::size_t(l)], c));
                if (c > 0) i->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
                i->setToolTip(colonnes[c].aide);
                table_->setItem(l, c, i);
            }
    }
    if (ligne >= 0 && ligne < table_->rowCount())
        table_->setCurrentCell(ligne, std::max(0, table_->currentColumn()));
    retire_->setEnabled(table_->rowCount() > 0);
    mot_->setText(du_programme
                      ? "Stations fournies avec le programme ; une modification en fait celles de l'étude."
                      : QString());
    mot_->setVisible(!mot_->text().isEmpty());
}

void table_stations::choisit(int ligne) {
    if (ligne >= 0 && ligne < table_->rowCount()) table_->selectRow(ligne);
}

void table_stations::refuse(const QString& raison) {
    mot_->setText("Refusé : " + raison);
    mot_->show();
}

void table_stations::lit_case(int ligne, int c) {
    if (ligne < 0 || std::size_t(ligne) >= stations_.size()) return;
    station neuve = stations_[std::size_t(ligne)];
    const QString avant = texte(neuve, c), saisi = table_->item(ligne, c)->text().trimmed();
    std::string mal;
    if (!colonnes[c].valeur)
        neuve.nom = saisi.toStdString();
    else if (!lit_nombre(saisi.toStdString(), neuve.*colonnes[c].valeur))
        mal = "« " + saisi.toStdString() + " » n'est pas un nombre";
    if (mal.empty()) mal = defaut_station(neuve);
    if (mal.empty() && neuve.nom.find(',') != std::string::npos) mal = "pas de virgule dans un nom";
    {
        const QSignalBlocker muet(table_);
        table_->item(ligne, c)->setText(mal.empty() ? texte(neuve, c) : avant);
    }
    if (!mal.empty()) return refuse(QString::fromStdString(mal));
    if (neuve == stations_[std::size_t(ligne)]) return;
    const QString qui = QString::fromStdString(stations_[std::size_t(ligne)].nom);
    auto toutes = stations_;
    toutes[std::size_t(ligne)] = neuve;
    stations_ = toutes;
    emit modifiees(toutes,
                   QString("Station %1 : %2 %3 → %4").arg(qui, colonnes[c].nom, avant, texte(neuve, c)));
}

void table_stations::ajoute(double longitude, double latitude) {
    auto toutes = stations_;
    station s;
    for (int n = int(toutes.size()) + 1;; ++n) {
        s.nom = "Station " + std::to_string(n);
        bool pris = false;
        for (const station& t : toutes) pris |= t.nom == s.nom;
        if (!pris) break;
    }
    s.longitude = std::round(longitude * 1e4) / 1e4;
    s.latitude = std::round(latitude * 1e4) / 1e4;
    toutes.push_back(s);
    emit modifiees(toutes, "Station ajoutée");
    const int ligne = table_->rowCount() - 1;
    if (ligne < 0) return;
    table_->setCurrentCell(ligne, 0);
    table_->editItem(table_->item(ligne, 0));
}

void table_stations::retire() {
    const int ligne = table_->currentRow();
    if (ligne < 0) return refuse("choisissez d'abord une station");
    auto toutes = stations_;
    const QString qui = QString::fromStdString(toutes[std::size_t(ligne)].nom);
    toutes.erase(toutes.begin() + ligne);
    emit modifiees(toutes, QString("Station %1 retirée").arg(qui));
}
