#include "orbit/windows/page_orbite.h"

#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>

#include <cmath>
#include <string_view>
#include <vector>

#include "orbit/orb_champs.h"
#include "orbit/orb_trajecto.h"
#include "orbit/windows/dessin_orbite.h"
#include "orbit/windows/import_tle.h"
#include "project/etude_champs.h"
#include "project/orb_fichier.h"
#include "shell/formats.h"
#include "shell/utilitaires.h"
#include "widgets/acces.h"
#include "widgets/conduite.h"
#include "widgets/fichiers.h"
#include "widgets/style.h"
#include "widgets/textes.h"
#include "widgets/verifications.h"

namespace {

constexpr int premiere_annee = 1901, derniere_annee = 2099;

/// The fields that have a box, in the order of the page.
const std::vector<const champ_orb*>& elements() {
    static const std::vector<const champ_orb*> t = [] {
        std::vector<const champ_orb*> choix;
        for (const champ_orb& c : orb_champs())
            if (!c.pointage && c.controles[0]) choix.push_back(&c);
        return choix;
    }();
    return t;
}

/// "hh:mm:ss" of a duration in days, preceded by the whole days when there are any.
QString texte_periode(double jours) {
    if (!std::isfinite(jours) || jours > 1e6) return {};
    constexpr long jour = 86400;
    const long secondes = std::lround(jours * secondes_par_jour);
    const QString heures = QString::fromStdString(format_duree(secondes % jour));
    return secondes >= jour ? QString("%1 j %2").arg(secondes / jour).arg(heures) : heures;
}

/// What an entry brought into its range is told to have become; empty where it stands as typed.
QString avis_saisie(const champ_orb& e, const QString& texte, double tape, double x) {
    if (e.type == type_orb::i16 && (x < premiere_annee || x > derniere_annee))
        return QString("L'année %1 est hors du calendrier du programme, de %2 à %3 : saisissez ses quatre "
                       "chiffres.")
            .arg(x)
            .arg(premiere_annee)
            .arg(derniere_annee);
    if (tape == x) return {};
    QString t = QString("%1 : « %2 » a été ramené à %3 (de %4 à %5).")
                    .arg(QString::fromUtf8(e.titre).trimmed(), texte)
                    .arg(x)
                    .arg(e.min)
                    .arg(e.max);
    static const QRegularExpression chiffres("^[0-9]{7}$");
    if (e.nom == std::string_view("orb_excentricite") && chiffres.match(texte).hasMatch())
        t += QString(" Les éléments à deux lignes taisent « 0. » : saisissez 0.%1.").arg(texte);
    return t;
}

} // namespace

page_orbite::page_orbite(session& s, QWidget* parent) : QWidget(parent), s_(s) {
    auto* grille = new QGridLayout(this);
    grille->setHorizontalSpacing(style::espace(3));
    grille->setVerticalSpacing(style::espace(1));
    grille->addWidget(cree_elements(), 0, 0);
    grille->addWidget(cree_resultats(), 1, 0);
    auto* cadre = new QGroupBox("Orbite dans son plan");
    auto* dedans = new QVBoxLayout(cadre);
    dessin_ = new dessin_orbite(s_.orbit.orbite);
    dedans->addWidget(dessin_);
    grille->addWidget(cadre, 0, 1, 2, 1);
    grille->addWidget(cree_commandes(), 2, 0, 1, 2);
    grille->setColumnStretch(1, 1);
    grille->setRowStretch(1, 1);
}

QWidget* page_orbite::cree_elements() {
    auto* cadre = new QGroupBox("Éléments orbitaux");
    auto* grille = new QGridLayout(cadre);
    grille->setVerticalSpacing(style::espace(1));
    for (int i = 0; i < std::ssize(elements()); ++i) {
        const champ_orb& e = *elements()[i];
        auto* boite = new QLineEdit;
        boite->setObjectName(e.controles[0]);
        style::boite_nombre(boite, 16);
        boite->setToolTip(QString::fromStdString(infobulle(e)));
        lie_champ(boite, element_de(e));
        auto* etiquette = new QLabel(e.titre);
        etiquette->setBuddy(boite);
        grille->addWidget(etiquette, i, 0, Qt::AlignRight);
        grille->addWidget(boite, i, 1);
        grille->addWidget(new QLabel(e.unite), i, 2);
        connect(boite, &QLineEdit::editingFinished, this, [this, i] { saisie(i); });
        boites_.append(boite);
    }
    grille->setColumnStretch(1, 1);
    return cadre;
}

QWidget* page_orbite::cree_resultats() {
    auto* cadre = new QGroupBox("Ce qui en découle");
    auto* grille = new QGridLayout(cadre);
    grille->setVerticalSpacing(style::espace(1));
    int ligne = 0;
    const auto resultat = [&](const char* nom, const char* etiquette, const char* unite, const char* aide) {
        auto* valeur = new QLabel;
        valeur->setObjectName(nom);
        valeur->setToolTip(aide);
        style::montre_calcule(valeur);
        grille->addWidget(new QLabel(etiquette), ligne, 0, Qt::AlignRight);
        grille->addWidget(valeur, ligne, 1);
        grille->addWidget(new QLabel(unite), ligne++, 2);
        return valeur;
    };
    apogee_ =
        resultat("lab_apogee", "Apogée : ", "kms", "Altitude la plus haute, sur l'équateur de 6378,137 km");
    perigee_ = resultat("lab_perigee", "Périgée : ", "kms", "Altitude la plus basse");
    periode_ = resultat("lab_periode", "Période : ", "", "Durée d'un tour, par le moyen mouvement");
    epoque_ = resultat("lab_epoque", "Époque : ", "", "Date à laquelle les éléments sont donnés");
    grille->setColumnStretch(1, 1);
    grille->setRowStretch(ligne, 1);
    return cadre;
}

