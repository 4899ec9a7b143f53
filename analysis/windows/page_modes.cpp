#include "analysis/windows/page_modes.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

#include "analysis/modes.h"
#include "analysis/windows/bande_modes.h"
#include "shell/utilitaires.h"
#include "widgets/style.h"

namespace {

constexpr const char* genres[] = {
    "toujours",       "au soleil",       "en éclipse", "entre deux latitudes", "en vue d'une station",
    "périodiquement", "une orbite sur N"};

QDoubleSpinBox* boite(const char* nom, double valeur, double min, double max, const QString& unite) {
    auto* b = new QDoubleSpinBox;
    b->setAccessibleName(nom);
    b->setToolTip(nom);
    b->setRange(min, max);
    b->setDecimals(2);
    b->setSuffix(unite);
    b->setValue(valeur);
    b->setKeyboardTracking(false);
    b->setFocusPolicy(Qt::StrongFocus);
    return b;
}

} // namespace

page_modes::page_modes(session& s, QWidget* parent)
    : QWidget(parent), s_(s),
      tache_(this, [this](journee_de_modes j) { bande_->montre(s_.modes, std::move(j)); }),
      tab_modes_(new QTableWidget), bande_(new bande_modes), cmd_retire_(new QPushButton("&Retirer")),
      lab_inconnues_(new QLabel) {
    auto* pile = new QVBoxLayout(this);
    pile->addWidget(
        new QLabel("Une puissance par mode s'ajoute à la demande de jour ou de nuit tant que le mode est en "
                   "vigueur."));
    tab_modes_->setObjectName("tab_modes");
    tab_modes_->setAccessibleName("Modes de consommation");
    tab_modes_->setColumnCount(4);
    tab_modes_->setHorizontalHeaderLabels({"Nom", "Puissance (W)", "Quand", "Réglages"});
    tab_modes_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tab_modes_->horizontalHeader()->setStretchLastSection(true);
    tab_modes_->verticalHeader()->hide();
    tab_modes_->setSelectionBehavior(QAbstractItemView::SelectRows);
    pile->addWidget(tab_modes_, 1);
    lab_inconnues_->setObjectName("lab_stations_inconnues");
    lab_inconnues_->setWordWrap(true);
    lab_inconnues_->setTextFormat(Qt::PlainText);
    QFont gras = lab_inconnues_->font();
    gras.setBold(true);
    lab_inconnues_->setFont(gras);
    pile->addWidget(lab_inconnues_);
    auto* rangee = new QHBoxLayout;
    auto* cmd_ajoute = new QPushButton("A&jouter");
    cmd_ajoute->setObjectName("cmd_ajoute_mode");
    cmd_retire_->setObjectName("cmd_retire_mode");
    rangee->addWidget(cmd_ajoute);
    rangee->addWidget(cmd_retire_);
    rangee->addStretch(1);
    pile->addLayout(rangee);
    pile->addWidget(bande_);
    connect(cmd_ajoute, &QPushButton::clicked, this, &page_modes::ajoute);
    connect(cmd_retire_, &QPushButton::clicked, this, &page_modes::retire);
    connect(tab_modes_, &QTableWidget::cellChanged, this, [this](int ligne) {
        edite(ligne, "nom", [&](mode_conso& m) { m.nom = tab_modes_->item(ligne, 0)->text().toStdString(); });
    });
}

void page_modes::relit() {
    if (jamais_ || montres_ != s_.modes) remplit();
    jamais_ = false;
    QStringList inconnues;
    for (const std::string& t : modes_sans_station(s_)) inconnues << QString::fromStdString(t);
    QPalette encre; // of the palette in force
    encre.setColor(QPalette::WindowText, style::en_texte(style::couleur(style::role::perte)));
    lab_inconnues_->setPalette(encre);
    lab_inconnues_->setVisible(!inconnues.isEmpty());
    lab_inconnues_->setText(inconnues.isEmpty()
                                ? QString()
                                : "Jamais en vigueur — " + inconnues.join(" ; ") +
                                      ". Ajoutez la station sur la page Carte ou choisissez-en "
                                      "une autre.");
    calcule_journee();
}

void page_modes::calcule_journee() {
    if (s_.modes.empty()) {
        tache_.arrete();
        bande_->montre({}, {});
        return;
    }
    tache_.lance(
        [e = static_cast<const etude&>(s_)](std::stop_token arret) { return premiere_journee(e, arret); });
}

void page_modes::remplit() {
    remplissage_ = true;
    montres_ = s_.modes;
    tab_modes_->setRowCount(int(montres_.size()));
    for (int l = 0; l < int(montres_.size()); ++l) {
        const mode_conso& m = montres_[std::size_t(l)];
        tab_modes_->setItem(l, 0, new QTableWidgetItem(QString::fromStdString(m.nom)));
        auto* puissance = boite("Puissance", m.puissance, 0, 1e6, " W");
        connect(puissance, &QDoubleSpinBox::valueChanged, this, [this, l](double x) {
            edite(l, "puissance", [x](mode_conso& mode) { mode.puissance = x; });
        });
        tab_modes_->setCellWidget(l, 1, puissance);
        tab_modes_->setCellWidget(l, 2, choix_quand(l));
        tab_modes_->setCellWidget(l, 3, parametres(l));
    }
    tab_modes_->resizeRowsToContents();
    cmd_retire_->setEnabled(!montres_.empty());
    remplissage_ = false;
}

