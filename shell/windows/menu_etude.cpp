/// The étude in the main window: its file, undo and redo, the copy that a crash leaves, what is not saved.
#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "attitude/att_defin_attitude.h"
#include "project/etude_compare.h"
#include "project/etude_fichier.h"
#include "shell/etude_historique.h"
#include "shell/etude_recuperation.h"
#include "shell/windows/etabli.h"
#include "shell/windows/fra_simulation.h"
#include "shell/windows/menu.h"
#include "shell/windows/menu_etude.h"
#include "widgets/fenetre.h"
#include "widgets/style.h"
#include "widgets/verifications.h"
#include "widgets/zone_texte.h"

namespace {

const QString filtre_etude = "Études (*.kestrel);;Tous les fichiers (*.*)";
constexpr int delai_copie = 2000; ///< [ms] from an edit to its recovery copy

/// The user's folder for what a program keeps between two starts.
QString dossier_etat() {
    if (QStandardPaths::isTestModeEnabled())
        return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + "/etat";
    const QString etat = qEnvironmentVariable("XDG_STATE_HOME", QDir::homePath() + "/.local/state");
    return etat + "/kestrel";
}

QString nom_etude(const std::string& chemin) {
    return QFileInfo(QString::fromStdString(chemin)).completeBaseName();
}

QString il_y_a(double secondes) {
    if (secondes < 90) return "d'il y a un instant";
    if (secondes < 5400) return QString("d'il y a %1 min").arg(std::lround(secondes / 60));
    return "du " +
           QDateTime::currentDateTime().addSecs(-std::lround(secondes)).toString("dd/MM/yyyy à hh:mm");
}

/// A box with what to do about changes that no file holds.
int demande(QWidget* parent, const char* nom, const QString& texte) {
    QMessageBox boite(QMessageBox::Question, "Étude", texte,
                      QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, parent);
    boite.setObjectName(nom);
    boite.button(QMessageBox::Save)->setText("&Enregistrer l'étude");
    boite.button(QMessageBox::Discard)->setText("&Ne pas enregistrer");
    boite.button(QMessageBox::Cancel)->setText("&Annuler");
    boite.setDefaultButton(QMessageBox::Save);
    return boite.exec();
}

/// One step of a line's own undo or redo that changes what is seen; false when there is none.
bool remonte_ligne(QLineEdit* ligne, bool annuler) {
    const QString avant = ligne->text();
    while (annuler ? ligne->isUndoAvailable() : ligne->isRedoAvailable()) {
        annuler ? ligne->undo() : ligne->redo();
        if (ligne->text() != avant) return true; // else it moved the selection alone
    }
    return false;
}

/// A text that is being typed has its own undo; once it is entered, or where nothing has been typed, the keys
/// belong to the étude.
class filtre_saisie : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* objet, QEvent* e) override {
        const bool appui = e->type() == QEvent::KeyPress;
        if (!appui && e->type() != QEvent::ShortcutOverride) return false;
        const auto* touche = static_cast<QKeyEvent*>(e);
        const bool annuler = touche->matches(QKeySequence::Undo);
        if (!annuler && !touche->matches(QKeySequence::Redo)) return false;
        if (appui) return std::exchange(fait_, false); // done at the question whose key it is
        bool texte = false;
        if (auto* ligne = qobject_cast<QLineEdit*>(objet)) {
            texte = remonte_ligne(ligne, annuler);
        } else if (auto* page = qobject_cast<QPlainTextEdit*>(objet)) {
            const QTextDocument* d = page->document();
            if (annuler ? d->isUndoAvailable() : d->isRedoAvailable()) return false;
        } else {
            return false;
        }
        fait_ = texte;
        e->setAccepted(texte);
        return true;
    }

private:
    bool fait_ = false; ///< the text has been undone already
};

} // namespace

atelier_etude::atelier_etude(session& s) : historique(s), recuperation(dossier_etat().toStdString()) {
    copie.setSingleShot(true);
    copie.setInterval(delai_copie);
    fil.setMaxThreadCount(1);
}

etape_etude::etape_etude(menu& m, const QString& libelle) : m_(m), premiere_(!m.atelier_->etape) {
    if (!premiere_) return;
    m_.note_etape(); // what came before is a step of its own
    m_.atelier_->etape = libelle.toStdString();
}

etape_etude::~etape_etude() {
    if (!premiere_) return;
    const std::string libelle = *std::exchange(m_.atelier_->etape, std::nullopt);
    m_.atelier_->historique.note_ouverture(libelle);
    m_.note_etape();
}

