#include "shell/windows/accueil.h"

#include <algorithm>
#include <utility>

#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QTimer>

#include "analysis/phrase_bilan.h"
#include "project/etude_fichier.h"
#include "widgets/style.h"

namespace {

QLabel* titre(const QString& texte, double taille) {
    auto* l = new QLabel(texte);
    QFont f = l->font();
    f.setPointSizeF(f.pointSizeF() * taille);
    f.setBold(true);
    l->setFont(f);
    return l;
}

QLabel* ligne(const QString& texte, bool discret) {
    auto* l = new QLabel(texte);
    l->setWordWrap(true);
    l->setAttribute(Qt::WA_TransparentForMouseEvents);
    if (discret) l->setForegroundRole(QPalette::PlaceholderText);
    return l;
}

} // namespace

carte::carte(const exemple& e, QWidget* parent)
    : QPushButton(parent), contenu_(e.contenu), signe_(new signe_verdict) {
    setObjectName("carte_" + QFileInfo(e.base).fileName());
    setAccessibleName(e.titre);
    setToolTip("Ouvrir une copie de l'exemple « " + e.titre + " »");
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);

    auto* image = new QLabel;
    const QSize taille(style::espace(26), style::espace(16));
    image->setPixmap(style::icone(e.icone).pixmap(taille));
    image->setFixedSize(taille);
    image->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* grille = new QGridLayout(this);
    grille->setContentsMargins(style::espace(3), style::espace(2), style::espace(2), style::espace(2));
    grille->setHorizontalSpacing(style::espace(2));
    grille->setVerticalSpacing(style::espace(1));
    auto* nom = titre(e.titre, 1.1);
    nom->setWordWrap(true);
    nom->setAttribute(Qt::WA_TransparentForMouseEvents);
    signe_->setAttribute(Qt::WA_TransparentForMouseEvents);
    grille->addWidget(image, 0, 0, 2, 1, Qt::AlignVCenter);
    grille->addWidget(nom, 0, 1);
    grille->addWidget(signe_, 1, 1);
    grille->addWidget(ligne(e.contenu.toHtmlEscaped(), false), 2, 0, 1, 2);
    grille->setRowStretch(2, 1);
    grille->setColumnStretch(1, 1);
    montre_verdict({etat_verdict::calcul, {}});
}

void carte::montre_verdict(const verdict_exemple& v) {
    signe_->montre(v.etat);
    setAccessibleDescription(contenu_ + ". " + (v.phrase.isEmpty() ? signe_->accessibleName() : v.phrase));
    if (!v.phrase.isEmpty()) setToolTip(v.phrase + "\nUn clic en ouvre une copie.");
}

QSize carte::sizeHint() const {
    const int largeur = style::espace(70);
    const int presente = std::max(width(), largeur);
    return {largeur, std::max(layout()->heightForWidth(presente), style::espace(24))};
}

accueil::accueil(const QList<exemple>& exemples, const QString& dossier, QWidget* parent)
    : page("accueil", parent), exemples_(exemples), dossier_(dossier),
      tache_(this, [this](const QList<verdict_exemple>& v) {
          for (qsizetype i = 0; i < std::min(v.size(), cartes_.size()); ++i) cartes_[i]->montre_verdict(v[i]);
      }) {
    auto* pile = new QVBoxLayout(fait_defiler());
    pile->setContentsMargins(style::espace(6), style::espace(4), style::espace(6), style::espace(4));
    pile->setSpacing(style::espace(3));

    pile->addWidget(titre("KESTREL", 1.8));
    pile->addWidget(ligne("Simulateur de petit satellite en orbite terrestre : énergie et contrôle "
                          "d'attitude. Choisissez un exemple, ouvrez un projet ou partez du satellite "
                          "par défaut.",
                          false));
    auto* boutons = new QHBoxLayout;
    auto* cmd_ouvrir = new QPushButton(style::icone("open"), "&Ouvrir un projet énergie…");
    cmd_ouvrir->setObjectName("cmd_accueil_ouvrir");
    cmd_ouvrir->setToolTip("Choisir un fichier .pwr");
    auto* cmd_defaut = new QPushButton(style::icone("kestrel"), "Partir du &satellite par défaut");
    cmd_defaut->setObjectName("cmd_accueil_defaut");
    cmd_defaut->setToolTip("Commencer un nouveau projet avec les réglages d'origine");
    boutons->addWidget(cmd_ouvrir);
    boutons->addWidget(cmd_defaut);
    boutons->addStretch(1);
    pile->addLayout(boutons);
    connect(cmd_ouvrir, &QPushButton::clicked, this, &accueil::demande_ouverture);
    connect(cmd_defaut, &QPushButton::clicked, this, &accueil::demande_defaut);

    if (!exemples.isEmpty()) pile->addWidget(titre("Exemples", 1.25));
    grille_ = new QGridLayout;
    grille_->setSpacing(style::espace(3));
    pile->addLayout(grille_);
    for (const exemple& e : exemples) {
        auto* c = new carte(e);
        connect(c, &QPushButton::clicked, this, [this, e] { emit demande_exemple(e); });
        cartes_ << c;
    }
    pile->addWidget(titre("Projets récents", 1.25));
    recents_ = new QVBoxLayout;
    recents_->setSpacing(style::espace(1));
    pile->addLayout(recents_);
    pile->addStretch(1);
    range_cartes();
}

