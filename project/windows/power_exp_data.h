/// Results of the energy system: a power step for each row.
#pragma once

#include "power/etude_panneaux.h"
#include "project/windows/exp_data.h"

class power_exp_data : public exp_data {
    Q_OBJECT
public:
    explicit power_exp_data(session& s, QWidget* parent = nullptr);

    QString tag() const override { return "conf"; }

protected:
    int configuration() const override { return static_cast<int>(montage_de(s_.power)); }
    std::vector<variable> variables() const override;
    int variables_communes() const override;
    QStringList positions() const override;
    QString sous_titre(const QString& position) const override { return "Panneau " + position; }
    const char* image_limites() const override { return "0"; }
    QString nom_calcul() const override { return "l'exploitation du système énergie"; }
    bool verifie_dates() override;
    void initialise() override;
    void pas() override;
    bool eclipse() const override { return s_.power.eclipse == vrai; }
    std::string texte(int variable, int position) override;
    void apres_pas() override;

private:
    bool courbe_signalee_ = false;
};
