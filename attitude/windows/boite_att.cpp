#include "attitude/windows/boite_att.h"

#include <QKeyEvent>

#include "shell/formats.h"
#include "shell/utilitaires.h"
#include "widgets/verifications.h"

namespace {
constexpr double pi_court = 3.14159265358979; // the conversion of the boxes, with this many digits
}

boite_att::boite_att(const QString& nom, QWidget* parent) : boite_nombre(9, parent) {
    setObjectName(nom);
    setMaximumWidth(2 * minimumWidth()); // room for all digits where the window is wide
}

void boite_att::relie(double& valeur) {
    valeur_ = &valeur;
    montre();
}

void boite_att::limites(double min, double max) {
    min_ = min;
    max_ = max;
}

QString boite_att::texte_stocke() const {
    if (!valeur_) return {};
    const double x = degres_ ? *valeur_ * 180 / pi_court : *valeur_;
    // At most 15 digits: what the conversions add beyond them is no part of what was typed.
    return image_.empty() ? QString::number(x, 'g', 15) : QString::fromStdString(format_image(x, image_));
}

bool boite_att::prend() {
    double x = 0;
    if (!valeur_ || !verif_double(this, text(), ancien(), x)) return false;
    x = borne(x, min_, max_);
    *valeur_ = degres_ ? x * pi_court / 180 : x;
    return true;
}

void boite_att::keyPressEvent(QKeyEvent* e) {
    if (e->key() != Qt::Key_Return && e->key() != Qt::Key_Enter) return boite_nombre::keyPressEvent(e);
    e->accept();
    focusNextChild();
    valide();
}
