/// The checks that the text boxes go through. On a fault a message box is shown, the old text comes back and
/// the box keeps the focus; where it was left by a click on another page or window, its own comes forward
/// again. Numbers are read with a point or a comma.
#pragma once

#include <QString>

class QLineEdit;
class QWidget;

/// True, with the number in x; otherwise "Type de donnée non valide". NaN, infinities and numbers outside of
/// the type's range are refused, and a fractional text in an integer box.
bool verif_double(QLineEdit* ctrl, const QString& texte, const QString& ancien, double& x);
bool verif_simple(QLineEdit* ctrl, const QString& texte, const QString& ancien, float& x);
bool verif_entier(QLineEdit* ctrl, const QString& texte, const QString& ancien, int& x);

/// True when x stands within the limits; a value equal to an exclusive limit is refused.
bool verif_bornes(QLineEdit* ctrl, double x, double min, double max, bool min_inclus, bool max_inclus,
                  const QString& ancien);
bool verif_max(QLineEdit* ctrl, double x, double max, bool max_inclus, const QString& ancien);
bool verif_min(QLineEdit* ctrl, double x, double min, bool min_inclus, const QString& ancien);

/// Refuses an entry for a reason of its own, with the warning icon; false.
bool refuse_saisie(QLineEdit* ctrl, const QString& ancien, const QString& texte);
/// Refuses a text that is no value of its kind: "Type de donnée non valide"; false.
bool refuse_type(QLineEdit* ctrl, const QString& ancien);

/// A message with the stop icon, the warning icon, or a yes/no question. Tests replace the function to answer
/// in a user's place and to read what was said.
enum class gravite { arret, avertissement, question };
using repondeur = bool (*)(gravite, const QString& texte);
/// `oui` is the answer of a question that Enter gives.
bool message(QWidget* parent, gravite g, const QString& texte, bool oui = true);
void remplace_repondeur(repondeur r); ///< nullptr: the real message boxes