void menu::construit_etude() {
    atelier_ = std::make_unique<atelier_etude>(s_);
    connect(&atelier_->copie, &QTimer::timeout, this, [this] {
        const std::string chemin = s_.chemin_etude;
        atelier_->fil.start([r = &atelier_->recuperation, e = etude(s_), chemin] { r->ecrit(e, chemin); });
    });
    const auto touches = [this](const char* nom, const QList<QKeySequence>& t) {
        auto* a = findChild<QAction*>(nom);
        a->setShortcuts(t);
        a->setShortcutContext(Qt::ApplicationShortcut); // in every window
    };
    touches("mn_annuler", {QKeySequence("Ctrl+Z")});
    touches("mn_refaire", {QKeySequence("Ctrl+Shift+Z"), QKeySequence("Ctrl+Y")});
    qApp->installEventFilter(new filtre_saisie(this));
    montre_etapes();
}

// -- Undo and redo

void menu::note_bientot() {
    if (atelier_->note_demandee) return;
    atelier_->note_demandee = true;
    // An edit may tell of itself more than once: all of them are one step.
    QTimer::singleShot(0, this, &menu::note_etape);
}

void menu::note_etape() {
    if (!atelier_ || atelier_->etape) return; // an opening is noted when it is done
    atelier_->note_demandee = false;
    atelier_->historique.note(std::exchange(s_.libelle_etape, {}));
    montre_etapes();
    garde_copie();
}

/// The labels of the menu, the étude's mark in the title.
void menu::montre_etapes() {
    const auto montre = [this](const char* nom, const char* mot, const std::string& libelle) {
        auto* a = findChild<QAction*>(nom);
        a->setEnabled(!libelle.empty());
        QString texte = QString::fromStdString(libelle).replace('&', "&&");
        a->setText(libelle.empty() ? QString(mot) : QString(mot) + " : " + texte);
    };
    montre("mn_annuler", "&Annuler", atelier_->historique.libelle_annuler());
    montre("mn_refaire", "&Rétablir", atelier_->historique.libelle_refaire());
    montre_titre_etude();
}

void menu::montre_titre_etude() {
    if (!atelier_) return;
    // Ctrl+S saves what is current; one command has it at a time.
    const bool courante = etude_courante();
    for (const auto& [touches, projet, etude] :
         {std::tuple("Ctrl+S", "mn_fichier_enreg", "mn_etude_enreg"),
          std::tuple("Ctrl+Shift+S", "mn_fichier_enregsous", "mn_etude_enregsous")}) {
        findChild<QAction*>(courante ? projet : etude)->setShortcut({});
        findChild<QAction*>(courante ? etude : projet)->setShortcut(QKeySequence(touches));
    }
    if (s_.chemin_etude.empty()) return setWindowModified(false);
    const QString nom = nom_etude(s_.chemin_etude);
    if (!windowTitle().contains("[*]")) setWindowTitle(windowTitle() + " – étude " + nom + "[*]");
    setWindowModified(!meme_etude(s_, s_.gardee));
}

void menu::remonte(bool refaire) {
    // The box that is being edited takes its entry in first.
    if (QWidget* actif = QApplication::focusWidget(); actif && !refaire) {
        actif->clearFocus();
        actif->setFocus();
    }
    note_etape();
    auto& h = atelier_->historique;
    const QString libelle = QString::fromStdString(refaire ? h.libelle_refaire() : h.libelle_annuler());
    if (!(refaire ? h.refait() : h.annule())) return;
    recharge_tout();
    h.adopte();
    note_etape();
    signale((refaire ? "Rétabli : " : "Annulé : ") + libelle);
}

/// Every window shows the session anew; results are out of date.
void menu::recharge_tout() {
    s_.config_modifiee = 1;
    montre_titres();
    fra_simulation_->montre();
    for (auto& [nom, f] : fenetres_)
        if (f) f->form_load();
    configuration_a_change();
}

// -- What is not saved

