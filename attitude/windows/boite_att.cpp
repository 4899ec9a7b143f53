#include "attitude/windows/boite_att.h"

#include <QFocusEvent>
#include <QKeyEvent>

#include "shell/formats.h"
#include "shell/utilitaires.h"
#include "widgets/conduite.h"
#include "widgets/style.h"
#include "widgets/verifications.h"

namespace {
constexpr double pi_court = 3.14159265358979; // the conversion of the boxes, with this many digits
}

boite_att::boite_att(const QString& nom, QWidget* parent) : QLineEdit(parent) {
    setObjectName(nom);
    style::boite_nombre(this, 9);
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

void boite_att::montre() {
    if (!valeur_) return;
    const double x = degres_ ? *valeur_ * 180 / pi_court : *valeur_;
    // At most 15 digits: what the conversions add beyond them is no part of what was typed.
    montre_ = image_.empty() ? QString::number(x, 'g', 15) : QString::fromStdString(format_image(x, image_));
    setText(montre_);
    setCursorPosition(0);
}

void boite_att::valide() {
    if (!valeur_ || en_cours_ || !touchee(this)) return;
    en_cours_ = true; // the message of a refused text takes the focus and gives it back
    double x = 0;
    const bool lu = verif_double(this, text(), montre_, x);
    en_cours_ = false;
    if (!lu) return;
    x = borne(x, min_, max_);
    if (degres_) x = x * pi_court / 180;
    const bool neuf = x != *valeur_;
    *valeur_ = x;
    montre();
    if (neuf) emit change();
}

void boite_att::focusOutEvent(QFocusEvent* e) {
    QLineEdit::focusOutEvent(e);
    if (e->reason() != Qt::PopupFocusReason) valide();
}

void boite_att::keyPressEvent(QKeyEvent* e) {
    if (e->key() != Qt::Key_Return && e->key() != Qt::Key_Enter) return QLineEdit::keyPressEvent(e);
    e->accept();
    focusNextChild();
    valide();
}
