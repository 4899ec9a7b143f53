#include "analysis/windows/choix_variables.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QSettings>
#include <QVBoxLayout>

#include <algorithm>

#include "analysis/calcul_courbes.h"
#include "widgets/style.h"
#include "widgets/textes.h"
#include "widgets/traces.h"

namespace {

constexpr int recentes_max = 6;
constexpr const char* cle_recentes = "courbes/recentes";

class liste_variables : public QListWidget {
public:
    using QListWidget::QListWidget;

protected:
    QMimeData* mimeData(const QList<QListWidgetItem*>& choix) const override {
        auto* m = new QMimeData;
        if (!choix.isEmpty())
            m->setData(traces::format_variable, choix[0]->data(Qt::UserRole).toString().toUtf8());
        return m;
    }
};

} // namespace

choix_variables::choix_variables(QWidget* parent)
    : QWidget(parent), cbo_jeu_(new QComboBox), txt_cherche_(new QLineEdit), liste_(new liste_variables) {
    auto* pile = new QVBoxLayout(this);
    pile->setContentsMargins(0, 0, 0, 0);
    pile->setSpacing(style::espace(1));
    cbo_jeu_->setObjectName("cbo_jeu");
    cbo_jeu_->setAccessibleName("Jeu de courbes tout prêt");
    cbo_jeu_->setToolTip("Remplace les graphiques par un jeu tout prêt");
    cbo_jeu_->setMinimumContentsLength(10);
    txt_cherche_->setObjectName("txt_cherche_variable");
    txt_cherche_->setPlaceholderText("Chercher une variable…");
    txt_cherche_->setClearButtonEnabled(true);
    txt_cherche_->setAccessibleName("Chercher une variable par une partie de son nom");
    liste_->setObjectName("list_variables");
    liste_->setAccessibleName("Variables");
    liste_->setDragEnabled(true);
    liste_->setTextElideMode(Qt::ElideRight);
    liste_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    pile->addWidget(cbo_jeu_);
    pile->addWidget(txt_cherche_);
    pile->addWidget(liste_, 1);
    connect(txt_cherche_, &QLineEdit::textChanged, this, &choix_variables::filtre);
    connect(txt_cherche_, &QLineEdit::returnPressed, this, [this] {
        if (auto* i = liste_->currentItem()) emit choisie(i->data(Qt::UserRole).toString());
    });
    connect(liste_, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem* i) { emit choisie(i->data(Qt::UserRole).toString()); });
    connect(cbo_jeu_, &QComboBox::activated, this, [this](int i) {
        if (i > 0) emit jeu_choisi(i - 1);
        cbo_jeu_->setCurrentIndex(0);
    });
}

void choix_variables::suit(const etude& e) {
    const int montage = e.modele.physique + 2 * e.power.opt_faces + 100 * e.power.opt_panel_ext;
    if (montage == montage_ && !lignes_.isEmpty()) return;
    montage_ = montage;
    cbo_jeu_->clear();
    cbo_jeu_->addItem("Jeux tout prêts…");
    for (const jeu_courbes& j : jeux_courbes(e)) cbo_jeu_->addItem(QString::fromUtf8(j.titre));
    lignes_ = lignes_de(e);
    filtre();
}

QList<choix_variables::ligne> choix_variables::lignes_de(const etude& e) {
    QList<ligne> lignes;
    for (const variable& v : catalogue()) {
        if ((v.lit & besoin::physique) && !e.modele.physique) continue;
        if (QString::fromUtf8(v.unite) == "j") continue;
        for (int i = 0; i < nombre_elements(v, e.power); ++i) {
            const voie c{nom_voie(v, i, e.power), &v, i};
            const QString nom = QString::fromStdString(c.nom);
            const QString titre = QString::fromStdString(titre_voie(c, e.power));
            const QString unite = QString::fromUtf8(v.unite);
            const QString texte = unite.isEmpty() ? titre : titre + " (" + unite + ")";
            const QString sens = QString::fromUtf8(v.sens);
            lignes << ligne{nom, texte, texte + "\n" + sens + "\n" + nom,
                            sans_accents(texte + ' ' + sens + ' ' + nom)};
        }
    }
    return lignes;
}

void choix_variables::titre(const QString& texte) {
    auto* i = new QListWidgetItem(texte, liste_);
    i->setFlags(Qt::NoItemFlags);
    QFont f = liste_->font();
    f.setItalic(true);
    i->setFont(f);
}

void choix_variables::ajoute(const ligne& l) {
    auto* i = new QListWidgetItem(l.texte, liste_);
    i->setData(Qt::UserRole, l.nom);
    i->setToolTip(l.bulle);
}

void choix_variables::filtre() {
    const QStringList mots = sans_accents(txt_cherche_->text()).split(' ', Qt::SkipEmptyParts);
    liste_->clear();
    if (mots.isEmpty()) {
        QList<const ligne*> recentes;
        for (const QString& nom : QSettings().value(cle_recentes).toStringList())
            for (const ligne& l : lignes_)
                if (l.nom == nom) recentes << &l;
        if (!recentes.isEmpty()) titre("Récentes");
        for (const ligne* l : recentes) ajoute(*l);
        if (!recentes.isEmpty()) titre("Toutes");
    }
    // What begins by the words typed comes before what only holds them.
    for (const bool debut : {true, false})
        for (const ligne& l : lignes_) {
            const bool tous =
                std::all_of(mots.begin(), mots.end(), [&](const QString& m) { return l.cle.contains(m); });
            const bool commence = mots.isEmpty() || l.cle.startsWith(mots[0]);
            if (tous && commence == debut) ajoute(l);
        }
    if (!mots.isEmpty() && liste_->count()) liste_->setCurrentRow(0);
}

void choix_variables::note_usage(const QString& nom) {
    QStringList r = QSettings().value(cle_recentes).toStringList();
    r.removeAll(nom);
    r.prepend(nom);
    while (r.size() > recentes_max) r.removeLast();
    QSettings().setValue(cle_recentes, r);
    if (txt_cherche_->text().isEmpty()) filtre();
}