/// An edit of a row. A row that is taken away loses the focus, and with it tells an entry that was not
/// finished: there is nothing left for it to change.
void page_modes::edite(int ligne, const char* quoi, const std::function<void(mode_conso&)>& change_mode) {
    if (remplissage_) return;
    change_mode(s_.modes[std::size_t(ligne)]);
    montres_ = s_.modes;
    emit change(QString("Mode %1 : %2").arg(ligne + 1).arg(quoi));
}

QWidget* page_modes::choix_quand(int ligne) {
    auto* c = new QComboBox;
    c->setAccessibleName("Quand");
    c->setFocusPolicy(Qt::StrongFocus);
    for (const char* g : genres) c->addItem(QString::fromUtf8(g));
    c->setCurrentIndex(int(s_.modes[std::size_t(ligne)].quand.genre));
    connect(c, &QComboBox::activated, this, [this, ligne](int genre) {
        quand_mode& q = s_.modes[std::size_t(ligne)].quand;
        q.genre = genre_quand(genre);
        if (q.genre == genre_quand::station && q.station.empty() && !s_.stations.empty())
            q.station = s_.stations[0].nom;
        tab_modes_->setCellWidget(ligne, 3, parametres(ligne));
        edite(ligne, "quand", [](mode_conso&) {});
    });
    return c;
}

/// The boxes of what the condition needs.
QWidget* page_modes::parametres(int ligne) {
    auto* w = new QWidget;
    auto* rangee = new QHBoxLayout(w);
    rangee->setContentsMargins(style::espace(1), 0, style::espace(1), 0);
    const quand_mode& q = s_.modes[std::size_t(ligne)].quand;
    const auto nombre = [&](const char* nom, double quand_mode::*place, double min, double max,
                            const char* unite) {
        auto* b = boite(nom, q.*place, min, max, unite);
        b->setPrefix(QString(nom).toLower() + " ");
        rangee->addWidget(b);
        connect(b, &QDoubleSpinBox::valueChanged, this, [this, ligne, place](double x) {
            edite(ligne, "quand", [=](mode_conso& m) { m.quand.*place = x; });
        });
    };
    if (q.genre == genre_quand::latitude) {
        nombre("De", &quand_mode::latitude_min, -90, 90, "°");
        nombre("À", &quand_mode::latitude_max, -90, 90, "°");
    } else if (q.genre == genre_quand::periode) {
        nombre("Toutes les", &quand_mode::periode, 1, 1e9, " s");
        nombre("Depuis", &quand_mode::debut, 0, 1e9, " s");
        nombre("Pendant", &quand_mode::duree, 0, 1e9, " s");
    } else if (q.genre == genre_quand::station) {
        rangee->addWidget(choix_station(ligne));
    } else if (q.genre == genre_quand::une_orbite_sur) {
        rangee->addWidget(boite_orbites(ligne));
    }
    rangee->addStretch(1);
    return w;
}

QWidget* page_modes::choix_station(int ligne) {
    auto* c = new QComboBox;
    c->setAccessibleName("Station");
    c->setFocusPolicy(Qt::StrongFocus);
    for (const station& s : s_.stations) c->addItem(QString::fromStdString(s.nom));
    const QString nom = QString::fromStdString(s_.modes[std::size_t(ligne)].quand.station);
    // A station that the étude has not is shown as it is named, not as another one.
    c->setPlaceholderText(s_.stations.empty() && nom.isEmpty() ? "Ajoutez des stations sur la page Carte"
                                                               : nom);
    c->setCurrentIndex(c->findText(nom));
    connect(c, &QComboBox::textActivated, this, [this, ligne](const QString& choisie) {
        edite(ligne, "station", [&](mode_conso& m) { m.quand.station = choisie.toStdString(); });
    });
    return c;
}

QWidget* page_modes::boite_orbites(int ligne) {
    auto* b = new QSpinBox;
    b->setAccessibleName("Une orbite sur");
    b->setRange(1, 1000);
    b->setValue(s_.modes[std::size_t(ligne)].quand.une_orbite_sur);
    b->setPrefix("une orbite sur ");
    b->setKeyboardTracking(false);
    b->setFocusPolicy(Qt::StrongFocus);
    connect(b, &QSpinBox::valueChanged, this, [this, ligne](int n) {
        edite(ligne, "quand", [n](mode_conso& m) { m.quand.une_orbite_sur = n; });
    });
    return b;
}

/// The box that is being edited takes its entry in: a command by its key leaves it the focus.
void page_modes::valide_saisie() {
    if (QWidget* actif = tab_modes_->focusWidget(); actif && tab_modes_->isAncestorOf(actif))
        actif->clearFocus();
}

void page_modes::ajoute() {
    valide_saisie();
    s_.modes.push_back({.nom = "Mode " + std::to_string(s_.modes.size() + 1), .puissance = 10});
    remplit();
    tab_modes_->selectRow(int(s_.modes.size()) - 1);
    emit change("Mode de consommation ajouté");
}

void page_modes::retire() {
    valide_saisie();
    const int ligne = tab_modes_->currentRow() < 0 ? int(s_.modes.size()) - 1 : tab_modes_->currentRow();
    if (ligne < 0) return;
    s_.modes.erase(s_.modes.begin() + ligne);
    remplit();
    emit change("Mode de consommation retiré");
}
