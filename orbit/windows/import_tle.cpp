#include "orbit/windows/import_tle.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "orbit/orb_trajecto.h"
#include "shell/lecture.h"
#include "shell/utilitaires.h"
#include "widgets/fichiers.h"
#include "widgets/style.h"
#include "widgets/textes.h"
#include "widgets/zone_texte.h"

import_tle::import_tle(const QString& dossier, QWidget* parent) : QDialog(parent), dossier_(dossier) {
    setObjectName("import_tle");
    setWindowTitle("Importer un TLE");
    auto* pile = new QVBoxLayout(this);
    auto* aide =
        new QLabel("Collez les deux lignes d'éléments (et, si vous l'avez, la ligne de nom au-dessus), "
                   "ou ouvrez un fichier.");
    aide->setWordWrap(true);
    pile->addWidget(aide);
    texte_ = new zone_texte;
    texte_->setObjectName("txt_tle");
    texte_->setAccessibleName("Éléments à deux lignes");
    texte_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    texte_->setLineWrapMode(QPlainTextEdit::NoWrap);
    texte_->setTabChangesFocus(true);
    texte_->setMinimumWidth(texte_->fontMetrics().horizontalAdvance(QString(74, '0')));
    texte_->setMinimumHeight(texte_->fontMetrics().height() * 5);
    pile->addWidget(texte_, 1);
    satellites_ = new QComboBox;
    satellites_->setObjectName("cmb_satellite");
    satellites_->setAccessibleName("Satellite");
    pile->addWidget(satellites_);
    mot_ = new QLabel;
    mot_->setObjectName("lab_tle");
    mot_->setWordWrap(true);
    mot_->setMinimumHeight(mot_->fontMetrics().height() * 4);
    mot_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    pile->addWidget(mot_);
    auto* note =
        new QLabel("Ce sont des éléments moyens d'une autre théorie : à l'époque, la position diffère d'une "
                   "dizaine de kilomètres, et davantage les jours suivants.");
    note->setWordWrap(true);
    note->setForegroundRole(QPalette::PlaceholderText);
    pile->addWidget(note);
    pile->addWidget(cree_boutons());
    connect(texte_, &QPlainTextEdit::textChanged, this, &import_tle::lit);
    connect(satellites_, &QComboBox::currentIndexChanged, this, &import_tle::montre_choix);
    lit();
    // Elements that have just been copied need no paste.
    const QString colle = QApplication::clipboard()->text();
    std::vector<elements_tle> lus;
    std::string raison;
    if (colle.size() < 100'000 && lit_tle(colle.toStdString(), lus, raison)) texte_->setPlainText(colle);
}

QWidget* import_tle::cree_boutons() {
    auto* boutons = new QDialogButtonBox;
    auto* fichier = boutons->addButton("&Ouvrir un fichier…", QDialogButtonBox::ActionRole);
    fichier->setObjectName("cmd_tle_fichier");
    importer_ = boutons->addButton("&Importer", QDialogButtonBox::AcceptRole);
    importer_->setObjectName("cmd_tle_importer");
    boutons->addButton("&Annuler", QDialogButtonBox::RejectRole)->setObjectName("cmd_tle_annuler");
    connect(fichier, &QPushButton::clicked, this, &import_tle::ouvre);
    connect(boutons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(boutons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return boutons;
}

const elements_tle& import_tle::choisis() const {
    return lus_[std::size_t(std::max(0, satellites_->currentIndex()))];
}

void import_tle::ouvre() {
    const QString chemin = demande_lecture(this, "Ouvrir un TLE", dossier_,
                                           "Éléments à deux lignes (*.tle *.txt);;Tous les fichiers (*)");
    if (chemin.isEmpty()) return;
    std::string texte, raison;
    if (!lit_fichier_court(chemin.toStdString(), tle_taille_max, texte, raison)) {
        mot_->setText(QString("« %1 » : %2").arg(chemin, QString::fromStdString(raison)));
        return;
    }
    texte_->setPlainText(QString::fromStdString(texte));
}

void import_tle::lit() {
    lus_.clear();
    satellites_->clear();
    std::string raison;
    const bool bon = lit_tle(texte_->toPlainText().toStdString(), lus_, raison);
    for (const elements_tle& e : lus_) satellites_->addItem(QString::fromStdString(e.nom));
    satellites_->setVisible(lus_.size() > 1);
    importer_->setEnabled(bon);
    if (bon) return montre_choix();
    const bool vide = texte_->toPlainText().trimmed().isEmpty();
    mot_->setText(vide ? QString() : QString::fromStdString(raison));
    QPalette p = palette();
    p.setColor(QPalette::WindowText, style::couleur(style::role::alerte));
    mot_->setPalette(p);
}

void import_tle::montre_choix() {
    if (lus_.empty()) return;
    const elements_tle& e = choisis();
    const record_orbite& o = e.orbite;
    mot_->setPalette(palette());
    const double epoque = date_epoque(o.orb_an, o.orb_jour - 1.0);
    mot_->setText(QString("%1, époque %2\nPérigée %3 km, apogée %4 km, inclinaison %5°, %6 tours par jour")
                      .arg(QString::fromStdString(e.nom),
                           QString::fromStdString(date_vers_texte(jour_vers_date(epoque))),
                           texte_image(altitude_perigee(o), "0"), texte_image(altitude_apogee(o), "0"),
                           texte_image(o.orb_inclinaison, "0.00"), texte_image(o.orb_moy_mvt, "0.00")));
}
