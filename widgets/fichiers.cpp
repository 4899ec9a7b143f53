#include "widgets/fichiers.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>

#include "widgets/verifications.h"

namespace {

/// The ending of a filter's first pattern; empty for "*.*".
QString suffixe_de(const QString& filtre) {
    static const QRegularExpression motif(R"(\(\*\.(\w+))");
    return motif.match(filtre).captured(1);
}

} // namespace

QString demande_nom(QWidget* parent, const QString& titre, const QString& propose, const QString& filtres) {
    const QFileInfo depart(propose);
    QFileDialog d(parent, titre, depart.isDir() ? propose : depart.path(), filtres);
    d.setAcceptMode(QFileDialog::AcceptSave);
    d.setDefaultSuffix(suffixe_de(filtres));
    if (!depart.isDir()) d.selectFile(depart.fileName());
    QObject::connect(&d, &QFileDialog::filterSelected, &d, [&d](const QString& filtre) {
        if (const QString s = suffixe_de(filtre); !s.isEmpty()) d.setDefaultSuffix(s);
    });
    return d.exec() == QDialog::Accepted ? d.selectedFiles().value(0) : QString();
}

bool dit_echec_ecriture(QWidget* parent, const QString& chemin, const QString& raison) {
    message(parent, gravite::arret,
            QString("« %1 » n'a pas pu être enregistré.\n%2\nLes résultats restent dans la fenêtre : "
                    "choisissez un autre dossier.")
                .arg(chemin, raison));
    return false;
}