QWidget* page_orbite::cree_commandes() {
    auto* rangee = new QWidget;
    auto* ligne = new QHBoxLayout(rangee);
    ligne->setContentsMargins(0, 0, 0, 0);
    nom_ = new QLineEdit;
    nom_->setObjectName("orbite_nom");
    nom_->setToolTip("Nom de l'orbite : le nom proposé pour son fichier");
    connect(nom_, &QLineEdit::editingFinished, this, [this] { s_.nom_orbite = nom_->text().toStdString(); });
    ligne->addWidget(new QLabel("Nom de l'orbite"));
    ligne->addWidget(nom_, 1);
    const auto commande = [&](const char* nom, const char* texte, const char* icone, const char* aide) {
        auto* bouton = new QPushButton(style::icone(icone), texte);
        bouton->setObjectName(nom);
        bouton->setToolTip(aide);
        bouton->setAutoDefault(false);
        ligne->addWidget(bouton);
        return bouton;
    };
    const QString depart = QString::fromStdString(s_.dossier_depart);
    connect(commande("orb_ouvr", "&Ouvrir", "open", "Ouvrir une orbite (.orb)"), &QPushButton::clicked, this,
            [=, this] {
                const QString chemin = demande_lecture(this, "Ouvrir", depart, "Orbites (*.orb)");
                if (!chemin.isEmpty()) ouvre(chemin);
            });
    connect(commande("orb_tle", "&Importer un TLE…", "",
                     "Prendre l'orbite d'éléments à deux lignes, collés ou d'un fichier"),
            &QPushButton::clicked, this, &page_orbite::importe_tle);
    connect(commande("orb_enre", "&Enregistrer", "save", "Enregistrer l'orbite (.orb)"),
            &QPushButton::clicked, this, [=, this] {
                const QString propose = depart + QDir::separator() + nom_->text().trimmed() + ".orb";
                const QString chemin = demande_nom(this, "Enregistrer", propose, "Orbites Meridan (*.orb)");
                if (!chemin.isEmpty()) enregistre(chemin);
            });
    return rangee;
}

void page_orbite::rafraichit() {
    const record_orbite& o = s_.orbit.orbite;
    for (int i = 0; i < std::ssize(elements()); ++i) {
        const champ_orb& e = *elements()[i];
        boites_[i]->setText(texte_image(valeur(s_.orbit, e), e.image));
    }
    nom_->setText(QString::fromStdString(s_.nom_orbite));
    apogee_->setText(texte_image(altitude_apogee(o), "####0.00000"));
    perigee_->setText(texte_image(altitude_perigee(o), "####0.00000"));
    periode_->setText(o.orb_moy_mvt > 0 ? texte_periode(1.0 / o.orb_moy_mvt) : QString());
    epoque_->setText(
        QString::fromStdString(date_vers_texte(jour_vers_date(date_epoque(o.orb_an, o.orb_jour - 1.0)))));
    dessin_->update();
}

void page_orbite::saisie(int i) {
    const champ_orb& e = *elements()[i];
    record_orbite& o = s_.orbit.orbite;
    const QString ancien = texte_image(valeur(s_.orbit, e), e.image);
    // A box that was only passed through keeps the digits that it does not show.
    if (!touchee(boites_[i])) return;
    double tape = 0;
    const QString texte = boites_[i]->text();
    if (!verif_double(boites_[i], texte, ancien, tape)) return;
    const double x = borne(tape, e.min, e.max);
    change(s_.orbit, e, e.type == type_orb::i16 ? std::trunc(x) : x); // of a year the integer part alone
    if (e.nom == std::string_view("orb_demi")) o.orb_moy_mvt = moy_mvt_de_demi(x);
    if (e.nom == std::string_view("orb_moy_mvt")) o.orb_demi = demi_de_moy_mvt(x);
    rafraichit();
    emit modifiee();
    emit avis(avis_saisie(e, texte, tape, x));
    if (e.nom == std::string_view("orb_an") || e.nom == std::string_view("orb_jour")) emit epoque_changee();
}

void page_orbite::enregistre(const QString& chemin) {
    std::string raison;
    if (!sauve_orbite(chemin.toStdString(), s_.orbit.orbite, raison)) {
        message(this, gravite::arret, QString::fromStdString(raison));
        return;
    }
    s_.nom_orbite = extrait_nom_fichier(chemin.toStdString());
    note_gardee(s_, rubrique::orbite);
    nom_->setText(QString::fromStdString(s_.nom_orbite));
}

void page_orbite::ouvre(const QString& chemin) {
    std::string raison;
    if (!charge_orbite(chemin.toStdString(), s_.orbit.orbite, raison)) {
        message(this, gravite::arret, QString::fromStdString(raison));
        return;
    }
    s_.nom_orbite = extrait_nom_fichier(chemin.toStdString());
    note_gardee(s_, rubrique::orbite);
    s_.libelle_etape = "Ouverture de « " + QFileInfo(chemin).fileName().toStdString() + " »";
    rafraichit();
    emit modifiee();
    emit avis({});
    emit epoque_changee();
}

void page_orbite::importe_tle() {
    import_tle boite(QString::fromStdString(s_.dossier_depart), this);
    if (boite.exec() != QDialog::Accepted) return;
    const elements_tle& e = boite.choisis();
    s_.orbit.orbite = e.orbite;
    s_.nom_orbite = e.nom;
    rafraichit();
    emit modifiee();
    emit avis({});
    emit epoque_changee();
}
