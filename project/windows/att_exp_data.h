/// Results of the attitude system: the disturbance torques at each date, without integrating the attitude.
#pragma once

#include <optional>

#include "attitude/att_atmosphere.h"
#include "project/windows/exp_data.h"

class att_exp_data : public exp_data {
    Q_OBJECT
public:
    explicit att_exp_data(session& s, QWidget* parent = nullptr);

    QString tag() const override { return "attconf"; }

protected:
    int configuration() const override { return 1; }
    std::vector<variable> variables() const override;
    int variables_communes() const override { return static_cast<int>(variables().size()); }
    QStringList positions() const override { return {"X", "Y", "Z", "Total"}; }
    QString sous_titre(const QString& position) const override;
    const char* image_limites() const override { return "0.0E+00"; }
    QString nom_calcul() const override { return "l'exploitation des couples"; }
    void initialise() override;
    void pas() override;
    /// The orbit's own flag, the one that the solar torque reads.
    bool eclipse() const override { return s_.orbit.eclipse == vrai; }
    std::string texte(int variable, int position) override;
    QString raison_faute() const override;

private:
    std::optional<atmosphere> air_; ///< files are read anew for each run
};
