/// The page "Banc d'attitude": the rotation of the satellite in the physical model, under the hand. Every
/// edit of the settings runs it again where that is short, beside the window's thread and on a copy.
#pragma once

#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

#include "analysis/banc_attitude.h"
#include "physics/rotation.h"
#include "shell/session.h"
#include "widgets/page.h"
#include "widgets/tache.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QProgressBar;
class QPushButton;
class QSplitter;
class QToolButton;
class barre_temps;
class reglages_banc;
class traces;

class page_banc : public page {
    Q_OBJECT
public:
    explicit page_banc(session& s, QWidget* parent = nullptr);
    ~page_banc() override;

    void rafraichit() override;
    void montre_date(double j) override;

    /// The three-dimensional view of the run, made when it is first asked for; it follows `attitude_montree`.
    void ajoute_vue(std::function<QWidget*()> fabrique);

    /// The current run, null before the first.
    const resultat_courbes* resultat() const { return resultat_.get(); }
    bool calcule_en_cours() const { return tache_.en_cours(); }

signals:
    /// Orbit and attitude (inertial to body) of the run at the date shown.
    void attitude_montree(const orbit_state& o, double j, const rotation& attitude);

protected:
    void changeEvent(QEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void showEvent(QShowEvent* e) override;

private:
    // Layout (page_banc.cpp)
    QLayout* cree_reponse();
    QLayout* cree_commandes();
    void prepare_seuil();
    QToolButton* saut(const char* nom, const QString& texte, const QString& bulle, int sens);
    QWidget* cree_milieu();
    void cree_choix(QToolButton* b);
    void montre_d_office();
    void montre_vue(bool oui);
    void partage_milieu();

    // Runs and what they show (page_banc_calcul.cpp)
    void suit();
    void lance();
    void pret(resultat_courbes r);
    void montre_etat();
    void montre_courbes();
    void montre_reponse();
    void montre_attitude();
    void choisit_seuil();
    void lit_seuil();
    QString saturations() const;

    session& s_;
    etude vue_, lancee_;
    loi_controle loi_vue_; ///< that charts and quantity follow
    bool jamais_vue_ = true, a_refaire_ = false;
    double cout_seconde_ = 1e-6; ///< [s] of a simulated second, by the last run
    std::shared_ptr<const resultat_courbes> resultat_;
    std::shared_ptr<suivi_courbes> suivi_;
    tache<resultat_courbes> tache_;
    QTimer minuterie_;
    double date_ = 0;
    QStringList groupes_; ///< shown, by name
    bool groupes_choisis_ = false, grandeur_choisie_ = false;
    std::vector<double> seuils_; ///< of each quantity
    std::function<QWidget*()> fabrique_vue_;
    QWidget *vue3d_ = nullptr, *cadre_traces_ = nullptr;
    QMenu* choix_groupes_ = nullptr;

    reglages_banc* reglages_;
    traces* traces_;
    barre_temps* temps_;
    QSplitter* milieu_;
    QLabel *lab_reponse_, *lab_etat_, *lab_modele_, *lab_unite_;
    QComboBox* cbo_grandeur_;
    QLineEdit* txt_seuil_;
    QProgressBar* barre_;
    QPushButton *cmd_calcule_, *cmd_arrete_;
    QToolButton* cmd_vue_;
};
