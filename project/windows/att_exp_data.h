/// Results of the attitude system: the disturbance torques at each date, without integrating the attitude.
#pragma once

#include "project/windows/exp_data.h"

class att_exp_data : public exp_data {
    Q_OBJECT
public:
    explicit att_exp_data(session& s, QWidget* parent = nullptr);

    QString tag() const override { return "attconf"; }

protected:
    int configuration() const override { return 1; }
    std::span<const variable_liste> variables() const override { return liste_couples(); }
    int variables_communes() const override { return static_cast<int>(variables().size()); }
    QStringList positions() const override { return {"X", "Y", "Z", "Total"}; }
    QString sous_titre(const QString& position) const override;
    const char* image_nombres() const override { return "0.000E+00"; }
    const char* image_limites() const override { return "0.0E+00"; }
    QString nom_calcul() const override { return "l'exploitation des couples"; }
    unsigned besoins() const override { return besoin::couples; }
    /// The orbit's own flag, the one that the solar torque reads.
    const char* nom_eclipse() const override { return "eclipse_orbite"; }
};
