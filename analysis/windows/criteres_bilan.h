/// The criteria of the verdict: what the last turn gives, the limit that may be changed, and a mark each.
#pragma once

#include <QGroupBox>

#include <array>

#include "analysis/bilan.h"
#include "shell/session.h"

class QDoubleSpinBox;
class QLabel;
class QPushButton;

class criteres_bilan : public QGroupBox {
    Q_OBJECT
public:
    explicit criteres_bilan(session& s, QWidget* parent = nullptr);

    /// The limits in force.
    void relit();
    /// What a budget makes of them.
    void montre(const bilan& b, const criteres_valeurs& c);

signals:
    void change();

protected:
    void changeEvent(QEvent* e) override; ///< the marks follow the palette

private:
    static constexpr int nombre = 4;

    void saisit(int i, double x);

    session& s_;
    std::array<QDoubleSpinBox*, nombre> limites_{};
    std::array<QLabel*, nombre> valeurs_{}, marques_{};
    QLabel *lab_manque_, *lab_derive_, *marque_manque_, *marque_derive_;
    QPushButton* cmd_usuels_;
};
