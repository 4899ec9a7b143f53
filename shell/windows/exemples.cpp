#include "shell/windows/exemples.h"

#include <QFile>
#include <QStringList>

QList<exemple> lit_exemples(const QString& dossier) {
    QList<exemple> liste;
    QFile fichier(dossier + "/exemples/exemples.txt");
    if (!fichier.open(QIODevice::ReadOnly)) return liste;
    const auto lignes = QString::fromUtf8(fichier.readAll()).split('\n', Qt::SkipEmptyParts);
    for (const QString& ligne : lignes) {
        const QStringList champs = ligne.trimmed().split(';');
        if (ligne.startsWith('#') || champs.size() != 4) continue;
        const exemple e{dossier + "/exemples/" + champs[0].trimmed(), champs[1].trimmed(),
                        champs[2].trimmed(), champs[3].trimmed()};
        if (QFile::exists(e.base + ".kestrel")) liste << e;
    }
    return liste;
}
