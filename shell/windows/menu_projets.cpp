/// The project commands of the main window: open, save, recent projects.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QMenu>
#include <QSettings>

#include <algorithm>

#include "attitude/att_defin_attitude.h"
#include "project/att_fichier.h"
#include "project/orb_fichier.h"
#include "project/pwr_fichier.h"
#include "shell/windows/accueil.h"
#include "shell/windows/etabli.h"
#include "shell/windows/fra_simulation.h"
#include "shell/windows/menu.h"
#include "shell/windows/menu_etude.h"
#include "widgets/fenetre.h"
#include "widgets/fichiers.h"
#include "widgets/verifications.h"

namespace {

const QString filtre_pwr = "Fichiers  Configuration (*.pwr);;All Files (*.*)";
const QString filtre_att = "Fichiers  Configuration (*.att);;All Files (*.*)";
constexpr int recents_max = 8;

/// The file's name without its last four characters: the point and the ending.
QString nom_court(const std::string& chemin) {
    QString nom = QFileInfo(QString::fromStdString(chemin)).fileName();
    nom.chop(4);
    return nom;
}

QString ouverture(const QString& chemin) { return "Ouverture de « " + QFileInfo(chemin).fileName() + " »"; }

/// The name of a project: of its file, or of the sample that it was copied from.
QString nom_projet(const std::string& chemin, const std::string& modele) {
    if (!chemin.empty()) return nom_court(chemin);
    return modele.empty() ? QString("sans_nom") : QString::fromStdString(modele);
}

} // namespace

