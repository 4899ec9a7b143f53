/// The run of the attitude simulation, in a thread of its own.
#include <QCheckBox>
#include <QDir>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTimer>
#include <QWindow>

#include <cmath>

#include "attitude/att_pas.h"
#include "attitude/windows/att_sim.h"
#include "attitude/windows/boite_att.h"
#include "shell/lancement.h"
#include "shell/utilitaires.h"
#include "widgets/course.h"
#include "widgets/verifications.h"

namespace {

constexpr int rafraichissement_ms = 80;   // of the progress bar
constexpr double pas_sans_demander = 3e6; // steps: beyond, the user is asked first
constexpr double octets_par_pas = 450;    // of a record in the results file

QString duree_pas(int pas) { return pas % 60 ? QString("%1 s").arg(pas) : QString("%1 min").arg(pas / 60); }

/// Runs on what `c` holds; in the thread of its own it touches nothing of the window.
void deroule(course_att& c, const simulation_period& periode, double cadence, const std::string& dossier,
             const std::stop_token& abandon, suivi_att& suivi) {
    atmosphere air(dossier);
    const attitude_record depart = c.attitude;
    const orbit_state orbite = c.orbite;
    const double tour_par_pas2 = carre(360.0 / periode.pas_sim); // [(deg/s)²] a full turn in a step
    const auto voulu = [&] { return !suivi.arret && !abandon.stop_requested(); };
    att_run_rappels rappels;
    rappels.ecrit = [&](const enregistrement_att& e) {
        c.sortie->ecrit(e);
        if (c.date_explosion == 0 && carre(e[1]) + carre(e[2]) + carre(e[3]) > tour_par_pas2)
            c.date_explosion = e[0];
    };
    rappels.progres = [&](float part) {
        suivi.part = part;
        return voulu();
    };
    c.pas = periode.pas_sim;
    c.bilan = att_run(c.attitude, c.orbite, periode, cadence, air, rappels);
    c.faute_donnees = air.faute();
    const bool faute = c.bilan.fin == att_run_fin::faute;
    if (!faute) c.date_explosion = 0;
    if ((faute || c.bilan.divergence) && c.faute_donnees.empty() && voulu())
        c.pas_conseille = pas_conseille(depart, orbite, periode, air);
}

} // namespace

/// It waits, half a second at most, for the window to be on the screen.
void att_sim::lance_affichee(int essais) {
    if (!isVisible()) return;
    if (essais > 0 && windowHandle() && !windowHandle()->isExposed())
        QTimer::singleShot(10, this, [this, essais] { lance_affichee(essais - 1); });
    else
        QTimer::singleShot(20, this, [this] { // the charts are drawn empty meanwhile
            if (isVisible()) att_run();
        });
}

void att_sim::att_run() {
    for (boite_att* b : vitesses_) b->valide();
    montre_bandeau({});
    if (!accepte_periode()) return;
    auto tenue = std::make_unique<course>(s_, s_.periode, false);
    if (!tenue->libre()) return montre_bandeau(message_calcul_en_cours);
    const auto sortie = std::make_shared<ecrivain_resultats>();
    if (!ouvre_fichier(*sortie)) return;
    tenue_ = std::move(tenue);
    roues_actives_ = ::roues_actives(s_.attitude);
    version_ = s_.version_config;
    vitesses_changees_ = false;
    suivi_ = std::make_shared<suivi_att>();
    montre_course(true);
    tache_.lance([c = course_att{s_.attitude, s_.orbit, {}, {}}, periode = s_.periode,
                  cadence = pas_ecriture_, dossier = s_.dossier_depart, suivi = suivi_,
                  sortie](const std::stop_token& abandon) mutable {
        c.sortie = sortie;
        deroule(c, periode, cadence, dossier, abandon, *suivi);
        return std::move(c);
    });
}

void att_sim::calcul_fini(course_att c) {
    tenue_.reset();
    montre_course(false);
    const bool entier = c.sortie->ferme();
    if (s_.version_config == version_) { // the records hold the state of the last run
        s_.attitude = c.attitude;
        s_.orbit = c.orbite;
        resultats_calcules();
    }
    date_explosion_ = c.date_explosion;
    bilan_ =
        entier ? QString()
               : "Le fichier de résultats n'a pas pu être écrit en entier : le disque est peut-être plein. ";
    bilan_ += compte_rendu(c);
    montre_bandeau(bilan_);
    prepare_pages(*c.sortie);
}

