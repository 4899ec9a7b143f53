/// The attitude settings: edits the attitude record in place, page by page, beside a drawing of it.
#pragma once

#include "shell/session.h"
#include "widgets/fenetre.h"

class QTabWidget;
class att_conf_masses;
class dessin_configuration;
class page_att;

class att_conf : public fenetre {
    Q_OBJECT
public:
    explicit att_conf(session& s, QWidget* parent = nullptr);

    QString tag() const override { return "attconf"; }
    /// Fills every control from the record, with the totals computed anew.
    void form_load() override;
    void montre_page(int page) override;

protected:
    void closeEvent(QCloseEvent* e) override;

private:
    session& s_;

    void enregistrement_change();
    void montre_config();

    QTabWidget* onglets_;
    att_conf_masses* masses_;
    QList<page_att*> pages_;
    dessin_configuration* dessin_;
};
