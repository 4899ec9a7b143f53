/// Results of the energy system: a power step for each row.
#pragma once

#include "project/windows/exp_data.h"

class power_exp_data : public exp_data {
    Q_OBJECT
public:
    explicit power_exp_data(session& s, QWidget* parent = nullptr);

    QString tag() const override { return "conf"; }

protected:
    int configuration() const override { return static_cast<int>(montage_de(s_.power)); }
    std::span<const variable_liste> variables() const override { return liste_energie(montage_de(s_.power)); }
    int variables_communes() const override;
    QStringList positions() const override;
    QString sous_titre(const QString& position) const override { return "Panneau " + position; }
    const char* image_limites() const override { return "0"; }
    QString nom_calcul() const override { return "l'exploitation du système énergie"; }
    bool verifie_dates() override;
    unsigned besoins() const override { return besoin::energie; }
    const char* nom_eclipse() const override { return "eclipse"; }
    QString conseil() const override;
    void apres_pas(calcul& c) override;
};
