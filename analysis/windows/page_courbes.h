/// The page "Courbes": any variables of a run in stacked charts, read by cursor and marks, compared with
/// kept runs. Runs go on copies, beside the window's thread; a short one follows every edit.
#pragma once

#include <QStringList>
#include <QTimer>

#include <deque>
#include <memory>
#include <optional>

#include "analysis/calcul_courbes.h"
#include "shell/session.h"
#include "widgets/dessin_traces.h"
#include "widgets/page.h"
#include "widgets/tache.h"

class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTabWidget;
class QToolButton;
class QTreeWidget;
class calcul_passages;
class calculs_gardes;
class choix_variables;
class lecture_courbes;
class traces;

class page_courbes : public page {
    Q_OBJECT
public:
    explicit page_courbes(session& s, QWidget* parent = nullptr);
    ~page_courbes() override;

    void rafraichit() override;
    void montre_date(double j) override;
    /// Adds the curve of a variable in a chart of its own; one that is there already is marked.
    void montre_variable(const QString& nom);

    /// The current run, null before the first.
    const resultat_courbes* resultat() const { return resultat_.get(); }
    bool calcule_en_cours() const;

protected:
    void changeEvent(QEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private:
    using graphiques = QList<QStringList>; ///< names of variables, a list a chart

    // Layout (page_courbes.cpp)
    void construit();
    void relie_choix();
    void relie_gardes();
    void partage();
    QWidget* cree_tete();
    QList<QWidget*> cree_outils();
    QWidget* cree_gauche();
    QWidget* cree_graphiques();
    void cree_export(QToolButton* b);
    void demande_export(const QString& filtre, const QString& nom, int forme);
    void menu_graphique(const QPoint& ou, int g);

    // Which curves (page_courbes_choix.cpp)
    void lit_choix();
    void change_choix(graphiques nouveau, const QString& libelle);
    void ajoute(const QString& nom, int g);
    void retire(int g, const QString& nom);
    void deplace(int sens);
    void montre_choix();
    QStringList noms_voulus() const;
    void montre_courbes();
    void montre_ecarts();
    QColor couleur_de(const QString& nom, int rang) const;
    trace_courbe courbe_de(const QString& nom, const std::shared_ptr<const resultat_courbes>& r,
                           const resultat_courbes* moins) const;

    // Runs (page_courbes_calcul.cpp)
    void suit();
    void lance();
    void arrete();
    void pret(resultat_courbes r);
    void montre_etat();
    void complete_gardes();
    void garde_pret(resultat_courbes r);
    void cherche_passages();
    void montre_evenements();

    session& s_;
    graphiques choix_;
    std::string choix_lu_ = "?"; ///< the étude's text that `choix_` comes from
    etude vue_;                  ///< settings that the page follows
    etude calculee_;             ///< of `resultat_`
    QStringList noms_calcules_;
    bool jamais_vue_ = true, a_refaire_ = false;
    double cout_pas_ = 3e-6; ///< [s] of a step of the last run
    std::shared_ptr<const resultat_courbes> resultat_;
    std::shared_ptr<suivi_courbes> suivi_;
    etude lancee_;
    QStringList noms_lances_;
    tache<resultat_courbes> tache_;
    std::deque<int> a_completer_; ///< numbers of kept runs to do again; the first is under way
    tache<resultat_courbes> tache_gardes_;
    calcul_passages* passages_;
    etude vue_passages_;
    bool passages_cherches_ = false;
    QTimer minuterie_;

    traces* traces_;
    lecture_courbes* lecture_;
    calculs_gardes* gardes_;
    choix_variables* variables_;
    QTreeWidget* arbre_;
    QLabel *lab_etat_, *lab_modele_;
    QProgressBar* barre_;
    QPushButton *cmd_garde_, *cmd_calcule_, *cmd_arrete_;
    QComboBox* cbo_ecart_;
    QToolButton *cmd_retour_, *cmd_lectures_;
    bool haute_ = false; ///< room for charts and table
};
