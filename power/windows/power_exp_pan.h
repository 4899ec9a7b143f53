/// "Simulation panneaux solaires": the solar generator over the period, panel by panel.
#pragma once

#include <QStringList>

#include <array>
#include <vector>

#include "analysis/calcul.h"
#include "analysis/listes_resultats.h"
#include "shell/session.h"
#include "widgets/fenetre.h"

class QAction;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QStackedWidget;
class QTableView;
class QWidget;
class pied_calcul;
class table_resultats;
class trace_graph;

class power_exp_pan : public fenetre {
    Q_OBJECT
public:
    explicit power_exp_pan(session& s, QWidget* parent = nullptr);

    QString tag() const override { return "conf"; }
    void form_load() override;

    /// Saves the table of the quantity that is shown; false, with a message, when it cannot be written.
    bool enregistre_table(const QString& chemin);

protected:
    void closeEvent(QCloseEvent* e) override;
    void changeEvent(QEvent* e) override;

private:
    session& s_;

    enum grandeur { temperature, puissance, flux, angles, nombre_grandeurs };

    QWidget* construit_choix();
    QWidget* construit_resultats();
    void construit_bas(class QBoxLayout* pile);
    void construit_actions();

    void cmd_saisir_clic();
    bool peut_lancer();
    bool accepte_la_taille();
    void recommence();
    std::vector<voie> voies() const;
    bool deroule();
    void range(const calcul& c);
    void etat_boutons(bool en_cours);

    void montre(grandeur g);
    void retrace();
    std::vector<int> colonnes_tracees() const;
    QStringList titres(grandeur g) const;
    QString tete() const; ///< first line of what is copied or saved
    void demande_et_enregistre();
    void copie_table();

    grandeur grandeur_ = temperature;
    montage montage_ = montage::externes; ///< of the results
    int panneaux_ = 0;
    double debut_ = 0, fin_ = 0;
    bool stop_ = false, en_cours_ = false;

    std::array<table_resultats*, nombre_grandeurs> tables_{};
    std::array<std::vector<variable_liste>, nombre_grandeurs> colonnes_; ///< of the tables
    std::vector<double> ligne_;                                          ///< of a table, in hand
    std::array<QPushButton*, nombre_grandeurs> cmd_{};
    std::array<QRadioButton*, 2> opt_view_{};
    std::array<QWidget*, 4> images_{};
    QGroupBox* cadre_;
    QStackedWidget* vues_;
    QTableView* grid_;
    trace_graph* pict_graph_;
    pied_calcul* pied_;
};
