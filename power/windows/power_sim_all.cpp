#include "power/windows/power_sim_all.h"

#include <QComboBox>
#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QShowEvent>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

#include "analysis/reglages_etude.h"
#include "physics/milieu.h"
#include "power/diagnostic.h"
#include "power/windows/icone_batterie.h"
#include "power/windows/synoptique.h"
#include "power/windows/tableau_bord.h"
#include "power/windows/vue3d.h"
#include "shell/lancement.h"
#include "shell/utilitaires.h"
#include "widgets/course.h"
#include "widgets/style.h"
#include "widgets/verifications.h"

namespace {
constexpr int intervalle_sim = 50, intervalle_icone = 500; // [ms]
} // namespace

power_sim_all::power_sim_all(session& s, QWidget* parent)
    : fenetre(s, QStringLiteral("power_sim_all"), QStringLiteral("Simulation du sous-système complet"),
              parent),
      s_(s), Timer_sim_pwr_(new QTimer(this)), timer_icon_bat_(new QTimer(this)), orbite_vue_(s.orbit),
      calculs_vus_(s.calculs) {
    vue_ = new vue3d(orbite_vue_, s_.power, s_.periode);
    synoptique_ = new synoptique;
    tableau_ = new tableau_bord;

    auto* haut = new QHBoxLayout;
    haut->setSpacing(style::espace(2));
    haut->addWidget(vue_, 5);
    haut->addWidget(synoptique_, 4);
    auto* tout = new QVBoxLayout(contenu());
    tout->setContentsMargins(style::espace(2), style::espace(2), style::espace(2), style::espace(2));
    tout->setSpacing(style::espace(2));
    tout->addLayout(haut, 2);
    tout->addWidget(tableau_, 1);
    tout->addWidget(barre_commandes());
    construit_raccourcis();

    s_.sim_state = sim_arretee;
    tableau_->reinitialise(s_);
    synoptique_->reinitialise(s_.power);
    met_a_jour_commandes();

    Timer_sim_pwr_->setObjectName(QStringLiteral("Timer_sim_pwr"));
    Timer_sim_pwr_->setInterval(intervalle_sim);
    connect(Timer_sim_pwr_, &QTimer::timeout, this, &power_sim_all::tick_simulation);
    timer_icon_bat_->setObjectName(QStringLiteral("timer_icon_bat"));
    timer_icon_bat_->setInterval(intervalle_icone);
    connect(timer_icon_bat_, &QTimer::timeout, this, &power_sim_all::tick_icone);
    resize(style::espace(320), style::espace(164));
}

power_sim_all::~power_sim_all() { s_.sim_state = sim_arretee; }

/// Keys of the whole window, wherever the focus stands.
void power_sim_all::construit_raccourcis() {
    const auto touche = [this](Qt::Key t, auto* qui, auto fait) {
        auto* r = new QShortcut(QKeySequence(t), this);
        connect(r, &QShortcut::activated, qui, fait);
        return r;
    };
    touche(Qt::Key_F5, cmd_lance_, &QPushButton::click);
    touche(Qt::Key_T, vue_, &vue3d::centre_terre);
    touche(Qt::Key_S, vue_, &vue3d::centre_satellite);
    touche(Qt::Key_D, vue_, &vue3d::vue_du_soleil);
    touche(Qt::Key_Z, vue_, &vue3d::vue_du_zenith);
    touche(Qt::Key_L, vue_, &vue3d::vue_de_la_trace);
    touche_pause_ = touche(Qt::Key_Space, this, [this] {
        // A button that the tabulator has been led to keeps the key.
        auto* b = qobject_cast<QAbstractButton*>(focusWidget());
        if (b && b != cmd_lance_)
            b->click();
        else
            pause();
    });
}

