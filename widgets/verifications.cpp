#include "widgets/verifications.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>

#include <cmath>
#include <limits>

#include "shell/formats.h"
#include "widgets/conduite.h"

namespace {

/// Tests answer in a user's place; the program itself never sets it.
repondeur& repondeur_en_place() {
    static repondeur r = nullptr;
    return r;
}

/// The old text comes back before the box is shown: the box takes the focus away, and a text box that still
/// held the refused text would be checked, and complained about, a second time.
bool refuse(QLineEdit* ctrl, const QString& ancien, gravite g, const QString& texte) {
    const QPointer<QLineEdit> boite(ctrl); // the window may be closed while the message stands
    if (ctrl) {
        const QSignalBlocker muet(ctrl);
        ctrl->setText(ancien);
    }
    message(ctrl, g, texte);
    if (boite) ramene(boite);
    return false;
}

bool type_invalide(QLineEdit* ctrl, const QString& ancien) {
    return refuse(ctrl, ancien, gravite::arret, "Type de donnée non valide");
}

/// A limit that is itself a single precision value shows as the number that it stands for: 0.1, not
/// 0.10000000149011612.
QString nombre(double x) {
    const auto simple = static_cast<float>(x);
    return QString::fromStdString(simple == x ? format_court(simple) : format_court(x));
}

} // namespace

void remplace_repondeur(repondeur r) { repondeur_en_place() = r; }

bool message(QWidget* parent, gravite g, const QString& texte, bool oui) {
    if (repondeur_en_place()) return repondeur_en_place()(g, texte);
    QMessageBox boite(parent ? parent->window() : nullptr);
    boite.setWindowTitle("KESTREL");
    boite.setTextFormat(Qt::PlainText); // a path may look like a tag
    boite.setText(texte);
    if (g == gravite::question) {
        boite.setIcon(QMessageBox::Question);
        boite.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        boite.setDefaultButton(oui ? QMessageBox::Yes : QMessageBox::No);
        boite.button(QMessageBox::Yes)->setText("&Oui");
        boite.button(QMessageBox::No)->setText("&Non");
        return boite.exec() == QMessageBox::Yes;
    }
    boite.setIcon(g == gravite::arret ? QMessageBox::Critical : QMessageBox::Warning);
    boite.exec();
    return true;
}

bool refuse_saisie(QLineEdit* ctrl, const QString& ancien, const QString& texte) {
    return refuse(ctrl, ancien, gravite::avertissement, texte);
}

bool refuse_type(QLineEdit* ctrl, const QString& ancien) { return type_invalide(ctrl, ancien); }

bool verif_double(QLineEdit* ctrl, const QString& texte, const QString& ancien, double& x) {
    return lit_nombre(texte.toStdString(), x) || type_invalide(ctrl, ancien);
}

bool verif_simple(QLineEdit* ctrl, const QString& texte, const QString& ancien, float& x) {
    double lu = 0.0;
    if (!lit_nombre(texte.toStdString(), lu) || std::fabs(lu) > std::numeric_limits<float>::max())
        return type_invalide(ctrl, ancien);
    x = static_cast<float>(lu);
    return true;
}

bool verif_entier(QLineEdit* ctrl, const QString& texte, const QString& ancien, int& x) {
    double lu = 0.0;
    if (!lit_nombre(texte.toStdString(), lu) || lu != std::floor(lu) ||
        lu < std::numeric_limits<int>::min() || lu > std::numeric_limits<int>::max())
        return type_invalide(ctrl, ancien);
    x = static_cast<int>(lu);
    return true;
}

bool verif_bornes(QLineEdit* ctrl, double x, double min, double max, bool min_inclus, bool max_inclus,
                  const QString& ancien) {
    const bool bas = min_inclus ? x >= min : x > min;
    const bool haut = max_inclus ? x <= max : x < max;
    if (bas && haut) return true;
    return refuse(ctrl, ancien, gravite::avertissement,
                  "Valeur hors limite !! Saisissez une valeur : \n" + nombre(min) +
                      (min_inclus ? " <=" : " <") + (max_inclus ? " Valeur <= " : " Valeur < ") +
                      nombre(max));
}

bool verif_max(QLineEdit* ctrl, double x, double max, bool max_inclus, const QString& ancien) {
    if (max_inclus ? x <= max : x < max) return true;
    return refuse(ctrl, ancien, gravite::avertissement,
                  "Valeur excessive !! Saisissez une valeur " + QString(max_inclus ? "<= " : "< ") +
                      nombre(max));
}

bool verif_min(QLineEdit* ctrl, double x, double min, bool min_inclus, const QString& ancien) {
    if (min_inclus ? x >= min : x > min) return true;
    return refuse(ctrl, ancien, gravite::avertissement,
                  "Valeur insuffisante! Saisissez une valeur " + QString(min_inclus ? ">= " : "> ") +
                      nombre(min));
}
