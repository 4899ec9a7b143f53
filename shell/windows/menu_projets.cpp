/// The project commands of the main window: open, save, recent projects.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QMenu>
#include <QSettings>
#include <QStackedWidget>

#include "project/att_fichier.h"
#include "project/orb_fichier.h"
#include "project/pwr_fichier.h"
#include "shell/windows/accueil.h"
#include "shell/windows/fra_simulation.h"
#include "shell/windows/menu.h"
#include "widgets/fenetre.h"
#include "widgets/verifications.h"

namespace {

const QString filtre_pwr = "Fichiers  Configuration (*.pwr);;All Files (*.*)";
const QString filtre_att = "Fichiers  Configuration (*.att);;All Files (*.*)";
constexpr int recents_max = 8;

/// The file's name without its last four characters: the point and the ending.
QString nom_court(const std::string& chemin) {
    return QFileInfo(QString::fromStdString(chemin)).fileName().chopped(4);
}

QString titre(const QString& prefixe, const std::string& chemin) {
    return prefixe + " (" + (chemin.empty() ? QString("sans_nom") : nom_court(chemin)) + ")";
}

} // namespace

void menu::montre_titres() {
    const QString energie = titre("Energie", s_.chemin_energie);
    setWindowTitle(energie);
    z_energie_->setTitle(QString(energie).replace('&', "&&"));
    z_attitude_->setTitle(titre("Contrôle d'attitude", s_.chemin_attitude).replace('&', "&&"));
    rafraichit();
}

/// Runs the load of the windows that show this half of the project.
void menu::recharge(const QString& tag) {
    for (auto& [nom, f] : fenetres_)
        if (f && f->tag() == tag) f->form_load();
}

/// A failure that leaves the session half replaced: told, then the program ends.
void menu::fatale(const QString& texte) {
    message(this, gravite::arret, texte);
    termine(1);
}

void menu::ouvre(const QString& chemin) {
    if (!fichier_existe(chemin.toStdString())) {
        message(this, gravite::avertissement, "Le fichier « " + chemin + " » n'existe pas ou plus.");
        QSettings reglages;
        QStringList liste = reglages.value("recents").toStringList();
        liste.removeAll(chemin);
        reglages.setValue("recents", liste);
        montre_recents();
        return;
    }
    const QString fin = QFileInfo(chemin).suffix().toLower();
    if (fin == "pwr")
        ouvre_energie(chemin);
    else if (fin == "att")
        ouvre_attitude(chemin);
    else if (fin == "orb")
        ouvre_orbite(chemin);
    else
        message(this, gravite::avertissement,
                "« " + chemin + " » n'est pas un projet : ouvrez un fichier .pwr, .att ou .orb.");
}

void menu::ouvre_energie(const QString& chemin) {
    erreur_fichier erreur;
    if (!charge_energie(chemin.toStdString(), s_.power, s_.periode, erreur)) {
        fatale("Le projet énergie ne peut pas être lu, le programme s'arrête !!\n" +
               QString::fromStdString(erreur.texte()));
        return;
    }
    s_.chemin_energie = chemin.toStdString();
    montre_titres();
    fra_simulation_->montre();
    s_.config_modifiee = 1;
    recharge("conf");
    note_recent(chemin);
    configuration_a_change();
}

void menu::ouvre_attitude(const QString& chemin) {
    std::string raison;
    if (!charge_attitude(chemin.toStdString(), s_.attitude, raison)) {
        message(this, gravite::arret,
                "Erreur de lecture_ligne du fichier de configuration.\nFichier non trouvable ou format non "
                "valable !!");
        return;
    }
    s_.chemin_attitude = chemin.toStdString();
    attitude_modifiee_ = false;
    montre_titres();
    s_.config_modifiee = 1;
    recharge("attconf");
    note_recent(chemin);
    configuration_a_change();
}

void menu::ouvre_orbite(const QString& chemin) {
    std::string raison;
    if (!charge_orbite(chemin.toStdString(), s_.orbit.orbite, raison)) {
        message(this, gravite::arret, QString::fromStdString(raison));
        return;
    }
    s_.nom_orbite = extrait_nom_fichier(chemin.toStdString());
    s_.config_modifiee = 1;
    const auto f = fenetres_.find("orbito_conf");
    if (f != fenetres_.end() && f->second) f->second->form_load();
    note_recent(chemin);
    configuration_a_change();
}

void menu::ouvre_exemple(const exemple& e) {
    s_.orbit.pointage = {}; // no file holds it: the sample is the same whatever was set before
    s_.orbit.pointage.spin = e.spin != 0 ? vrai : faux;
    s_.orbit.pointage.vspin = e.spin;
    if (QFile::exists(e.base + ".orb")) ouvre_orbite(e.base + ".orb");
    if (QFile::exists(e.base + ".att")) ouvre_attitude(e.base + ".att");
    ouvre(e.base + ".pwr");
}

