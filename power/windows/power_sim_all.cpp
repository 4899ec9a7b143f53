#include "power/windows/power_sim_all.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QShowEvent>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

#include "power/power_step.h"
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
      s_(s), Timer_sim_pwr_(new QTimer(this)), timer_icon_bat_(new QTimer(this)), calculs_vus_(s.calculs) {
    vue_ = new vue3d(s_);
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
        bouton("cmd_lance", "lancer", tr("&Lancer"), tr("Lancement simulation"), &power_sim_all::lance);
    cmd_pause_ = bouton("cmd_pause", "pause", tr("&Pause"), tr("Pause simulation"), &power_sim_all::pause);
    cmd_stop_ = bouton("cmd_stop", "arreter", tr("&Arrêter"),
                       tr("Arrêt et initialisation simulation à la date de départ"), &power_sim_all::arrete);

    lab_etat_sim_ = new QLabel;
    lab_etat_sim_->setObjectName(QStringLiteral("lab_etat_sim"));
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

    auto* cmd_quit = new QPushButton(QStringLiteral("Quitter"));
    cmd_quit->setObjectName(QStringLiteral("cmd_quit"));
    cmd_quit->setToolTip(tr("Arrête la simulation et ferme la fenêtre"));
    cmd_quit->setMinimumSize(style::espace(25), style::espace(10));
    cmd_quit->setAutoDefault(false);
    connect(cmd_quit, &QPushButton::clicked, this, &QWidget::close); // closing ends the run
    l->addSpacing(style::espace(2));
    l->addWidget(cmd_quit);
    return barre;
}

// --- Run state -------------------------------------------------------------------------------------------

void power_sim_all::lance() {
    if (!pas_valide(s_)) {
        message(this, gravite::avertissement, QString::fromUtf8(message_pas));
        return;
    }
    if (!exige(cellules_posees(s_), message_date_cellules)) return;
    if (s_.calcul_en_cours) {
        message(this, gravite::avertissement, QString::fromUtf8(message_calcul_en_cours));
        return;
    }
    surveille_calculs();
    surveille_configuration(); // a change made since the last tick belongs to this run
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
    met_a_jour_commandes();
}

void power_sim_all::met_a_jour_commandes() {
    const bool arretee = s_.sim_state == sim_arretee, lancee = s_.sim_state == sim_lancee;
    cmd_lance_->setEnabled(!lancee);
    cmd_pause_->setEnabled(lancee);
    // After a fault the state stays as it is: a stop brings it back to the start.
    cmd_stop_->setEnabled(!arretee || etat_etranger_);
    cmb_vitesse_->setEnabled(!s_.temps_reel);
    const QString etat = arretee  ? tr("Simulation arrêtée")
                         : lancee ? tr("Simulation en cours")
                                  : tr("Simulation en pause");
    if (lab_etat_sim_->text() != etat) lab_etat_sim_->setText(etat);
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
    s_.sim_state = sim_arretee;
    montre_bandeau(tr("Un autre calcul a pris l'état du satellite : la simulation est arrêtée, elle "
                      "repartira de la date de départ."));
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

void power_sim_all::tick_simulation() {
    if (en_tick_) return;
    en_tick_ = true;
    const QPointer<power_sim_all> vivante(this);
    QCoreApplication::processEvents();
    if (!vivante) return;

    surveille_calculs();
    surveille_configuration();
    if (!s_.calcul_en_cours) avance_modeles(); // else the records belong to another window's run
    met_a_jour_commandes();
    if (!isVisible() && s_.sim_state == sim_arretee) {
        Timer_sim_pwr_->stop();
        timer_icon_bat_->stop();
    }
    en_tick_ = false;
}

void power_sim_all::avance_modeles() {
    if (s_.sim_state == sim_lancee && compteur_ == 0) {
        if (!(remise_prevue_ || etat_etranger_) || remise_a_zero(true)) un_pas();
    } else if (s_.sim_state == sim_arretee) {
        mode_arrete();
    }

    if (s_.sim_state == sim_lancee) {
        surveillance garde;
        const double dt = Timer_sim_pwr_->interval() / 1000.0 / secondes_par_jour;
        environment_update(s_.periode.j_courant + dt, s_.power, s_.orbit, s_.periode);
        if (garde.faute()) termine_sur_faute(tr("géométrie de la vue"), false);
        synoptique_->avance(0.12);
    }
    // At rest nothing moves: the view is drawn once a second, for what other windows may have changed.
    if (s_.sim_state == sim_lancee || compteur_ == 0) vue_->redessine();
    if (!(ticks_par_pas() > ++compteur_)) compteur_ = 0;
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
    remise_prevue_ = etat_etranger_ = config_perimee_ = courbe_signalee_ = false;
    s_.config_modifiee = 0;
    montre_bandeau({});

    surveillance garde;
    power_state_init(s_.power);
    s_.power.t_discharge = 0;
    s_.power.t_charge = 0;
    tableau_->zero_compteurs();
    s_.periode.j_courant = s_.temps_reel ? date_systeme() : s_.periode.j_debut;
    if (pas_valide(s_))
        power_step(s_.power, s_.orbit, s_.periode);
    else
        environment_update(s_.periode.j_courant, s_.power, s_.orbit, s_.periode);
    if (garde.faute()) {
        termine_sur_faute(tr("initialisation"), !demandee);
        return false;
    }
    tableau_->reinitialise(s_);
    synoptique_->reinitialise(s_.power);
    affiche();
    vue_->redessine();
    if (demandee)
        if (s_.power.courbe_charge_incompatible)
            signale_une_fois(courbe_signalee_, message_charge_incompatible, "power_conf", page_batteries);
    return true;
}

void power_sim_all::un_pas() {
    if (s_.temps_reel)
        s_.periode.j_courant = date_systeme();
    else
        s_.periode.j_courant += s_.periode.pas_sim / secondes_par_jour;
    remise_faite_ = false;
    if (!config_perimee_) note_resultats(s_);

    surveillance garde;
    power_step(s_.power, s_.orbit, s_.periode);
    if (garde.faute()) {
        termine_sur_faute(tr("pas de simulation"), false);
        return;
    }
    affiche();
    if (s_.power.courbe_charge_incompatible)
        signale_une_fois(courbe_signalee_, message_charge_incompatible, "power_conf", page_batteries);
}

void power_sim_all::affiche() {
    etat_bat_ = etat_batterie(s_.power.bat_p, s_.power.bat_soc);
    synoptique_->affiche(s_.power);
    tableau_->affiche(s_);
}

/// The state stays as the fault left it; the next run begins with a reset.
void power_sim_all::termine_sur_faute(const QString& routine, bool en_bandeau) {
    const QString raison =
        QStringLiteral("%1 (%2)").arg(QString::fromStdString(surveillance::description()), routine);
    surveillance().efface();
    s_.sim_state = sim_arretee;
    etat_etranger_ = remise_faite_ = true;
    met_a_jour_commandes();
    if (en_bandeau)
        montre_bandeau(tr("Les réglages ne permettent pas de simuler : %1.").arg(raison));
    else
        rapporte_faute(tr("la simulation du sous-système complet"), s_.periode.j_courant, raison);
}
