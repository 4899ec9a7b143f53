/// "Charge/Décharge des batteries": one accumulator through the discharge of an eclipse and its recharge.
#pragma once

#include <QVector>

#include <array>
#include <optional>

#include "power/etude_batterie.h"
#include "shell/session.h"
#include "widgets/fenetre.h"
#include "widgets/pied_calcul.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QScrollBar;
class graphe;
class surveillance;

class power_exp_bat : public fenetre {
    Q_OBJECT
public:
    explicit power_exp_bat(session& s, QWidget* parent = nullptr);

    QString tag() const override { return "conf"; }
    /// Proposes the values of the project; a proposal that is the last one leaves what was entered.
    void form_load() override;

protected:
    void closeEvent(QCloseEvent* e) override;
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    session& s_;

    /// A text box, what it edits and between which limits.
    struct saisie {
        QLineEdit* boite = nullptr;
        double valeur = 0, min = 0, max = 0;
        std::optional<double> proposee; ///< by the project
        bool min_inclus = false;
    };
    enum champ { tecl, tchde, chk, chvmax, chcour, depuis, decour, nombre_champs };

    QWidget* construit_saisies();
    QWidget* construit_mode();
    QWidget* construit_resultats();
    QWidget* construit_courbes();
    QWidget* construit_bas();
    QLineEdit* ajoute_saisie(QGridLayout* g, champ c, const char* nom, const char* titre, const char* aide);
    bool valide(champ c);
    void montre_valeur(champ c);
    void etat_mode();

    void cmd_saisir_clic();
    /// The phases of the study; false when the window went away meanwhile.
    bool deroule(etude_batterie& etude);
    enum class suite { continue_, arrete, disparue };
    suite phase(etude_batterie& etude, bool (etude_batterie::*seconde)(point_batterie&), class course& c,
                surveillance& veille);
    void dit_faute(const etude_batterie& etude, const QString& raison);
    void ajoute_point(const point_batterie& pt);
    void etat_boutons(bool en_cours);
    bool accepte_temperature();
    void regle_defilement(bool a_la_fin);
    void retrace_courbes();
    double duree_visible() const; ///< [min], 0: all

    std::array<saisie, nombre_champs> saisies_{};
    bool stop_ = false, en_cours_ = false;
    long t_dernier_ = 0;
    double fin_decharge_ = 0; ///< [min]

    QRadioButton *opt_depuis_, *opt_decour_;
    QLabel *lab_dod_, *lab_tch_, *lab_status_;
    QProgressBar* statusbar_;
    depart_arret boutons_;
    QComboBox* cmb_duree_;
    QScrollBar* scroll_graphs_;
    std::array<graphe*, 2> pict_graphs_{};
};