void menu::montre_titres() {
    const QString energie = "Energie (" + nom_projet(s_.chemin_energie, s_.modele_energie) + ")";
    const QString attitude =
        "Contrôle d'attitude (" + nom_projet(s_.chemin_attitude, s_.modele_attitude) + ")";
    setWindowTitle(energie + titre_du_modele());
    z_energie_->setTitle(QString(energie).replace('&', "&&"));
    z_attitude_->setTitle(QString(attitude).replace('&', "&&"));
    montre_titre_etude();
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

/// A save that was stopped between its two steps has left the project whole beside its place.
void menu::offre_copie(const QString& chemin) {
    const std::string c = chemin.toStdString();
    if (enregistrement_interrompu(c) &&
        message(this, gravite::question,
                "L'enregistrement de « " + chemin +
                    " » a été interrompu, mais sa copie est entière. La remettre à sa place ?"))
        acheve_enregistrement(c);
}

void menu::ouvre(const QString& chemin) {
    offre_copie(chemin);
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
    if (fin == "kestrel")
        ouvre_etude(chemin);
    else if (fin == "pwr")
        ouvre_energie(chemin);
    else if (fin == "att")
        ouvre_attitude(chemin);
    else if (fin == "orb")
        ouvre_orbite(chemin);
    else
        message(this, gravite::avertissement,
                "« " + chemin + " » n'est pas un projet : ouvrez un fichier .kestrel, .pwr, .att ou .orb.");
}

void menu::ouvre_energie(const QString& chemin) {
    const etape_etude etape(*this, ouverture(chemin));
    erreur_fichier erreur;
    if (!charge_energie(chemin.toStdString(), s_.power, s_.periode, erreur)) {
        fatale("Le projet énergie ne peut pas être lu, le programme s'arrête !!\n" +
               QString::fromStdString(erreur.texte()));
        return;
    }
    const bool exemple = est_exemple(chemin);
    s_.chemin_energie = exemple ? std::string() : chemin.toStdString();
    s_.modele_energie = nom_court(chemin.toStdString()).toStdString();
    note_gardee(s_, rubrique::energie);
    montre_titres();
    fra_simulation_->montre();
    s_.config_modifiee = 1;
    recharge("conf");
    if (!exemple) note_recent(chemin);
    configuration_a_change();
    propose_orbite(chemin);
}

/// The project file does not hold the orbit: one of the same name beside it belongs to it.
void menu::propose_orbite(const QString& chemin_energie) {
    const QFileInfo f(chemin_energie);
    const QString chemin = f.path() + "/" + f.completeBaseName() + ".orb";
    record_orbite o;
    std::string raison;
    if (!QFile::exists(chemin) || !charge_orbite(chemin.toStdString(), o, raison)) return;
    if (o == s_.orbit.orbite) return;
    if (message(
            this, gravite::question,
            QString("Une orbite « %1 » accompagne ce projet, qui n'en contient pas. L'ouvrir aussi ?\nSans "
                    "elle, le projet suit l'orbite en cours, « %2 ».")
                .arg(QFileInfo(chemin).fileName(), QString::fromStdString(s_.nom_orbite))))
        ouvre_orbite(chemin);
}

/// The program's own samples are opened as copies and kept out of the recent projects.
bool menu::est_exemple(const QString& chemin) const {
    const QString exemples =
        QFileInfo(QString::fromStdString(s_.dossier_depart) + "/exemples").canonicalFilePath();
    return !exemples.isEmpty() && QFileInfo(QFileInfo(chemin).canonicalFilePath()).path() == exemples;
}

void menu::ouvre_attitude(const QString& chemin) {
    const etape_etude etape(*this, ouverture(chemin));
    std::string raison;
    if (!charge_attitude(chemin.toStdString(), s_.attitude, raison)) {
        message(this, gravite::arret,
                "Erreur de lecture_ligne du fichier de configuration.\nFichier non trouvable ou format non "
                "valable !!");
        return;
    }
    const bool exemple = est_exemple(chemin);
    s_.chemin_attitude = exemple ? std::string() : chemin.toStdString();
    s_.modele_attitude = nom_court(chemin.toStdString()).toStdString();
    note_gardee(s_, rubrique::attitude);
    montre_titres();
    s_.config_modifiee = 1;
    recharge("attconf");
    if (!exemple) note_recent(chemin);
    configuration_a_change();
}

void menu::ouvre_orbite(const QString& chemin) {
    const etape_etude etape(*this, ouverture(chemin));
    std::string raison;
    if (!charge_orbite(chemin.toStdString(), s_.orbit.orbite, raison)) {
        message(this, gravite::arret, QString::fromStdString(raison));
        return;
    }
    s_.nom_orbite = extrait_nom_fichier(chemin.toStdString());
    note_gardee(s_, rubrique::orbite);
    s_.config_modifiee = 1;
    const auto f = fenetres_.find("orbito_conf");
    if (f != fenetres_.end() && f->second) f->second->form_load();
    if (!est_exemple(chemin)) note_recent(chemin);
    configuration_a_change();
}

void menu::ouvre_tous(QStringList chemins) {
    const etape_etude etape(*this, chemins.size() == 1
                                       ? ouverture(chemins[0])
                                       : QString("Ouverture de %1 fichiers").arg(chemins.size()));
    const auto rang = [](const QString& chemin) {
        const QString fin = QFileInfo(chemin).suffix().toLower();
        return fin == "kestrel" ? 0 : fin == "orb" ? 1 : fin == "att" ? 2 : 3; // single parts over an étude
    };
    std::stable_sort(chemins.begin(), chemins.end(),
                     [&](const QString& a, const QString& b) { return rang(a) < rang(b); });
    for (const QString& chemin : chemins)
        if (!terminee_) ouvre(chemin);
}

void menu::ouvre_exemple(const exemple& e) {
    ouvre_etude(e.base + ".kestrel", "Exemple « " + e.titre + " »");
}

void menu::mn_fichier_ouvrir() {
    const QString dossier = QString::fromStdString(s_.dossier_depart);
    const QString chemin = choisit_fichier(
        this, {"Ouvrir un fichier configuration du système énergie", filtre_pwr, dossier, {}, "pwr", true});
    QDir::setCurrent(dossier);
    if (!chemin.isEmpty()) ouvre_energie(chemin);
}

bool menu::ecrit_energie(const QString& chemin) {
    if (sauve_energie(chemin.toStdString(), s_.power, s_.periode)) {
        note_gardee(s_, rubrique::energie);
        signale("Projet énergie enregistré : " + QDir::toNativeSeparators(chemin) + rappel_etude());
        return true;
    }
    message(this, gravite::arret, "Erreur d'écriture.\n Impossible d'enregistrer la configuration !!");
    return false;
}

bool menu::mn_fichier_enreg() {
    if (s_.chemin_energie.empty()) return mn_fichier_enregsous();
    return ecrit_energie(QString::fromStdString(s_.chemin_energie));
}

bool menu::mn_fichier_enregsous() {
    const QString dossier = QString::fromStdString(s_.dossier_depart);
    const QString nom =
        s_.chemin_energie.empty() ? QString::fromStdString(s_.modele_energie) : nom_court(s_.chemin_energie);
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
    note_gardee(s_, rubrique::attitude);
    signale("Projet d'attitude enregistré : " +
            QDir::toNativeSeparators(QString::fromStdString(s_.chemin_attitude)));
    return true;
}

/// A failure to write ends the command as a cancel does, in silence: that is meant.
bool menu::mn_attfich_enregsous() {
    const QString dossier = QString::fromStdString(s_.dossier_depart);
    const QString nom = s_.chemin_attitude.empty() ? QString::fromStdString(s_.modele_attitude)
                                                   : nom_court(s_.chemin_attitude);
    const QString chemin =
        choisit_fichier(this, {"Enregistrer le fichier de configuration du contrôle d'attitude", filtre_att,
                               dossier, nom, "att", false});
    QDir::setCurrent(dossier);
    std::string raison;
    if (chemin.isEmpty() || !sauve_attitude(chemin.toStdString(), s_.attitude, raison)) return false;
    s_.chemin_attitude = chemin.toStdString();
    note_gardee(s_, rubrique::attitude);
    montre_titres();
    note_recent(chemin);
    signale("Projet d'attitude enregistré : " + QDir::toNativeSeparators(chemin));
    return true;
}

/// The orbit into a file of its own, as its page does.
bool menu::enregistre_orbite() {
    const QString dossier = QString::fromStdString(s_.dossier_depart);
    const QString chemin = choisit_fichier(this, {"Enregistrer", "Orbites Meridan (*.orb)", dossier,
                                                  QString::fromStdString(s_.nom_orbite), "orb", false});
    std::string raison;
    if (chemin.isEmpty()) return false;
    if (!sauve_orbite(chemin.toStdString(), s_.orbit.orbite, raison)) {
        message(this, gravite::arret, QString::fromStdString(raison));
        return false;
    }
    s_.nom_orbite = extrait_nom_fichier(chemin.toStdString());
    note_gardee(s_, rubrique::orbite);
    signale("Orbite enregistrée : " + QDir::toNativeSeparators(chemin));
    return true;
}

/// All parts: the energy project always, the attitude project where it has a file or has been edited, the
/// orbit where it has been edited.
bool menu::enregistre_projet() {
    if (!mn_fichier_enreg()) return false;
    if ((!s_.chemin_attitude.empty() || modifiee(s_, rubrique::attitude)) && !mn_attfich_enreg())
        return false;
    return !modifiee(s_, rubrique::orbite) || enregistre_orbite();
}

/// The most recent first, each once.
void menu::note_recent(const QString& chemin) {
    QSettings reglages;
    QStringList liste = reglages.value("recents").toStringList();
    const QString absolu = QFileInfo(chemin).absoluteFilePath();
    retient_dossier(absolu);
    liste.removeAll(absolu);
    liste.prepend(absolu);
    reglages.setValue("recents", liste.mid(0, recents_max));
    montre_recents();
}

void menu::montre_recents() {
    QStringList liste = QSettings().value("recents").toStringList();
    liste.removeIf([this](const QString& chemin) { return est_exemple(chemin); });
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
