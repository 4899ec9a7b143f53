/// The number box of the attitude windows: edits one number in place.
#pragma once

#include <limits>
#include <string>

#include "widgets/boite_nombre.h"

class boite_att : public boite_nombre {
    Q_OBJECT
public:
    explicit boite_att(const QString& nom, QWidget* parent = nullptr);

    /// The number that the box shows and writes; it must outlive the box.
    void relie(double& valeur);
    /// Silent limits, in the unit that is shown.
    void limites(double min, double max);
    double minimum() const { return min_; }
    double maximum() const { return max_; }
    /// The number is in radians (or rad/s), shown in degrees.
    void en_degres() { degres_ = true; }
    /// A number picture such as "#0.00"; without it at most 15 digits.
    void image(const std::string& image) { image_ = image; }

protected:
    double stocke() const override { return valeur_ ? *valeur_ : 0; }
    QString texte_stocke() const override;
    bool prend() override;
    /// Enter moves on to the next control.
    void keyPressEvent(QKeyEvent* e) override;

private:
    double* valeur_ = nullptr;
    double min_ = -std::numeric_limits<double>::infinity();
    double max_ = std::numeric_limits<double>::infinity();
    bool degres_ = false;
    std::string image_;
};