/// A step below 1 s is refused, and a run under another one; a run of many minutes wants a word from the
/// user.
bool att_sim::accepte_periode() {
    if (!pas_valide(s_)) {
        montre_bandeau(message_pas);
        return false;
    }
    const double nombre = (s_.periode.j_fin - s_.periode.j_debut) * secondes_par_jour / s_.periode.pas_sim;
    if (nombre <= pas_sans_demander ||
        message(
            this, gravite::question,
            QString("Le calcul compte %1 millions de pas et écrit environ %2 Mo de résultats. Le lancer ?")
                .arg(std::lround(nombre / 1e6))
                .arg(std::lround(nombre / pas_ecriture_ * octets_par_pas / 1e6))))
        return true;
    montre_bandeau("Le calcul n'a pas été lancé.");
    return false;
}

bool att_sim::ouvre_fichier(ecrivain_resultats& sortie) {
    const std::string chemin = place_.prend(s_.dossier_depart);
    const double pas = s_.periode.pas_sim / secondes_par_jour;
    std::string raison;
    if (!sortie.ouvre(chemin, s_.periode.j_debut, s_.periode.j_fin, pas * secondes_par_jour, raison)) {
        montre_bandeau(
            QString("Impossible d'écrire le fichier de résultats %1 : %2. Le calcul n'a pas été lancé.")
                .arg(QDir::toNativeSeparators(QString::fromStdString(chemin)),
                     QString::fromStdString(raison)));
        return false;
    }
    fichier_temp_ = QString::fromStdString(chemin);
    fichier_resultats_.clear();
    debut_ = s_.periode.j_debut;
    fin_ = s_.periode.j_fin;
    pas_ = pas;
    return true;
}

void att_sim::montre_course(bool en_cours) {
    const bool arretait = cmd_arrete_->hasFocus();
    en_cours ? rythme_->start(rafraichissement_ms) : rythme_->stop();
    temp_calcul_->setValue(0);
    temp_calcul_->setVisible(en_cours);
    cmd_arrete_->setVisible(en_cours);
    cmd_relance_->setEnabled(!en_cours);
    for (QWidget* w :
         std::initializer_list<QWidget*>{cmd_save_, cmd_image_, scr_diagr_, txt_page_, chk_periode_})
        w->setEnabled(!en_cours && pages_.pages() > 0);
    for (QWidget* w : {chk_taux_, chk_roues_}) w->setEnabled(!en_cours); // the file is being written
    if (arretait) cmd_relance_->setFocus();
}

/// What a run has to say, empty when all went well: plain words first, and the step to try.
QString att_sim::compte_rendu(const course_att& c) const {
    const att_run_bilan& bilan = c.bilan;
    if (bilan.fin == att_run_fin::arretee)
        return "Calcul arrêté le " + QString::fromStdString(date_vers_texte(jour_vers_date(bilan.date))) +
               " : les courbes s'y arrêtent. « Relancer » le refait en entier.";
    const bool faute = bilan.fin == att_run_fin::faute;
    if (!faute && !bilan.divergence) return {};
    if (!c.faute_donnees.empty()) return QString::fromStdString(texte_faute(bilan));
    const QString texte = QString::fromStdString(faute ? texte_faute(bilan) : message_divergence);
    if (c.pas_conseille == 0)
        return texte + " Aucun pas plus petit ne suffit : vérifiez les masses, les inerties et les vitesses "
                       "initiales.";
    const QString cause =
        QString("Le pas de %1 est trop grand pour ce satellite : il tournait de plus de 0,5 rad par pas. ")
            .arg(duree_pas(c.pas));
    return (faute && bilan.divergence ? cause : QString()) + texte +
           QString(" Essayez un pas de %1 (« Contrôle simulation »), puis « Relancer ».")
               .arg(duree_pas(c.pas_conseille));
}
