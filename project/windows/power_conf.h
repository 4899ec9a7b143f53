/// "Définition système énergie": every setting of the power system, on five pages. Each edit takes effect at
/// once in the session's power record.
#pragma once

#include "project/composants.h"
#include "widgets/fenetre.h"

struct power_record;
struct session;

class QTabWidget;
class page_batteries;
class page_cellules;
class page_gestion;
class page_panneaux;
class page_thermique;

class power_conf : public fenetre {
    Q_OBJECT
public:
    explicit power_conf(session& s, QWidget* parent = nullptr);

    QString tag() const override { return "conf"; }
    void form_load() override { update_powerconf(); }
    /// 0 panels, 1 cells, 2 thermal model, 3 batteries, 4 management.
    void montre_page(int page) override;
    /// Writes all fields into the controls and redraws.
    void update_powerconf();

private:
    void dit_courbe_incompatible();
    void choisit_composant(genre_composant g);
    void garde_composant_en_place(genre_composant g);

    session& s_;
    power_record& power_;
    QTabWidget* onglets_;
    page_panneaux* panneaux_;
    page_cellules* cellules_;
    page_thermique* thermique_;
    page_batteries* batteries_;
    page_gestion* gestion_;
};