void menu::mn_fichier_ouvrir() {
    const QString dossier = QString::fromStdString(s_.dossier_depart);
    const QString chemin = choisit_fichier(
        this, {"Ouvrir un fichier configuration du système énergie", filtre_pwr, dossier, {}, "pwr", true});
    QDir::setCurrent(dossier);
    if (!chemin.isEmpty()) ouvre_energie(chemin);
}

bool menu::ecrit_energie(const QString& chemin) {
    if (sauve_energie(chemin.toStdString(), s_.power, s_.periode)) return true;
    message(this, gravite::arret, "Erreur d'écriture.\n Impossible d'enregistrer la configuration !!");
    return false;
}

bool menu::mn_fichier_enreg() {
    if (s_.chemin_energie.empty()) return mn_fichier_enregsous();
    return ecrit_energie(QString::fromStdString(s_.chemin_energie));
}

bool menu::mn_fichier_enregsous() {
    const QString dossier = QString::fromStdString(s_.dossier_depart);
    const QString nom = s_.chemin_energie.empty() ? QString() : nom_court(s_.chemin_energie);
    const QString chemin = choisit_fichier(
        this, {"Enregistrer la configuration du système énergie", filtre_pwr, dossier, nom, "pwr", false});
    QDir::setCurrent(dossier);
    if (chemin.isEmpty()) return false;
    const bool ecrit = ecrit_energie(chemin);
    s_.chemin_energie = chemin.toStdString();
    montre_titres();
    if (ecrit) note_recent(chemin);
    return ecrit;
}

void menu::mn_attfich_ouvrir() {
    const QString dossier = QString::fromStdString(s_.dossier_depart);
    const QString chemin = choisit_fichier(
        this,
        {"Ouvrir un fichier de configuration du contrôle d'attitude", filtre_att, dossier, {}, "att", true});
    QDir::setCurrent(dossier);
    if (!chemin.isEmpty()) ouvre_attitude(chemin);
}

/// Writes the project over its own file: a failure there ends the program.
bool menu::mn_attfich_enreg() {
    if (s_.chemin_attitude.empty()) return mn_attfich_enregsous();
    std::string raison;
    if (!sauve_attitude(s_.chemin_attitude, s_.attitude, raison)) {
        fatale("Le projet de contrôle d'attitude ne peut pas être écrit, le programme s'arrête !!\n" +
               QString::fromStdString(s_.chemin_attitude + " : " + raison));
        return false;
    }
    attitude_modifiee_ = false;
    return true;
}

/// A failure to write ends the command as a cancel does, in silence: that is meant.
bool menu::mn_attfich_enregsous() {
    const QString dossier = QString::fromStdString(s_.dossier_depart);
    const QString nom = s_.chemin_attitude.empty() ? QString() : nom_court(s_.chemin_attitude);
    const QString chemin =
        choisit_fichier(this, {"Enregistrer le fichier de configuration du contrôle d'attitude", filtre_att,
                               dossier, nom, "att", false});
    QDir::setCurrent(dossier);
    std::string raison;
    if (chemin.isEmpty() || !sauve_attitude(chemin.toStdString(), s_.attitude, raison)) return false;
    s_.chemin_attitude = chemin.toStdString();
    attitude_modifiee_ = false;
    montre_titres();
    note_recent(chemin);
    return true;
}

/// Both halves: the energy project always, the attitude project where it has a file or has been edited.
bool menu::enregistre_projet() {
    if (!mn_fichier_enreg()) return false;
    return (s_.chemin_attitude.empty() && !attitude_modifiee_) || mn_attfich_enreg();
}

/// The most recent first, each once.
void menu::note_recent(const QString& chemin) {
    QSettings reglages;
    QStringList liste = reglages.value("recents").toStringList();
    const QString absolu = QFileInfo(chemin).absoluteFilePath();
    liste.removeAll(absolu);
    liste.prepend(absolu);
    reglages.setValue("recents", liste.mid(0, recents_max));
    montre_recents();
}

void menu::montre_recents() {
    const QStringList liste = QSettings().value("recents").toStringList();
    accueil_->montre_recents(liste);
    mn_recents_->clear();
    mn_recents_->menuAction()->setEnabled(!liste.isEmpty());
    for (int i = 0; i < int(liste.size()); ++i) {
        QString nom = QFileInfo(liste[i]).fileName().replace('&', "&&");
        QAction* a = mn_recents_->addAction(QString("&%1  %2").arg(i + 1).arg(nom));
        a->setStatusTip(liste[i]);
        connect(a, &QAction::triggered, this, [this, chemin = liste[i]] { ouvre(chemin); });
    }
}
