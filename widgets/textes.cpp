#include "widgets/textes.h"

QString sans_accents(const QString& texte) {
    QString nu;
    for (const QChar c : texte.normalized(QString::NormalizationForm_KD))
        if (c.category() != QChar::Mark_NonSpacing) nu += c.toLower();
    return nu.replace("œ", "oe");
}