void accueil::montre_recents(const QStringList& chemins) {
    while (QLayoutItem* i = recents_->takeAt(0)) {
        if (i->widget()) i->widget()->deleteLater();
        delete i;
    }
    if (chemins.isEmpty())
        recents_->addWidget(ligne("Les projets ouverts ou enregistrés viendront ici.", true));
    for (const QString& chemin : chemins) {
        const QFileInfo f(chemin);
        auto* b = new QPushButton(f.fileName() + "   —   " + f.path());
        b->setFlat(true);
        b->setStyleSheet("text-align: left");
        b->setToolTip("Ouvrir " + chemin);
        b->setCursor(Qt::PointingHandCursor);
        connect(b, &QPushButton::clicked, this, [this, chemin] { emit demande_fichier(chemin); });
        recents_->addWidget(b);
    }
}

void accueil::resizeEvent(QResizeEvent* e) {
    page::resizeEvent(e);
    range_cartes();
}

void accueil::showEvent(QShowEvent* e) {
    page::showEvent(e);
    // Once the window stands there: two cores would share its drawing with the verdicts.
    if (!std::exchange(juges_, true)) QTimer::singleShot(300, this, &accueil::juge_exemples);
}

/// The verdict of each example as it stands, beside the window's thread.
void accueil::juge_exemples() {
    std::vector<std::string> chemins;
    for (const exemple& e : exemples_) chemins.push_back((e.base + ".kestrel").toStdString());
    tache_.lance([chemins, dossier = dossier_.toStdString()](std::stop_token arret) {
        QList<verdict_exemple> liste;
        for (const std::string& chemin : chemins) {
            etude e;
            std::string raison;
            verdict_exemple v;
            if (!arret.stop_requested() && charge_etude(chemin, e, raison)) {
                const bilan b = calcule_bilan(e, {.dossier_donnees = dossier, .arret = arret});
                if (!b.faute && !b.tours.empty())
                    v = {b.tient ? etat_verdict::tient : etat_verdict::tient_pas,
                         QString::fromStdString(phrase_bilan(b, criteres_en_vigueur(e)))};
            }
            liste << v;
        }
        return liste;
    });
}

/// As many columns as the width holds, at most four.
void accueil::range_cartes() {
    const int largeur = style::espace(70 + 3);
    const int place = std::clamp((width() - style::espace(12)) / largeur, 1, 4);
    // Rows of equal length: eight cards stand in two rows of four.
    const int nombre = std::max(1, int(cartes_.size()));
    const int rangees = (nombre + place - 1) / place;
    const int colonnes = (nombre + rangees - 1) / rangees;
    if (colonnes == colonnes_) return;
    for (int c = 0; c < colonnes_; ++c) grille_->setColumnStretch(c, 0);
    colonnes_ = colonnes;
    for (int i = 0; i < int(cartes_.size()); ++i) grille_->addWidget(cartes_[i], i / colonnes, i % colonnes);
    for (int c = 0; c < colonnes; ++c) grille_->setColumnStretch(c, 1);
}
