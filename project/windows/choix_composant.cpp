#include "project/windows/choix_composant.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "widgets/style.h"
#include "widgets/verifications.h"

namespace {

QString qs(const std::string& t) { return QString::fromStdString(t); }

QString titre_de(genre_composant g) {
    switch (g) {
    case genre_composant::cellule: return "Choisir une cellule";
    case genre_composant::batterie: return "Choisir un accumulateur";
    default: return "Choisir un revêtement";
    }
}

} // namespace

choix_composant::choix_composant(genre_composant g, std::string dossier, const QStringList& surfaces,
                                 int surface, QWidget* parent)
    : QDialog(parent), genre_(g), dossier_(std::move(dossier)), recherche_(new QLineEdit),
      table_(new QTableWidget), source_(new QLabel), defaut_(new QLabel) {
    setObjectName("choix_composant");
    setWindowTitle(titre_de(g));
    recherche_->setObjectName("txt_recherche_composant");
    recherche_->setPlaceholderText("Une partie du nom");
    recherche_->setClearButtonEnabled(true);
    prepare_table();
    source_->setObjectName("lab_source");
    source_->setWordWrap(true);
    source_->setTextFormat(Qt::PlainText);
    source_->setMinimumHeight(3 * fontMetrics().height());
    source_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    defaut_->setObjectName("lab_defaut_composants");
    defaut_->setWordWrap(true);

    auto* pile = new QVBoxLayout(this);
    pile->addWidget(recherche_);
    pile->addWidget(table_, 1);
    pile->addWidget(source_);
    pile->addWidget(defaut_);
    if (!surfaces.isEmpty()) {
        surfaces_ = new QComboBox;
        surfaces_->setObjectName("cmb_surface");
        surfaces_->addItems(surfaces);
        surfaces_->setCurrentIndex(surface);
        auto* forme = new QFormLayout;
        forme->addRow("&Sur", surfaces_);
        pile->addLayout(forme);
    }
    pile->addWidget(cree_boutons());
    resize(style::espace(170), style::espace(110));
    connect(recherche_, &QLineEdit::textChanged, this, &choix_composant::filtre);
    connect(table_, &QTableWidget::itemSelectionChanged, this, &choix_composant::montre);
    connect(table_, &QTableWidget::cellDoubleClicked, this, &QDialog::accept);
    relit();
    recherche_->setFocus();
}

void choix_composant::prepare_table() {
    table_->setObjectName("tab_composants");
    table_->setAccessibleName("Composants");
    table_->setColumnCount(2);
    table_->setHorizontalHeaderLabels({"Composant", "Valeurs"});
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setAlternatingRowColors(true);
    table_->setTabKeyNavigation(false);
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setStretchLastSection(true);
}

QWidget* choix_composant::cree_boutons() {
    auto* boutons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    choisir_ = boutons->button(QDialogButtonBox::Ok);
    choisir_->setObjectName("cmd_choisir");
    choisir_->setText("&Choisir");
    boutons->button(QDialogButtonBox::Cancel)->setObjectName("cmd_annuler");
    retirer_ = boutons->addButton("&Retirer de ma liste", QDialogButtonBox::ActionRole);
    retirer_->setObjectName("cmd_retirer");
    retirer_->setAutoDefault(false);
    connect(boutons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(boutons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(retirer_, &QPushButton::clicked, this, &choix_composant::retire);
    return boutons;
}

void choix_composant::relit() {
    liste_composants l = charge_composants(dossier_);
    composants_.clear();
    for (composant& c : l.composants)
        if (c.genre == genre_) composants_.push_back(std::move(c));
    defaut_->setVisible(!l.defaut.empty());
    defaut_->setText("⚠ " + qs(l.defaut));
    table_->setRowCount(int(composants_.size()));
    for (int k = 0; k < int(composants_.size()); ++k) {
        const composant& c = composants_[std::size_t(k)];
        table_->setItem(k, 0, new QTableWidgetItem(qs(c.nom) + (c.a_soi ? " (ma liste)" : "")));
        table_->setItem(k, 1, new QTableWidgetItem(qs(resume_composant(c))));
    }
    table_->resizeColumnToContents(0);
    filtre();
}

void choix_composant::filtre() {
    int premier = -1;
    for (int k = 0; k < table_->rowCount(); ++k) {
        const bool garde =
            table_->item(k, 0)->text().contains(recherche_->text().trimmed(), Qt::CaseInsensitive);
        table_->setRowHidden(k, !garde);
        if (garde && premier < 0) premier = k;
    }
    // What is chosen stays in sight.
    if (const int k = table_->currentRow(); k < 0 || table_->isRowHidden(k))
        premier < 0 ? table_->setCurrentItem(nullptr) : table_->selectRow(premier);
    montre();
}

const composant* choix_composant::choisi() const {
    const int k = table_->currentRow();
    return k < 0 || table_->isRowHidden(k) ? nullptr : &composants_[std::size_t(k)];
}

int choix_composant::surface() const { return surfaces_ ? surfaces_->currentIndex() : 0; }

void choix_composant::montre() {
    const composant* c = choisi();
    choisir_->setEnabled(c);
    retirer_->setEnabled(c && c->a_soi);
    source_->setText(c ? "Source : " + qs(c->source.empty() ? std::string("non donnée") : c->source) +
                             (c->note.empty() ? QString() : "\n" + qs(c->note))
                       : "Aucun composant de ce nom.");
}

void choix_composant::retire() {
    const composant* c = choisi();
    if (!c || !c->a_soi) return;
    std::string raison;
    if (!retire_composant(dossier_, *c, raison)) message(this, gravite::arret, qs(raison));
    relit();
}

bool demande_nom_composant(QWidget* parent, composant& c) {
    QDialog d(parent);
    d.setObjectName("nom_composant");
    d.setWindowTitle("Ajouter à mes composants");
    auto* nom = new QLineEdit;
    nom->setObjectName("txt_nom_composant");
    auto* source = new QLineEdit;
    source->setObjectName("txt_source_composant");
    source->setPlaceholderText("fiche, livre, mesure");
    auto* boutons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel);
    auto* ajouter = boutons->button(QDialogButtonBox::Save);
    ajouter->setObjectName("cmd_ajouter_composant");
    ajouter->setText("&Ajouter");
    ajouter->setEnabled(false);
    auto* forme = new QFormLayout(&d);
    forme->addRow("&Nom", nom);
    forme->addRow("&Source", source);
    forme->addRow(boutons);
    d.setMinimumWidth(style::espace(100));
    QObject::connect(nom, &QLineEdit::textChanged, ajouter,
                     [ajouter](const QString& t) { ajouter->setEnabled(!t.trimmed().isEmpty()); });
    QObject::connect(boutons, &QDialogButtonBox::accepted, &d, &QDialog::accept);
    QObject::connect(boutons, &QDialogButtonBox::rejected, &d, &QDialog::reject);
    if (d.exec() != QDialog::Accepted) return false;
    c.nom = nom->text().trimmed().toStdString();
    c.source = source->text().trimmed().toStdString();
    return true;
}
