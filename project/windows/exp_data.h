/// "Exploitation de données": a table and a graph of chosen variables over the simulation period. One window
/// for two sets of variables: the derived classes give the list and what a run computes.
#pragma once

#include <QStringList>

#include <array>
#include <functional>
#include <span>
#include <vector>

#include "analysis/calcul.h"
#include "analysis/listes_resultats.h"
#include "shell/session.h"
#include "widgets/export_traces.h"
#include "widgets/fenetre.h"
#include "widgets/table_resultats.h"

class QAction;
class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;
class QScrollBar;
class QStackedWidget;
class QTableView;
class entete_colonne;
class pied_calcul;
class trace_graph;

class exp_data : public fenetre {
    Q_OBJECT
public:
    static constexpr int nombre_colonnes = 6;

    /// Rebuilds the list of variables when the configuration calls for another one.
    void form_load() override;

    /// Saves the table as text; false, with a message, when the file cannot be written.
    bool enregistre_table(const QString& chemin);
    /// The used columns; units, and the physical model, in the head.
    bool enregistre_csv(const QString& chemin, forme_csv f);
    /// Saves the picture of the graph (.bmp or .png); false, with a message, when it cannot be written.
    bool enregistre_image(const QString& chemin);
    /// Runs the period straight into a file, a line a step, and leaves the table as it is.
    bool calcule_vers_fichier(const QString& chemin);
    void copie_table();

protected:
    session& s_;

    /// `selecteur`: stem of the selector's controls ("pan" gives scroll_pan, txt_pan, lab_pan), and its
    /// caption.
    exp_data(session& s, const QString& nom, const QString& selecteur, const QString& titre_selecteur,
             QWidget* parent);

    /// A number that changes when the list must be rebuilt.
    virtual int configuration() const = 0;
    virtual std::span<const variable_liste> variables() const = 0;
    /// Leading variables that every configuration has: their columns outlive a change of configuration.
    virtual int variables_communes() const = 0;
    virtual QStringList positions() const = 0;                     ///< texts of the selector, from 1
    virtual QString sous_titre(const QString& position) const = 0; ///< sub-header of a column
    virtual const char* image_nombres() const { return nullptr; }  ///< picture in the place of decimals
    virtual const char* image_limites() const = 0;                 ///< picture of the limits after a run
    virtual QString nom_calcul() const = 0;                        ///< for the report of a fault
    /// False, with the message shown, when the run must not start.
    virtual bool verifie_dates() { return true; }
    /// What a run computes whatever the columns, and the variable that tells the eclipses.
    virtual unsigned besoins() const = 0;
    virtual const char* nom_eclipse() const = 0;
    /// What to do about a fault that has just ended a run.
    virtual QString conseil() const { return {}; }
    /// Told after each step.
    virtual void apres_pas(calcul&) {}

    void closeEvent(QCloseEvent* e) override;
    void changeEvent(QEvent* e) override;
    bool event(QEvent* e) override;
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    // Controls and columns: exp_data.cpp
    void construit_gauche(class QBoxLayout* pile, const QString& selecteur, const QString& titre);
    void construit_resultats(class QBoxLayout* pile);
    void construit_entetes(class QBoxLayout* pile);
    void construit_limites(class QBoxLayout* ligne);
    void construit_bas(class QBoxLayout* pile);
    void construit_actions();
    void choisit_variable(int colonne);
    void vide_colonne(int colonne);
    void active_colonne(int colonne);
    void montre_selecteur();
    void change_position(int position);
    void montre_vue();
    void change_limite(int i);
    void retrace();
    void dessine_graphe();
    void montre_colonne(int colonne);
    void garde_colonne(int colonne);
    void rend_colonne();
    void aligne_colonnes();

    // The run: exp_calcul.cpp
    void cmd_saisir_clic();
    bool peut_lancer();
    ecriture_nombre ecriture(std::size_t colonne) const;
    std::vector<voie> voies() const;
    /// Every step of the period; `ligne` gets the row's number from 0, the values of the six columns (0 in an
    /// unused one) and the eclipse, and ends the run by false. False when the window went away meanwhile.
    using ligne_prete = std::function<bool(int, const std::vector<double>&, bool)>;
    bool deroule(const ligne_prete& ligne);
    void convertit_ligne(const calcul& c, std::vector<double>& valeurs) const;
    void etat_boutons(bool en_cours);

    // Files: exp_sauve.cpp
    void cmd_save_clic();
    bool demande_et_enregistre_table();
    void demande_et_enregistre_csv(forme_csv f);
    bool demande_et_enregistre_image();
    void demande_et_calcule();
    QString demande_chemin(const QString& filtres);

    std::array<int, nombre_colonnes> col_variable_{}; ///< index in the list from 1, 0 for an unused column
    std::array<int, nombre_colonnes> col_position_{}; ///< panel or axis, from 0
    /// A column that has been emptied or given another variable, until the next run.
    struct colonne_gardee {
        int colonne, variable, position;
        table_resultats::valeurs valeurs;
    };
    std::vector<colonne_gardee> gardees_;
    std::span<const variable_liste> liste_;
    int configuration_ = 0, colonne_active_ = 0;
    bool stop_ = false, en_cours_ = false, faute_ = false, memoire_pleine_ = false;
    bool physique_ = false;      ///< the rows are of the physical model
    double debut_ = 0, fin_ = 0; ///< what the graph's axis spans: the period, or what was computed of it
    std::array<double, 2> limites_{};

    table_resultats* table_;
    QListWidget* list_var_;
    QLabel* lab_selecteur_;
    QLineEdit* txt_selecteur_;
    QScrollBar* scroll_;
    std::array<QRadioButton*, 2> opt_view_{};
    std::array<entete_colonne*, nombre_colonnes> lab_col_{};
    std::array<QLabel*, nombre_colonnes> lab_colp_{};
    std::array<QLineEdit*, 2> txt_lim_{};
    QWidget* echelle_cadre_;
    QStackedWidget* vues_;
    QTableView* grid_;
    trace_graph* pict_graph_;
    pied_calcul* pied_;
    std::array<QAction*, 2> csv_{};
    QAction *copier_, *table_action_, *image_action_, *vers_fichier_; ///< not during a run
};
