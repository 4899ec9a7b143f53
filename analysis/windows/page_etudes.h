/// The page "Études": the budget of every variant of the étude, on all cores beside the window's thread; a
/// curve for one field, a map for two, a histogram for draws. A click opens the variant as the current étude.
#pragma once

#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "analysis/balayage.h"
#include "shell/session.h"
#include "widgets/page.h"

class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QTableWidget;
class QTimer;
class carte_balayage;
class graphe;
class saisie_balayage;

class page_etudes : public page {
    Q_OBJECT
public:
    explicit page_etudes(session& s, QWidget* parent = nullptr);
    ~page_etudes() override;

    void rafraichit() override;
    long lignes() const { return long(lignes_.size()); }
    bool en_cours() const { return course_ != nullptr; }

private:
    /// A sweep under way: its thread, and the rows that the window has not taken yet.
    struct course {
        std::mutex verrou;
        std::deque<ligne_balayage> prets;
        bool finie = false;
        std::jthread fil;
    };

    QWidget* construit_resultats();
    void estime();
    void lance();
    void arrete();
    void releve();
    void remplit(std::size_t de);
    void trace();
    long courbes() const;
    void trace_courbe(std::size_t mesure);
    void trace_histogramme(std::size_t mesure);
    void ouvre_point(double x, double y);
    void ouvre_variante(long variante);
    void enregistre_csv();

    session& s_;
    std::shared_ptr<const balayage> balayage_; ///< of the rows
    std::vector<ligne_balayage> lignes_;
    std::unique_ptr<course> course_;
    QTimer* releve_;
    saisie_balayage* saisie_;
    QLabel *lab_estime_, *lab_resultat_, *lab_base_;
    QPushButton *cmd_lance_, *cmd_arrete_, *cmd_csv_;
    QProgressBar* avance_;
    QComboBox* cmb_mesure_;
    QStackedWidget* vues_;
    graphe* graphe_;
    carte_balayage* carte_;
    QTableWidget* tab_variantes_;
};
