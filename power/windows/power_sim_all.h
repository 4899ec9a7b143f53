/// The complete simulation of the power system: the run, its buttons, the 3D view and the displays.
///
/// A timer drives everything: the view moves at each tick, a step of the models is made once per second of
/// wall clock (or more often, at the user's choice). The session's `sim_state` is the only link between the
/// buttons and the tick.
#pragma once

#include <QElapsedTimer>

#include <optional>

#include "analysis/calcul.h"
#include "power/montage.h"
#include "shell/session.h"
#include "shell/surveillance.h"
#include "widgets/fenetre.h"

class QBoxLayout;
class QComboBox;
class QLabel;
class QPushButton;
class QShortcut;
class QTimer;
class synoptique;
class tableau_bord;
class vue3d;

class power_sim_all : public fenetre {
    Q_OBJECT
public:
    explicit power_sim_all(session& s, QWidget* parent = nullptr);
    ~power_sim_all() override;

    QString tag() const override { return QStringLiteral("conf"); }
    /// A project has been opened: the run ends, the next tick begins anew from the records.
    void form_load() override;

protected:
    void showEvent(QShowEvent* e) override;
    void closeEvent(QCloseEvent* e) override;

private slots:
    void tick_simulation();
    void tick_icone();
    void lance();
    void pause();
    void arrete();

private:
    session& s_;

    QWidget* barre_commandes();
    void construit_raccourcis();
    void met_a_jour_commandes();
    void montre_etat();
    void surveille_configuration();
    void surveille_calculs();
    void arrete_pour(const QString& raison);
    void mesure_allure();
    void avance_modeles();
    void mode_arrete();
    void montre_vue();
    /// The start of a run; false when it ended in a fault. A start that nobody asked for tells its fault in
    /// the message bar only.
    bool remise_a_zero(bool demandee);
    void un_pas();
    void signale_courbe();
    void affiche();
    /// Date of the system clock, UTC.
    static double date_systeme();
    /// Ticks from one step to the next, not rounded.
    double ticks_par_pas() const;
    void termine_sur_faute(const QString& routine, bool en_bandeau);

    QTimer *Timer_sim_pwr_, *timer_icon_bat_;
    QPushButton *cmd_lance_, *cmd_pause_, *cmd_stop_;
    QShortcut* touche_pause_;
    QComboBox* cmb_vitesse_;
    QLabel* lab_etat_sim_;
    synoptique* synoptique_;
    tableau_bord* tableau_;
    orbit_state orbite_vue_; ///< that of the session, its elements brought to the date in the physical model
    vue3d* vue_;
    int compteur_ = 0;                    ///< ticks since the last step
    int etat_bat_ = 8;                    ///< battery state of the last step shown
    montage montage_ = montage::externes; ///< of the run, with the number of its panels
    int panneaux_ = 0;
    QString raison_arret_;        ///< why the run was stopped: stays in the bar after the reset
    QElapsedTimer depuis_mesure_; ///< of the pace
    int pas_mesures_ = 0;
    double allure_voulue_ = 0;
    bool remise_prevue_ = true;    ///< opening, project or change of settings: a start that nobody asked for
    bool remise_faite_ = false;    ///< the reset of the last stop has been done
    bool etat_etranger_ = false;   ///< the working state is what a fault or another calculation left
    std::optional<calcul> calcul_; ///< the run, from its last start on
    uint32_t calculs_vus_;         ///< calculations of other windows that this one knows of
    bool config_perimee_ = false;  ///< the configuration has changed since the run began
};
