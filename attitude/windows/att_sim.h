/// The attitude simulation: runs over the session's period when it opens, keeps every step in the results
/// file, and draws that file page by page.
#pragma once

#include <atomic>
#include <memory>

#include "attitude/att_pages.h"
#include "attitude/att_run.h"
#include "shell/session.h"
#include "widgets/course.h"
#include "widgets/fenetre.h"
#include "widgets/tache.h"

class QCheckBox;
class QProgressBar;
class QPushButton;
class QScrollBar;
class QSpinBox;
class QTimer;
class boite_att;
class graphe;

/// A run in its thread: first the settings, then the state at the end and what there is to say of it.
struct course_att {
    attitude_record attitude;
    orbit_state orbite;
    att_run_bilan bilan;
    std::string faute_donnees; ///< of the density table
    std::shared_ptr<ecrivain_resultats> sortie = {};
    double date_explosion = 0; ///< first full turn in a step, 0: none
    int32_t pas = 0;           ///< [s]
    int pas_conseille = 0;     ///< [s] after a run that diverged; 0: no smaller step would do
};

/// What goes between the window and the run.
struct suivi_att {
    std::atomic<float> part = 0;     ///< [%]
    std::atomic<bool> arret = false; ///< end the run and keep what it has
};

class att_sim : public fenetre {
    Q_OBJECT
public:
    explicit att_sim(session& s, QWidget* parent = nullptr);

    /// The initial rates belong to the attitude project.
    QString tag() const override { return "attconf"; }
    void form_load() override;

    /// Runs the period from the initial conditions on copies, beside the window's thread; then draws the
    /// first page. "Arrêter" ends it.
    void att_run();
    /// Draws a page of the results file, or the whole run.
    void att_trace();

    /// Copies the results file to a path of the user's; false, with a report, when it cannot be written.
    bool enregistre_resultats(const QString& chemin);
    /// Both charts as PNG pictures, "x-angles.png" and "x-vitesses.png" for "x.png".
    bool enregistre_images(const QString& chemin);

protected:
    void showEvent(QShowEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    void changeEvent(QEvent* e) override;

private:
    session& s_;

    QWidget* cadre_vitesses();
    QWidget* cadre_resultats();
    QWidget* zone_graphes();
    QLayout* ligne_pages();
    QLayout* ligne_pied();
    void lance_affichee(int essais);
    bool accepte_periode();
    bool ouvre_fichier(ecrivain_resultats& sortie);
    void calcul_fini(course_att c);
    void prepare_pages(const ecrivain_resultats& sortie);
    void quitte();
    void demande_resultats();
    void demande_images();
    void vide_graphes();
    void trace_angles(const table_att& t, int lignes);
    void trace_vitesses(const table_att& t, int lignes);
    void montre_course(bool en_cours);
    QString compte_rendu(const course_att& c) const;

    graphe *att_graph_, *att_graph_v_;
    QProgressBar* temp_calcul_;
    QScrollBar* scr_diagr_;
    QSpinBox* txt_page_;
    QCheckBox *chk_periode_, *chk_taux_, *chk_roues_;
    QPushButton *cmd_relance_, *cmd_save_, *cmd_image_, *cmd_arrete_;
    boite_att* vitesses_[3];

    std::unique_ptr<course> tenue_; ///< while a run is on
    std::shared_ptr<suivi_att> suivi_;
    QTimer* rythme_;
    double debut_ = 0, fin_ = 0, pas_ = 0; ///< [days] period and step of the run
    double pas_ecriture_ = 1;              ///< a record every so many steps
    QString fichier_temp_;                 ///< results file
    QString fichier_resultats_;            ///< name given by the user, empty until saved
    bool roues_actives_ = false;
    place_resultats place_;
    pages_resultats pages_;
    long page_ = 0;
    double date_explosion_ = 0; ///< where a run that a fault ended first made a turn in a step; 0 otherwise
    uint32_t version_ = 0;      ///< configuration of the results shown
    bool vitesses_changees_ = false; ///< initial rates edited since the run
    QString bilan_;                  ///< what the last run said
    tache<course_att> tache_;        ///< last: it ends before what its result goes to
};