QWidget* power_sim_all::barre_commandes() {
    auto* barre = new QWidget;
    auto* l = new QHBoxLayout(barre);
    l->setContentsMargins(0, 0, 0, 0);
    l->setSpacing(style::espace(2));
    const auto bouton = [&](const char* nom, const char* icone, const QString& texte, const QString& bulle,
                            void (power_sim_all::*action)()) {
        auto* b = new QPushButton(style::icone(QLatin1String(icone)), texte);
        b->setObjectName(QLatin1String(nom));
        b->setToolTip(bulle);
        b->setIconSize({style::espace(7), style::espace(7)});
        b->setMinimumSize(style::espace(30), style::espace(10));
        b->setAutoDefault(false);
        connect(b, &QPushButton::clicked, this, action);
        l->addWidget(b);
        return b;
    };
    cmd_lance_ =
        bouton("cmd_lance", "lancer", tr("&Lancer"), tr("Lancement simulation (F5)"), &power_sim_all::lance);
    cmd_pause_ = bouton("cmd_pause", "pause", tr("&Pause"), tr("Pause simulation"), &power_sim_all::pause);
    cmd_stop_ = bouton("cmd_stop", "arreter", tr("&Arrêter"),
                       tr("Arrêt et initialisation simulation à la date de départ"), &power_sim_all::arrete);

    lab_etat_sim_ = new QLabel;
    lab_etat_sim_->setObjectName(QStringLiteral("lab_etat_sim"));
    lab_etat_sim_->setWordWrap(true); // folds on a small screen, as the legend of the strip does
    l->addSpacing(style::espace(2));
    l->addWidget(lab_etat_sim_, 1);

    cmb_vitesse_ = new QComboBox;
    cmb_vitesse_->setObjectName(QStringLiteral("cmb_vitesse"));
    for (const int n : {1, 2, 5, 10, 20})
        cmb_vitesse_->addItem(n == 1 ? tr("1 pas par seconde") : tr("%1 pas par seconde").arg(n), n);
    cmb_vitesse_->setToolTip(tr("Nombre de pas de simulation calculés par seconde (1 en temps réel)"));
    auto* lab_vitesse = new QLabel(tr("&Vitesse"));
    lab_vitesse->setBuddy(cmb_vitesse_);
    l->addWidget(lab_vitesse);
    l->addWidget(cmb_vitesse_);

    auto* cmd_quit = new QPushButton(QStringLiteral("&Quitter"));
    cmd_quit->setObjectName(QStringLiteral("cmd_quit"));
    cmd_quit->setToolTip(tr("Arrête la simulation et ferme la fenêtre"));
    style::bouton_pied(cmd_quit);
    connect(cmd_quit, &QPushButton::clicked, this, &QWidget::close); // closing ends the run
    l->addSpacing(style::espace(2));
    l->addWidget(cmd_quit);
    return barre;
}

// --- Run state -------------------------------------------------------------------------------------------

void power_sim_all::lance() {
    if (!exige(pas_valide(s_), message_pas) || !exige(cellules_posees(s_), message_date_cellules)) return;
    if (!exige(tension_regulee_posee(s_), message_tension_regulee, "power_conf", page_gestion)) return;
    if (!exige(!s_.calcul_en_cours, message_calcul_en_cours)) return;
    surveille_calculs();
    surveille_configuration(); // a change made since the last tick belongs to this run
    if (s_.sim_state == sim_arretee && !remise_faite_)
        remise_prevue_ = true; // the tick of the stop is to come
    if (!raison_arret_.isEmpty()) montre_bandeau({});
    raison_arret_.clear();
    s_.sim_state = sim_lancee;
    met_a_jour_commandes();
}

void power_sim_all::pause() {
    s_.sim_state = sim_en_pause;
    met_a_jour_commandes();
}

void power_sim_all::arrete() {
    s_.sim_state = sim_arretee;
    remise_faite_ = false;
    met_a_jour_commandes();
}

void power_sim_all::form_load() {
    s_.sim_state = sim_arretee;
    remise_prevue_ = true;
    raison_arret_.clear();
    met_a_jour_commandes();
}

void power_sim_all::met_a_jour_commandes() {
    const bool arretee = s_.sim_state == sim_arretee, lancee = s_.sim_state == sim_lancee;
    // After a fault the state stays as it is: a stop brings it back to the start.
    const std::pair<QPushButton*, bool> actifs[] = {
        {cmd_lance_, !lancee}, {cmd_pause_, lancee}, {cmd_stop_, !arretee || etat_etranger_}};
    // A button that goes out hands the focus to the one that takes its turn, not to whatever comes next.
    for (const auto& [b, actif] : actifs)
        if (actif) b->setEnabled(true);
    for (const auto& [b, actif] : actifs)
        if (!actif) {
            if (b->isEnabled() && focusWidget() == b) (lancee ? cmd_pause_ : cmd_lance_)->setFocus();
            b->setEnabled(false);
        }
    touche_pause_->setEnabled(lancee);
    cmb_vitesse_->setEnabled(!s_.temps_reel);
    montre_etat();
}

void power_sim_all::montre_etat() {
    const QString etat = s_.sim_state == sim_arretee  ? tr("Simulation arrêtée")
                         : s_.sim_state == sim_lancee ? tr("Simulation en cours")
                                                      : tr("Simulation en pause");
    const QString alimentation = mot_alimentation(s_.power);
    const QString texte = alimentation.isEmpty() ? etat
                                                 : QStringLiteral("%1 : <b style='color:%2'>%3</b>")
                                                       .arg(etat, style::couleur(style::role::alerte).name(),
                                                            "charge utile " + alimentation);
    if (lab_etat_sim_->text() != texte) lab_etat_sim_->setText(texte);
}

