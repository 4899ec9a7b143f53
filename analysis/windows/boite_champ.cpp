#include "analysis/windows/boite_champ.h"

#include <QFocusEvent>
#include <QKeyEvent>

#include "widgets/acces.h"
#include "widgets/conduite.h"
#include "widgets/style.h"
#include "widgets/verifications.h"

namespace {

/// As people write it: "deg" is "°".
QString unite_lisible(const std::string& u) {
    QString t = QString::fromStdString(u);
    return t.replace("deg", "°");
}

} // namespace

boite_champ::boite_champ(session& s, const QString& nom, const QString& champ, int caracteres)
    : s_(s), champ_(champ.toStdString()) {
    setObjectName(nom);
    style::boite_nombre(this, caracteres);
    setMaximumWidth(2 * minimumWidth());
    const element_etude x = element();
    if (!x.champ) return;
    const QString bornes = QString::fromStdString(texte_bornes(bornes_element(s_, x)));
    QString aide = QString::fromStdString(x.champ->sens);
    if (!bornes.isEmpty()) aide += "\n" + bornes;
    decrit(QString::fromStdString(titre_element(x)), unite_lisible(x.champ->unite), aide);
    lie_champ(this, x);
}

void boite_champ::echelle(double facteur, std::function<double(const etude&)> origine) {
    facteur_ = facteur;
    origine_ = std::move(origine);
}

void boite_champ::decrit(const QString& titre, const QString& unite, const QString& aide) {
    titre_ = titre;
    unite_ = unite;
    setAccessibleName(unite.isEmpty() ? titre : titre + ", en " + unite);
    setToolTip(aide);
}

element_etude boite_champ::element() const {
    element_etude x;
    std::string raison;
    return cherche_champ(champ_, s_, x, raison) ? x : element_etude{};
}

void boite_champ::montre() {
    const element_etude x = element();
    if (!x.champ) return;
    const double origine = origine_ ? origine_(s_) : 0;
    const double v = facteur_ * (valeur_montree(s_, x) - origine);
    // What a difference of dates or a conversion adds beyond is no part of what was typed.
    montre_ = QString::number(v == 0 ? 0 : v, 'g', origine_ ? 8 : 12);
    setText(montre_);
    setCursorPosition(0);
}

void boite_champ::valide() {
    if (en_cours_ || !touchee(this)) return;
    en_cours_ = true; // the message of a refused text takes the focus and gives it back
    double v = 0;
    std::string raison;
    bool pris = verif_double(this, text(), montre_, v);
    if (pris) {
        const double origine = origine_ ? origine_(s_) : 0;
        if (origine_ && !(v > 0))
            raison = "il faut plus que 0";
        else
            pris = change_champ(s_, element(), origine + v / facteur_, raison);
        pris = pris && raison.empty();
        if (!pris) refuse_saisie(this, montre_, titre_ + " : " + QString::fromStdString(raison));
    }
    en_cours_ = false;
    if (!pris) return;
    const QString avant = montre_;
    montre();
    if (origine_) // the field itself is a date, which tells a reader nothing
        s_.libelle_etape = QString("%1 %2 → %3 %4").arg(titre_, avant, montre_, unite_).toStdString();
    emit change();
}

void boite_champ::focusOutEvent(QFocusEvent* e) {
    QLineEdit::focusOutEvent(e);
    if (e->reason() != Qt::PopupFocusReason) valide();
}

void boite_champ::keyPressEvent(QKeyEvent* e) {
    if (e->key() != Qt::Key_Return && e->key() != Qt::Key_Enter) return QLineEdit::keyPressEvent(e);
    e->accept();
    valide();
    selectAll();
}