QStringList menu::non_enregistre(bool avec_energie) const {
    if (!s_.chemin_etude.empty())
        return meme_etude(s_, s_.gardee) ? QStringList()
                                         : QStringList{"l'étude « " + nom_etude(s_.chemin_etude) + " »"};
    QStringList liste;
    const auto ajoute = [&](rubrique r, const char* nom) {
        if (modifiee(s_, r)) liste << nom;
    };
    if (avec_energie) ajoute(rubrique::energie, "le projet énergie");
    ajoute(rubrique::attitude, "le projet d'attitude");
    ajoute(rubrique::orbite, "l'orbite");
    ajoute(rubrique::pointage, "le pointage et la rotation");
    ajoute(rubrique::modele, "le choix du modèle");
    ajoute(rubrique::modes, "les modes de consommation");
    ajoute(rubrique::stations, "les stations");
    ajoute(rubrique::criteres, "les critères du bilan");
    if (s_.courbes != s_.gardee.courbes) liste << "les courbes";
    if (s_.notes != s_.gardee.notes) liste << "les notes";
    return liste;
}

/// True when nothing would be lost, when it has been saved, or when the user lets it go.
bool menu::laisse_etude(bool avec_energie) {
    note_etape();
    const QStringList reste = non_enregistre(avec_energie);
    if (reste.isEmpty()) return true;
    const int reponse =
        demande(this, "question_etude",
                "Modifié et pas enregistré : " + reste.join(", ") +
                    (s_.chemin_etude.empty() ? ".\nUne étude garde le tout en un fichier." : QString(".")));
    if (reponse == QMessageBox::Save) return enregistre_etude();
    return reponse == QMessageBox::Discard;
}

/// The command of Ctrl+S or Ctrl+Maj+S: the étude's in the place of a project's, where one is current.
QString menu::enregistrement(const QString& commande) const {
    if (!etude_courante()) return commande;
    return commande.endsWith("sous") ? "mn_etude_enregsous" : "mn_etude_enreg";
}

QString menu::rappel_etude() const {
    const bool orbite = modifiee(s_, rubrique::orbite), pointage = modifiee(s_, rubrique::pointage);
    if ((!orbite && !pointage) || !s_.chemin_etude.empty()) return {};
    const QString reste = orbite && pointage ? "ni l'orbite ni le pointage"
                          : orbite           ? "pas l'orbite"
                                             : "pas le pointage";
    return ". Ce fichier ne contient " + reste + " : Enregistrer l'étude garde tout";
}

// -- The étude's file

void menu::nouvelle_etude() {
    if (!laisse_etude(true)) return;
    const etape_etude etape(*this, "Nouvelle étude");
    session_init(s_);
    attitude_init(s_.attitude, s_.orbit.pointage);
    s_.gardee = s_;
    recharge_tout();
    etabli_->montre("resume_projet");
}

/// The free text that goes with the étude.
void menu::mn_etude_notes() {
    QDialog boite(this);
    boite.setObjectName("notes_etude");
    boite.setWindowTitle("Notes de l'étude");
    auto* texte = new zone_texte(QString::fromStdString(s_.notes));
    texte->setObjectName("txt_notes");
    texte->setTabChangesFocus(true);
    texte->setAccessibleName("Notes de l'étude");
    texte->setToolTip("Texte libre, enregistré avec l'étude");
    auto* boutons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(boutons, &QDialogButtonBox::accepted, &boite, &QDialog::accept);
    connect(boutons, &QDialogButtonBox::rejected, &boite, &QDialog::reject);
    auto* pile = new QVBoxLayout(&boite);
    pile->addWidget(texte, 1);
    pile->addWidget(boutons);
    boite.resize(style::espace(130), style::espace(80));
    if (boite.exec() != QDialog::Accepted) return;
    s_.notes = texte->toPlainText().toStdString();
    note_etape();
}

void menu::mn_etude_ouvrir() {
    const QString dossier = QString::fromStdString(s_.dossier_depart);
    const QString chemin =
        choisit_fichier(this, {"Ouvrir une étude", filtre_etude, dossier, {}, "kestrel", true});
    QDir::setCurrent(dossier);
    if (!chemin.isEmpty()) ouvre_etude(chemin);
}

void menu::ouvre_etude(const QString& chemin, const QString& libelle) {
    etude e;
    std::string raison;
    if (!charge_etude(chemin.toStdString(), e, raison)) {
        message(this, gravite::arret, QString::fromStdString(raison));
        return;
    }
    if (!laisse_etude(true)) return;
    const QFileInfo f(chemin);
    const etape_etude etape(*this, libelle.isEmpty() ? "Ouverture de « " + f.fileName() + " »" : libelle);
    const bool exemple = est_exemple(chemin);
    prend_etude(e, exemple ? QString() : chemin);
    if (exemple)
        s_.modele_etude = s_.modele_energie = s_.modele_attitude = f.completeBaseName().toStdString();
    s_.gardee = s_;
    recharge_tout();
    if (!exemple) note_recent(chemin);
}