void power_sim_all::showEvent(QShowEvent* e) {
    fenetre::showEvent(e);
    if (e->spontaneous()) return;
    form_load(); // opening the window stops the run; another window may have used the records meanwhile
    compteur_ = 0;
    Timer_sim_pwr_->start();
    timer_icon_bat_->start();
}

void power_sim_all::closeEvent(QCloseEvent* e) {
    s_.sim_state = sim_arretee; // the reset follows at the next tick, which then puts the timers to rest
    fenetre::closeEvent(e);
}

/// What follows a change of the settings: a stopped simulation shows the new start at once; a run goes on
/// with the new settings, and the bar tells how to begin again.
void power_sim_all::surveille_configuration() {
    if (s_.sim_state != sim_arretee && !(remise_prevue_ || etat_etranger_) &&
        (montage_de(s_.power) != montage_ || nombre_panneaux(s_.power) != panneaux_)) {
        remise_prevue_ = true; // the temperatures in hand are those of other surfaces
        arrete_pour(tr("Le corps ou le montage des panneaux a changé : la simulation est arrêtée, elle "
                       "repartira de la date de départ."));
    }
    if (s_.config_modifiee == 0) return;
    if (s_.sim_state == sim_arretee) {
        remise_prevue_ = true;
        s_.config_modifiee = 0;
    } else if (!config_perimee_) {
        config_perimee_ = true;
        montre_bandeau(tr("La configuration a changé : arrêtez la simulation puis relancez-la pour "
                          "repartir de la date de départ avec les nouveaux réglages."));
    }
}

/// A study or a result table has worked on the same record: a paused run cannot continue from there.
void power_sim_all::surveille_calculs() {
    if (s_.calculs == calculs_vus_) return;
    calculs_vus_ = s_.calculs;
    etat_etranger_ = remise_faite_ = true;
    if (s_.sim_state == sim_arretee) return;
    arrete_pour(tr("Un autre calcul a pris l'état du satellite : la simulation est arrêtée, elle "
                   "repartira de la date de départ."));
}

/// Stops a run that cannot go on; the reason stays in the bar until the next one.
void power_sim_all::arrete_pour(const QString& raison) {
    s_.sim_state = sim_arretee;
    raison_arret_ = raison;
    montre_bandeau(raison);
}

// --- Tick ------------------------------------------------------------------------------------------------

double power_sim_all::ticks_par_pas() const {
    const int pas_par_seconde = s_.temps_reel ? 1 : std::max(1, cmb_vitesse_->currentData().toInt());
    return 1000.0 / (std::max(1, Timer_sim_pwr_->interval()) * pas_par_seconde);
}

double power_sim_all::date_systeme() {
    const QDateTime t = QDateTime::currentDateTimeUtc();
    date_record d;
    d.an = static_cast<int16_t>(t.date().year());
    d.mois = static_cast<int16_t>(t.date().month());
    d.jour = static_cast<int16_t>(t.date().day());
    d.heure = static_cast<int16_t>(t.time().hour());
    d.minute = static_cast<int16_t>(t.time().minute());
    d.seconde = static_cast<int16_t>(t.time().second());
    d.ms = t.time().msec();
    return date_vers_jour(d);
}

/// The pending events have run when a tick comes: the event loop serves them between two ticks. Nothing is
/// served from within a tick, nor a message shown: a dialog that stands there would hold the timer.
void power_sim_all::tick_simulation() {
    surveille_calculs();
    surveille_configuration();
    if (!s_.calcul_en_cours) avance_modeles(); // else the records belong to another window's run
    met_a_jour_commandes();
    mesure_allure();
    if (!isVisible() && s_.sim_state == sim_arretee) {
        Timer_sim_pwr_->stop();
        timer_icon_bat_->stop();
    }
}

/// The pace that the main window shows: the chosen one, or the true one where the machine does not follow.
void power_sim_all::mesure_allure() {
    const double voulue = 1000.0 / (ticks_par_pas() * std::max(1, Timer_sim_pwr_->interval()));
    double allure = voulue;
    if (s_.sim_state == sim_lancee && depuis_mesure_.isValid() && voulue == allure_voulue_) {
        if (pas_mesures_ < 10 || depuis_mesure_.elapsed() < 2000) return;
        const double vraie = 1000.0 * pas_mesures_ / static_cast<double>(depuis_mesure_.elapsed());
        if (vraie < 0.9 * voulue) allure = vraie;
    }
    allure_voulue_ = voulue;
    depuis_mesure_.start();
    pas_mesures_ = 0;
    // Small changes of a measure are not news.
    if (allure != voulue && std::fabs(allure - s_.pas_par_seconde) < 0.1 * allure) return;
    if (allure == s_.pas_par_seconde) return;
    s_.pas_par_seconde = allure;
    emit allure_changee();
}

