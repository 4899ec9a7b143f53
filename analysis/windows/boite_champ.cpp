#include "analysis/windows/boite_champ.h"

#include <QKeyEvent>

#include "widgets/acces.h"
#include "widgets/verifications.h"

namespace {

/// As people write it: "deg" is "°".
QString unite_lisible(const std::string& u) {
    QString t = QString::fromStdString(u);
    return t.replace("deg", "°");
}

} // namespace

boite_champ::boite_champ(session& s, const QString& nom, const QString& champ, int caracteres)
    : boite_nombre(caracteres), s_(s), champ_(champ.toStdString()) {
    setObjectName(nom);
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

double boite_champ::stocke() const {
    const element_etude x = element();
    return x.champ ? valeur_montree(s_, x) : 0;
}

QString boite_champ::texte_stocke() const {
    const double v = facteur_ * (stocke() - origine());
    // What a difference of dates or a conversion adds beyond is no part of what was typed.
    return QString::number(v == 0 ? 0 : v, 'g', origine_ ? 8 : 12);
}

bool boite_champ::prend() {
    double v = 0;
    if (!verif_double(this, text(), ancien(), v)) return false;
    std::string raison;
    if (origine_ && !(v > 0))
        raison = "il faut plus que 0";
    else
        change_champ(s_, element(), origine() + v / facteur_, raison);
    if (!raison.empty()) {
        refuse_saisie(this, ancien(), titre_ + " : " + QString::fromStdString(raison));
        return false;
    }
    if (origine_) // the field itself is a date, which tells a reader nothing
        s_.libelle_etape =
            QString("%1 %2 → %3 %4").arg(titre_, ancien(), texte_stocke(), unite_).toStdString();
    return true;
}

void boite_champ::keyPressEvent(QKeyEvent* e) {
    boite_nombre::keyPressEvent(e);
    if (e->key() != Qt::Key_Return && e->key() != Qt::Key_Enter) return;
    e->accept();
    selectAll();
}
