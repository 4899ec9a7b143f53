/// The page "Carte": where the satellite stands over the Earth at a date, which stations see it, and when.
#pragma once

#include <functional>
#include <optional>

#include "analysis/carte.h"
#include "analysis/passages.h"
#include "shell/session.h"
#include "widgets/page.h"

class QComboBox;
class QHBoxLayout;
class QLabel;
class QLayout;
class QPushButton;
class QSortFilterProxyModel;
class QSpinBox;
class QStackedWidget;
class QTabWidget;
class QTableView;
class barre_temps;
class calcul_passages;
class carte_terre;
class dessin_polaire;
class modele_passages;
class table_stations;

class page_carte : public page {
    Q_OBJECT
public:
    explicit page_carte(session& s, QWidget* parent = nullptr);
    ~page_carte() override;

    void rafraichit() override;
    void montre_date(double j) override;

    /// A second view that the map can be exchanged for ("Vue 3D"), made when it is first asked for; it
    /// follows the date by `etat_montre`.
    void ajoute_vue(const QString& titre, std::function<QWidget*()> fabrique);

signals:
    /// The orbit as it stands at the date shown.
    void etat_montre(const orbit_state& o, double j);

protected:
    void showEvent(QShowEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private:
    /// Days from the start of the period over which passes are searched; 0: the period itself.
    static constexpr double etendues[] = {0, 1, 7, 30};

    QHBoxLayout* cree_tete();
    QWidget* cree_gauche();
    QWidget* cree_droite();
    QWidget* cree_passages();
    QLayout* cree_recherche();
    QWidget* cree_table();
    QWidget* cree_detail();

    const std::vector<station>& stations() const;
    void change_stations(const std::vector<station>& stations, const QString& libelle);
    void recherche();
    void passages_prets();
    void passage_clique(const QModelIndex& i);
    void choisit_passage(std::optional<passage> p);
    void date_changee(double j);
    void redessine();
    void montre_reponse();
    void montre_satellite(const place_satellite& p);
    void montre_pointeur(double lon, double lat);
    void enregistre();

    session& s_;
    std::vector<station> du_programme_;
    calcul_passages* calcul_;
    modele_passages* modele_;
    QSortFilterProxyModel* ordre_;
    trace_glissante trace_;
    std::optional<passage> choisi_;
    double date_;
    double debut_vu_, date_table_ = 0;
    QString demande_; ///< what the last search was made for

    QLabel *reponse_, *satellite_, *pointeur_, *detail_, *modele_physique_;
    QSpinBox *avant_, *apres_;
    QComboBox* etendue_;
    QStackedWidget* milieu_;
    QWidget* autre_vue_ = nullptr;
    QHBoxLayout* vues_;
    carte_terre* carte_;
    barre_temps* temps_;
    QTabWidget* onglets_;
    QTableView* vue_;
    dessin_polaire* polaire_;
    table_stations* table_stations_;
    QPushButton* enregistre_;
};