void power_sim_all::avance_modeles() {
    if (s_.sim_state == sim_lancee && compteur_ == 0) {
        if (!(remise_prevue_ || etat_etranger_) || remise_a_zero(true)) un_pas();
    } else if (s_.sim_state == sim_arretee) {
        mode_arrete();
    }

    if (s_.sim_state == sim_lancee) {
        const double dt = Timer_sim_pwr_->interval() / 1000.0 / secondes_par_jour;
        if (!calcul_->place(s_.periode.j_courant + dt)) termine_sur_faute(tr("géométrie de la vue"), false);
        synoptique_->avance(0.12);
    }
    // At rest nothing moves: the view is drawn once a second, for what other windows may have changed.
    if (s_.sim_state == sim_lancee || compteur_ == 0) montre_vue();
    if (!(ticks_par_pas() > ++compteur_)) compteur_ = 0;
}

void power_sim_all::montre_vue() {
    orbite_vue_ = s_.orbit;
    elements_de_la_date(s_.periode.j_courant, s_.modele, orbite_vue_.orbite);
    vue_->redessine();
}

void power_sim_all::tick_icone() {
    tableau_->montre_mot(etat_bat_);
    synoptique_->avance_batterie();
}

/// One reset for a stop (in real time too, where the date never equals the start).
void power_sim_all::mode_arrete() {
    if (remise_prevue_)
        remise_a_zero(false);
    else if (!remise_faite_ && (etat_etranger_ || s_.periode.j_courant != s_.periode.j_debut))
        remise_a_zero(isVisible());
}

bool power_sim_all::remise_a_zero(bool demandee) {
    remise_faite_ = true;
    remise_prevue_ = etat_etranger_ = config_perimee_ = false;
    s_.config_modifiee = 0;
    montage_ = montage_de(s_.power);
    panneaux_ = nombre_panneaux(s_.power);
    montre_bandeau(raison_arret_);

    tableau_->zero_compteurs();
    calcul_.emplace(modeles_de(s_), std::vector<voie>(),
                    reglages_de(s_, {.besoins = besoin::energie, .fin = regle_fin::sans}));
    bool sain = calcul_->demarre();
    if (s_.temps_reel) s_.periode.j_courant = date_systeme();
    if (sain) sain = pas_valide(s_) ? calcul_->pas() : calcul_->place(s_.periode.j_courant);
    if (!sain) {
        termine_sur_faute(tr("initialisation"), !demandee);
        return false;
    }
    tableau_->reinitialise(s_);
    synoptique_->reinitialise(s_.power);
    affiche();
    montre_vue();
    if (demandee) signale_courbe();
    emit resultats_changes();
    return true;
}

void power_sim_all::un_pas() {
    if (s_.temps_reel)
        s_.periode.j_courant = date_systeme();
    else
        calcul_->avance();
    remise_faite_ = false;
    if (!config_perimee_) resultats_calcules();
    ++pas_mesures_;

    if (!calcul_->pas()) {
        termine_sur_faute(tr("calcul d'un pas"), false);
        return;
    }
    affiche();
    if (calcul_->alerte_a_signaler()) montre_bandeau(QString::fromStdString(calcul_->alerte()));
    signale_courbe();
}

/// Once in a run, outside of the tick.
void power_sim_all::signale_courbe() {
    if (!calcul_->charge_a_signaler()) return;
    const auto dit = [this] { renvoie(message_charge_incompatible, "power_conf", page_batteries); };
    QMetaObject::invokeMethod(this, dit, Qt::QueuedConnection);
}

void power_sim_all::affiche() {
    etat_bat_ = etat_batterie(s_.power.bat_p, s_.power.bat_soc);
    synoptique_->affiche(s_.power);
    tableau_->affiche(s_);
}

/// The state stays as the fault left it; the next run begins with a reset.
void power_sim_all::termine_sur_faute(const QString& routine, bool en_bandeau) {
    const QString raison = QStringLiteral("%1 (%2)").arg(QString::fromStdString(calcul_->raison()), routine);
    surveillance().efface();
    const QString cause = QString::fromStdString(cause_de_faute(s_.power, s_.orbit, s_.periode));
    s_.sim_state = sim_arretee;
    etat_etranger_ = remise_faite_ = true;
    met_a_jour_commandes();
    if (en_bandeau) {
        montre_bandeau(tr("Les réglages ne permettent pas de simuler : %1. %2").arg(raison, cause));
        return;
    }
    const auto dit = [this, raison, cause, date = s_.periode.j_courant] {
        rapporte_faute(tr("la simulation du sous-système complet"), date, raison, cause);
    };
    QMetaObject::invokeMethod(this, dit, Qt::QueuedConnection); // outside of the tick
}
