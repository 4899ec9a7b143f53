#include "analysis/windows/saisie_balayage.h"

#include <QComboBox>
#include <QCompleter>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>
#include <thread>

#include "widgets/style.h"

namespace {

constexpr struct {
    const char* texte;
    const char* modele; ///< what stands in the empty box
    const char* prefixe;
    const char* suffixe;
} genres[] = {{"valeurs", "5:20:1 ou 5,10,15", "=", ""},
              {"uniforme", "minimum,maximum", "~U(", ")"},
              {"normale", "moyenne,écart", "~N(", ")"}};

/// The numbers that may vary: name, caption and element of each.
QStringList noms_de_champs() {
    QStringList noms;
    for (const champ_etude& c : etude_champs()) {
        if (c.liste || c.annexe) continue;
        for (int i = 0; i < c.nombre(); ++i) noms << QString::fromStdString(nom_element({&c, 0, i}));
    }
    return noms;
}

QSpinBox* compteur(const char* nom, int min, int max, int valeur, const char* aide) {
    auto* b = new QSpinBox;
    b->setObjectName(nom);
    b->setAccessibleName(aide);
    b->setToolTip(aide);
    b->setRange(min, max);
    b->setValue(valeur);
    b->setFocusPolicy(Qt::StrongFocus);
    return b;
}

} // namespace

saisie_balayage::saisie_balayage(const session& s, QWidget* parent)
    : QWidget(parent), s_(s), pile_(new QVBoxLayout), lst_mesures_(new QListWidget),
      spn_tirages_(
          compteur("spn_tirages", 1, 1000000, 500, "Tirages au hasard en chaque point de la grille")),
      spn_graine_(compteur("spn_graine", 0, 1000000000, 1, "Nombre dont dépendent les tirages")),
      spn_coeurs_(compteur("spn_coeurs", 1, 256, std::max(1, int(std::thread::hardware_concurrency())),
                           "Cœurs du processeur à employer")) {
    auto* tout = new QVBoxLayout(this);
    tout->setContentsMargins(0, 0, 0, 0);
    auto* titre = new QLabel("<b>Ce qui varie</b>");
    tout->addWidget(titre);
    tout->addLayout(pile_);
    auto* cmd_ajoute = new QPushButton("A&jouter un champ");
    cmd_ajoute->setObjectName("cmd_ajoute_champ");
    cmd_ajoute->setToolTip("Plusieurs listes forment une grille ; les tirages varient ensemble");
    tout->addWidget(cmd_ajoute, 0, Qt::AlignLeft);
    tout->addWidget(new QLabel("<b>Ce qu'on mesure</b> (dernière orbite)"));
    lst_mesures_->setObjectName("lst_mesures");
    lst_mesures_->setAccessibleName("Mesures");
    const auto mesure = [&](const QString& nom, const QString& texte) {
        auto* i = new QListWidgetItem(texte, lst_mesures_);
        i->setData(Qt::UserRole, nom);
        const bool choisie =
            std::find_if(std::begin(mesures_par_defaut), std::end(mesures_par_defaut),
                         [&](const char* m) { return nom == m; }) != std::end(mesures_par_defaut);
        i->setCheckState(choisie ? Qt::Checked : Qt::Unchecked);
    };
    mesure("tient", "Le satellite tient");
    for (const colonne_bilan& c : colonnes_bilan())
        mesure(c.nom, QString(c.titre) + (*c.unite ? QString(" (%1)").arg(c.unite) : QString()));
    tout->addWidget(lst_mesures_, 1);
    auto* nombres = new QFormLayout;
    nombres->addRow("Tirages", spn_tirages_);
    nombres->addRow("Graine", spn_graine_);
    nombres->addRow("Cœurs", spn_coeurs_);
    tout->addLayout(nombres);
    connect(cmd_ajoute, &QPushButton::clicked, this, [this] { ajoute("cel_np", "4:8:1"); });
    connect(lst_mesures_, &QListWidget::itemChanged, this, &saisie_balayage::change);
    for (QSpinBox* b : {spn_tirages_, spn_graine_, spn_coeurs_})
        connect(b, &QSpinBox::valueChanged, this, &saisie_balayage::change);
    ajoute("bat_c", "5:20:1");
}

