/// The settings of orbit, attitude and environment.
#pragma once

#include "shell/session.h"
#include "widgets/fenetre.h"

class QTabWidget;
class page_attitude;
class page_environnement;
class page_orbite;

class orbito_conf : public fenetre {
    Q_OBJECT
public:
    explicit orbito_conf(session& s, QWidget* parent = nullptr);

    QString tag() const override { return "conf"; }
    void form_load() override;
    void montre_page(int page) override; ///< 0 orbit, 1 attitude, 2 environment

protected:
    void keyPressEvent(QKeyEvent* e) override;

private:
    void propose_periode();

    session& s_;

    QTabWidget* onglets_;
    page_orbite* orbite_;
    page_attitude* attitude_;
    page_environnement* environnement_;
};
