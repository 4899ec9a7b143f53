#include "widgets/fichiers.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSortFilterProxyModel>

#include "widgets/verifications.h"

namespace {

constexpr const char* dernier_dossier = "kestrel_dernier_dossier";

/// Hides the files that cannot be written.
class sans_proteges : public QSortFilterProxyModel {
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

protected:
    bool filterAcceptsRow(int ligne, const QModelIndex& parent) const override {
        const auto* modele = qobject_cast<QFileSystemModel*>(sourceModel());
        if (!modele) return true;
        const QFileInfo f = modele->fileInfo(modele->index(ligne, 0, parent));
        return !f.isFile() || !protege_en_ecriture(f.filePath());
    }
};

/// The folder last used in a dialog, or the first one.
QString depart(const QString& premier) {
    const QString dernier = qApp->property(dernier_dossier).toString();
    return QFileInfo(dernier).isDir() ? dernier : premier;
}

QString choisi(QFileDialog& d) {
    if (d.exec() != QDialog::Accepted) return {};
    const QString chemin = d.selectedFiles().value(0);
    retient_dossier(chemin);
    return chemin;
}

} // namespace

void retient_dossier(const QString& chemin) { qApp->setProperty(dernier_dossier, QFileInfo(chemin).path()); }

bool protege_en_ecriture(const QString& chemin) {
    const QFileInfo f(chemin);
    // No write bit at all counts for the superuser too.
    return f.exists() && (!f.isWritable() ||
                          !(f.permissions() & (QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther)));
}

QString avec_suffixe(const QString& nom, const QString& filtre) {
    static const QRegularExpression motif(R"(\*(\.[^\s)*?]+))");
    QString premier;
    for (auto i = motif.globalMatch(filtre); i.hasNext();) {
        const QString fin = i.next().captured(1);
        if (nom.endsWith(fin, Qt::CaseInsensitive)) return nom;
        if (premier.isEmpty()) premier = fin;
    }
    return nom + premier;
}

QString demande_nom(QWidget* parent, const QString& titre, const QString& propose, const QString& filtres) {
    const QFileInfo premier(propose);
    QFileDialog d(parent, titre, depart(premier.isDir() ? propose : premier.path()), filtres);
    d.setAcceptMode(QFileDialog::AcceptSave);
    d.setOption(QFileDialog::DontConfirmOverwrite); // the name is not whole yet when the dialog would ask
    d.setOption(QFileDialog::DontUseNativeDialog);  // the desktop's own cannot hide the protected files
    d.setProxyModel(new sans_proteges(&d));
    if (!premier.isDir()) d.selectFile(premier.fileName());
    for (;;) {
        QString chemin = choisi(d);
        if (chemin.isEmpty()) return {};
        const QString filtre = d.selectedNameFilter();
        chemin = avec_suffixe(chemin, filtre.contains("*.*") ? filtres : filtre);
        if (!QFileInfo::exists(chemin) ||
            message(parent, gravite::question,
                    QString("« %1 » existe déjà.\nVoulez-vous le remplacer ?").arg(chemin), false))
            return chemin;
    }
}

QString demande_lecture(QWidget* parent, const QString& titre, const QString& dossier,
                        const QString& filtres) {
    QFileDialog d(parent, titre, depart(dossier), filtres);
    d.setFileMode(QFileDialog::ExistingFile);
    return choisi(d);
}

bool enregistre_octets(QWidget* parent, const QString& chemin, const QByteArray& octets) {
    QSaveFile f(chemin);
    return (f.open(QIODevice::WriteOnly) && f.write(octets) == octets.size() && f.commit()) ||
           dit_echec_ecriture(parent, chemin, f.errorString());
}

bool dit_echec_ecriture(QWidget* parent, const QString& chemin, const QString& raison) {
    message(parent, gravite::arret,
            QString("« %1 » n'a pas pu être enregistré.\n%2\nLes résultats restent dans la fenêtre : "
                    "choisissez un autre dossier.")
                .arg(chemin, raison));
    return false;
}
