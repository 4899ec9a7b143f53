/// The number box of the attitude windows: edits one number in place, on loss of focus.
#pragma once

#include <QLineEdit>
#include <limits>
#include <string>

class boite_att : public QLineEdit {
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

    /// Shows the number.
    void montre();
    /// Reads the text where the hand has changed it: clamps, stores and shows back. A text that is no
    /// number is refused and the old one comes back.
    void valide();

signals:
    /// The number has changed.
    void change();

protected:
    void focusOutEvent(QFocusEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    double* valeur_ = nullptr;
    double min_ = -std::numeric_limits<double>::infinity();
    double max_ = std::numeric_limits<double>::infinity();
    bool degres_ = false, en_cours_ = false;
    std::string image_;
    QString montre_;
};