void saisie_balayage::ajoute(const QString& champ, const QString& valeurs) {
    ligne l{new QWidget, new QComboBox, new QComboBox, new QLineEdit(valeurs), new QLabel};
    const int n = int(lignes_.size());
    auto* colonne = new QVBoxLayout(l.cadre);
    colonne->setContentsMargins(0, 0, 0, style::espace(1));
    colonne->setSpacing(style::espace(1));
    auto* rangee = new QHBoxLayout;
    static const QStringList noms = noms_de_champs();
    l.champ->setObjectName(QString("cmb_champ_%1").arg(n));
    l.champ->setAccessibleName("Champ qui varie");
    l.champ->setEditable(true);
    l.champ->setInsertPolicy(QComboBox::NoInsert);
    l.champ->addItems(noms);
    l.champ->completer()->setFilterMode(Qt::MatchContains);
    l.champ->completer()->setCompletionMode(QCompleter::PopupCompletion);
    l.champ->setCurrentText(champ);
    l.genre->setObjectName(QString("cmb_genre_%1").arg(n));
    l.genre->setAccessibleName("Manière de varier");
    for (const auto& g : genres) l.genre->addItem(g.texte);
    for (QComboBox* c : {l.champ, l.genre}) c->setFocusPolicy(Qt::StrongFocus);
    auto* retrait = new QToolButton;
    retrait->setText("✕");
    retrait->setAccessibleName("Retirer ce champ");
    retrait->setToolTip("Retirer ce champ");
    rangee->addWidget(l.champ, 1);
    rangee->addWidget(l.genre);
    rangee->addWidget(retrait);
    colonne->addLayout(rangee);
    l.valeurs->setObjectName(QString("txt_valeurs_%1").arg(n));
    l.valeurs->setAccessibleName("Valeurs");
    l.valeurs->setPlaceholderText(genres[0].modele);
    colonne->addWidget(l.valeurs);
    l.limites->setWordWrap(true);
    l.limites->setForegroundRole(QPalette::PlaceholderText);
    colonne->addWidget(l.limites);
    pile_->addWidget(l.cadre);
    lignes_.push_back(l);
    montre_limites(l);
    connect(l.champ, &QComboBox::currentTextChanged, this, [this, l] {
        montre_limites(l);
        emit change();
    });
    connect(l.genre, &QComboBox::currentIndexChanged, this, [this, l](int g) {
        l.valeurs->setPlaceholderText(genres[g].modele);
        l.valeurs->clear();
        emit change();
    });
    connect(l.valeurs, &QLineEdit::textChanged, this, &saisie_balayage::change);
    connect(retrait, &QToolButton::clicked, this, [this, c = l.cadre] { retire(c); });
    emit change();
}

void saisie_balayage::retire(QWidget* cadre) {
    std::erase_if(lignes_, [cadre](const ligne& l) { return l.cadre == cadre; });
    cadre->deleteLater();
    emit change();
}

/// Caption, unit and limits of the field, and its value today.
void saisie_balayage::montre_limites(const ligne& l) const {
    element_etude x;
    std::string raison;
    if (!cherche_champ(l.champ->currentText().toStdString(), s_, x, raison)) {
        l.limites->setText(QString::fromStdString(raison));
        return;
    }
    QString t = QString::fromStdString(titre_element(x));
    if (!x.champ->unite.empty()) t += " (" + QString::fromStdString(x.champ->unite) + ")";
    if (const std::string b = texte_bornes(bornes_element(s_, x)); !b.empty())
        t += ", " + QString::fromStdString(b);
    l.limites->setText(t + QString(" ; aujourd'hui %1").arg(valeur_montree(s_, x)));
}

bool saisie_balayage::plan(plan_balayage& p, QString& raison) const {
    std::string pourquoi;
    bool tirages = false;
    for (const ligne& l : lignes_) {
        const auto& g = genres[l.genre->currentIndex()];
        const QString texte = l.champ->currentText() + g.prefixe + l.valeurs->text().remove(' ') + g.suffixe;
        if (!lit_variation(texte.toStdString(), s_, p.variations.emplace_back(), pourquoi)) {
            raison = QString::fromStdString(pourquoi);
            return false;
        }
        tirages = tirages || l.genre->currentIndex() > 0;
    }
    for (int i = 0; i < lst_mesures_->count(); ++i) {
        const QListWidgetItem* m = lst_mesures_->item(i);
        if (m->checkState() == Qt::Checked &&
            !lit_mesure(m->data(Qt::UserRole).toString().toStdString(), p.mesures.emplace_back(), pourquoi))
            p.mesures.pop_back();
    }
    spn_tirages_->setEnabled(tirages);
    spn_graine_->setEnabled(tirages);
    p.tirages = tirages ? spn_tirages_->value() : 1;
    p.graine = uint64_t(spn_graine_->value());
    if (p.variations.empty()) raison = "Ajoutez un champ qui varie.";
    if (p.mesures.empty()) raison = "Choisissez au moins une mesure.";
    return !p.variations.empty() && !p.mesures.empty();
}

int saisie_balayage::coeurs() const { return spn_coeurs_->value(); }
