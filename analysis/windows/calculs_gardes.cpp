#include "analysis/windows/calculs_gardes.h"

#include <QColorDialog>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QTableWidget>

#include <algorithm>

#include "project/etude_compare.h"
#include "widgets/style.h"

namespace {

constexpr Qt::PenStyle traits[] = {Qt::DashLine, Qt::DotLine, Qt::DashDotLine, Qt::DashDotDotLine};
constexpr const char* noms_traits[] = {"Tirets", "Points", "Tirets et points", "Tiret et deux points"};

/// The settings that a run goes by: charts and notes are none.
std::vector<difference> reglages_differents(const etude& a, const etude& b) {
    std::vector<difference> d = differences(a, b);
    std::erase_if(d, [](const difference& x) { return x.nom == "courbes" || x.nom == "notes"; });
    return d;
}

QString quoi(const difference& d) { return QString::fromStdString(d.titre.empty() ? d.sujet : d.titre); }

/// "capacité nominale 10 Ah, 3 autres".
QString en_mots(const std::vector<difference>& d) {
    if (d.empty()) return "mêmes réglages";
    QStringList t;
    for (std::size_t k = 0; k < d.size() && k < 2; ++k) {
        QString un = quoi(d[k]);
        if (!d[k].apres.empty()) un += " " + QString::fromStdString(d[k].apres);
        if (!d[k].unite.empty()) un += " " + QString::fromStdString(d[k].unite);
        t << un;
    }
    if (d.size() > 2) t << QString("%1 autres").arg(d.size() - 2);
    return t.join(", ");
}

QIcon echantillon(const calcul_garde& c) {
    QPixmap i(style::espace(7), style::espace(4));
    i.fill(Qt::transparent);
    QPainter p(&i);
    p.setPen(QPen(style::accorde(c.couleur, style::sombre()), 2, c.trait, Qt::FlatCap));
    p.drawLine(0, i.height() / 2, i.width(), i.height() / 2);
    return i;
}

} // namespace

calculs_gardes::calculs_gardes(QWidget* parent)
    : QWidget(parent), liste_(new QListWidget), differences_(new QTableWidget),
      cmd_apparence_(style::bouton("cmd_apparence", "A&pparence", "Couleur et trait")),
      cmd_recalcule_(style::bouton("cmd_recalcule_garde", "Refa&ire", "Refaire ce calcul avec ses réglages")),
      cmd_rouvre_(style::bouton("cmd_rouvre_etude", "&Rouvrir",
                                "Rouvrir son étude : ses réglages redeviennent ceux du programme")),
      cmd_supprime_(style::bouton("cmd_supprime_garde", "&Supprimer", "Oublier ce calcul")) {
    auto* grille = new QGridLayout(this);
    grille->setContentsMargins(0, 0, 0, 0);
    grille->setSpacing(style::espace(1));
    liste_->setObjectName("list_gardes");
    liste_->setAccessibleName("Calculs gardés");
    liste_->setToolTip("La marque montre ou cache le calcul ; F2 ou un double clic le renomme");
    liste_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    liste_->setIconSize({style::espace(7), style::espace(4)});
    differences_->setObjectName("tab_differences");
    differences_->setAccessibleName("Réglages qui diffèrent");
    differences_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    differences_->verticalHeader()->hide();
    differences_->setWordWrap(true);
    grille->addWidget(liste_, 0, 0, 1, 2);
    grille->addWidget(cmd_apparence_, 1, 0);
    grille->addWidget(cmd_recalcule_, 1, 1);
    grille->addWidget(cmd_rouvre_, 2, 0);
    grille->addWidget(cmd_supprime_, 2, 1);
    grille->addWidget(new QLabel("Réglages qui diffèrent :"), 3, 0, 1, 2);
    grille->addWidget(differences_, 4, 0, 1, 2);
    grille->setRowStretch(0, 1);
    grille->setRowStretch(4, 2);
    connect(liste_, &QListWidget::itemChanged, this, [this](const QListWidgetItem* i) {
        if (remplit_) return;
        calcul_garde& c = gardes_[std::size_t(liste_->row(i))];
        c.montre = i->checkState() == Qt::Checked;
        if (i->text() != c.libelle) c.nom = i->text().trimmed();
        suit(courante_);
        emit change();
    });
    connect(liste_, &QListWidget::currentRowChanged, this, &calculs_gardes::choix_change);
    connect(cmd_recalcule_, &QPushButton::clicked, this, [this] { emit demande_calcul(choisi()); });
    connect(cmd_rouvre_, &QPushButton::clicked, this, [this] { emit demande_ouverture(choisi()); });
    connect(cmd_supprime_, &QPushButton::clicked, this, [this] {
        gardes_.erase(gardes_.begin() + choisi());
        remplit();
        emit change();
    });
    connect(cmd_apparence_, &QPushButton::clicked, this, &calculs_gardes::apparence);
    choix_change();
}

int calculs_gardes::choisi() const { return liste_->currentRow(); }

void calculs_gardes::choix_change() {
    for (QPushButton* b : {cmd_apparence_, cmd_recalcule_, cmd_rouvre_, cmd_supprime_})
        b->setEnabled(choisi() >= 0);
}