/// The session becomes the étude, whose file is `chemin` (empty for none).
void menu::prend_etude(const etude& e, const QString& chemin) {
    static_cast<etude&>(s_) = e;
    attitude_init(s_.attitude, s_.orbit.pointage);
    s_.chemin_energie.clear();
    s_.chemin_attitude.clear();
    nomme_etude(chemin);
}

/// Both halves bear the étude's name as long as they have no file of their own.
void menu::nomme_etude(const QString& chemin) {
    s_.chemin_etude = chemin.toStdString();
    s_.modele_etude.clear();
    const std::string nom = nom_etude(s_.chemin_etude).toStdString();
    if (s_.chemin_energie.empty()) s_.modele_energie = nom;
    if (s_.chemin_attitude.empty()) s_.modele_attitude = nom;
}

bool menu::enregistre_etude() {
    return s_.chemin_etude.empty() ? enregistre_etude_sous()
                                   : ecrit_etude(QString::fromStdString(s_.chemin_etude));
}

bool menu::enregistre_etude_sous() {
    const QString dossier = QString::fromStdString(s_.dossier_depart);
    const QString nom =
        s_.chemin_etude.empty() ? QString::fromStdString(s_.modele_energie) : nom_etude(s_.chemin_etude);
    const QString chemin =
        choisit_fichier(this, {"Enregistrer l'étude", filtre_etude, dossier, nom, "kestrel", false});
    QDir::setCurrent(dossier);
    return !chemin.isEmpty() && ecrit_etude(chemin);
}

bool menu::ecrit_etude(const QString& chemin) {
    note_etape();
    std::string raison;
    if (!sauve_etude(chemin.toStdString(), s_, raison)) {
        message(this, gravite::arret,
                "L'étude n'a pas pu être enregistrée.\n" + QString::fromStdString(raison));
        return false;
    }
    nomme_etude(chemin);
    s_.gardee = s_;
    atelier_->historique.note(); // the moments since the opening belong to this file now
    montre_titres();
    note_etape();
    note_recent(chemin);
    signale("Étude enregistrée : " + QDir::toNativeSeparators(chemin));
    return true;
}

// -- After a crash

/// A copy of what is not saved, soon after the last edit; none once all is.
void menu::garde_copie() {
    if (non_enregistre(true).isEmpty()) {
        oublie_copie();
    } else if (!atelier_->copie.isActive()) {
        atelier_->copie.start();
    }
}

void menu::oublie_copie() {
    atelier_->copie.stop();
    atelier_->fil.waitForDone();
    atelier_->recuperation.efface();
}

void menu::propose_recuperation() {
    for (const auto& t : etude_recuperation::trouve(dossier_etat().toStdString())) {
        const QString nom = t.chemin_etude.empty() ? QString("une étude sans nom")
                                                   : "l'étude « " + nom_etude(t.chemin_etude) + " »";
        QMessageBox boite(
            QMessageBox::Question, "Récupération",
            QString("Le programme s'est arrêté avant d'enregistrer %1.\nUne copie %2 est là : la "
                    "récupérer ?")
                .arg(nom, il_y_a(t.age)),
            QMessageBox::Yes | QMessageBox::Discard | QMessageBox::Cancel, this);
        boite.setObjectName("question_recuperation");
        boite.button(QMessageBox::Yes)->setText("&Récupérer");
        boite.button(QMessageBox::Discard)->setText("&Jeter la copie");
        boite.button(QMessageBox::Cancel)->setText("&Plus tard");
        boite.setDefaultButton(QMessageBox::Yes);
        const int reponse = boite.exec();
        if (reponse == QMessageBox::Discard) etude_recuperation::jette(t.copie);
        if (reponse != QMessageBox::Yes || !laisse_etude(true)) continue;
        {
            const etape_etude etape(*this, "Récupération de " + nom);
            prend_etude(t.e, QString::fromStdString(t.chemin_etude));
            // Only what its own file holds is saved.
            std::string raison;
            s_.gardee = etude_par_defaut();
            if (!t.chemin_etude.empty()) charge_etude(t.chemin_etude, s_.gardee, raison);
            recharge_tout();
        }
        // The copy of this program takes the place of the one that was found.
        atelier_->copie.stop();
        atelier_->fil.waitForDone();
        if (atelier_->recuperation.ecrit(s_, s_.chemin_etude)) etude_recuperation::jette(t.copie);
        return;
    }
}