void calculs_gardes::garde(const etude& e, std::shared_ptr<const resultat_courbes> r, const QString& projet) {
    const int n = suivant_++;
    gardes_.push_back({.numero = n,
                       .nom = {},
                       .projet = projet,
                       .reglages = e,
                       .resultat = std::move(r),
                       .couleur = style::couleur_courbe(1 + n % 7),
                       .trait = traits[n % 4]});
    remplit();
    liste_->setCurrentRow(liste_->count() - 1);
    emit change();
}

void calculs_gardes::suit(const etude& courante) {
    courante_ = courante;
    remplit();
}

const calcul_garde* calculs_gardes::cherche(int numero) const {
    const auto c =
        std::find_if(gardes_.begin(), gardes_.end(), [=](const auto& g) { return g.numero == numero; });
    return c == gardes_.end() ? nullptr : &*c;
}

void calculs_gardes::remplace(int numero, std::shared_ptr<const resultat_courbes> r) {
    for (calcul_garde& c : gardes_)
        if (c.numero == numero) c.resultat = std::move(r);
    emit change();
}

void calculs_gardes::remplit() {
    remplit_ = true;
    const int avant = choisi();
    // In place where the rows are the same: an edit of a name goes on.
    while (liste_->count() > int(gardes_.size())) delete liste_->takeItem(liste_->count() - 1);
    while (liste_->count() < int(gardes_.size())) liste_->addItem(new QListWidgetItem);
    for (int k = 0; k < liste_->count(); ++k) {
        calcul_garde& c = gardes_[std::size_t(k)];
        const QString mots = en_mots(reglages_differents(courante_, c.reglages));
        c.libelle = c.nom.isEmpty() ? mots : c.nom;
        QListWidgetItem* i = liste_->item(k);
        i->setText(c.libelle);
        i->setToolTip(c.projet + "\n" + mots);
        i->setIcon(echantillon(c));
        i->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
        i->setCheckState(c.montre ? Qt::Checked : Qt::Unchecked);
    }
    liste_->setCurrentRow(std::min(avant, liste_->count() - 1));
    remplit_ = false;
    remplit_differences();
    choix_change();
}

void calculs_gardes::remplit_differences() {
    QStringList tetes = {"Réglage", "Actuel"};
    differences_->clear();
    differences_->setRowCount(0);
    differences_->setColumnCount(2 + int(gardes_.size()));
    std::vector<std::string> lignes;
    const auto pose = [&](int l, int c, const QString& t) {
        differences_->setItem(l, c, new QTableWidgetItem(t));
    };
    for (std::size_t k = 0; k < gardes_.size(); ++k) {
        tetes << (gardes_[k].nom.isEmpty() ? QString() : gardes_[k].nom);
        for (const difference& d : reglages_differents(courante_, gardes_[k].reglages)) {
            auto place = std::find(lignes.begin(), lignes.end(), d.nom);
            const int l = int(place - lignes.begin());
            if (place == lignes.end()) {
                lignes.push_back(d.nom);
                differences_->insertRow(l);
                QString nom = QString::fromStdString(d.sujet);
                if (!d.titre.empty()) nom += " : " + QString::fromStdString(d.titre);
                if (!d.unite.empty()) nom += " (" + QString::fromStdString(d.unite) + ")";
                pose(l, 0, nom);
                const QString actuel = d.avant.empty() ? "…" : QString::fromStdString(d.avant);
                for (int c = 1; c < differences_->columnCount(); ++c) pose(l, c, actuel);
            }
            pose(l, 2 + int(k), d.apres.empty() ? "autres" : QString::fromStdString(d.apres));
        }
    }
    differences_->setHorizontalHeaderLabels(tetes);
    for (std::size_t k = 0; k < gardes_.size(); ++k) {
        QTableWidgetItem* tete = differences_->horizontalHeaderItem(2 + int(k));
        tete->setIcon(echantillon(gardes_[k]));
        tete->setToolTip(gardes_[k].libelle);
    }
    differences_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    differences_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    differences_->horizontalHeader()->setMinimumSectionSize(style::espace(8));
    differences_->resizeRowsToContents();
}

void calculs_gardes::apparence() {
    calcul_garde& c = gardes_[std::size_t(choisi())];
    QMenu m(this);
    QAction* couleur = m.addAction("&Couleur…");
    m.addSeparator();
    for (int k = 0; k < 4; ++k) {
        QAction* a = m.addAction(noms_traits[k]);
        a->setCheckable(true);
        a->setChecked(c.trait == traits[k]);
        a->setData(k);
    }
    const QAction* fait = m.exec(cmd_apparence_->mapToGlobal(QPoint(0, cmd_apparence_->height())));
    if (!fait) return;
    if (fait == couleur) {
        const QColor nouvelle = QColorDialog::getColor(c.couleur, this, "Couleur du calcul");
        if (!nouvelle.isValid()) return;
        c.couleur = nouvelle;
    } else
        c.trait = traits[fait->data().toInt()];
    remplit();
    emit change();
}
