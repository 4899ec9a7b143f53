#include "shell/windows/rapporteur.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>

#include "analysis/rapport.h"
#include "analysis/windows/rapport_pdf.h"
#include "shell/ecriture.h"
#include "shell/windows/menu.h"
#include "widgets/verifications.h"

namespace {

QString nom_etude(const session& s) {
    if (!s.chemin_etude.empty()) return QFileInfo(QString::fromStdString(s.chemin_etude)).completeBaseName();
    return QString::fromStdString(s.modele_energie.empty() ? reglages_rapport{}.titre : s.modele_energie);
}

} // namespace

rapporteur::rapporteur(const session& s, menu& m)
    : s_(s), m_(m), tache_(&m, [this](const ecrit& e) { fini(e); }) {}

void rapporteur::demande() {
    const QString dossier = QString::fromStdString(s_.dossier_depart);
    const QString chemin = m_.choisit_fichier(&m_, {"Rapport de l'étude", "PDF (*.pdf);;Page web (*.html)",
                                                    dossier, "Rapport " + nom_etude(s_), "pdf", false});
    QDir::setCurrent(dossier);
    if (chemin.isEmpty()) return;
    m_.signale("Rapport en préparation…");
    reglages_rapport r{.titre = nom_etude(s_).toStdString(),
                       .date = QDate::currentDate().toString("dd/MM/yyyy").toStdString(),
                       .version = QCoreApplication::applicationVersion().toStdString(),
                       .orbites = 0,
                       .dossier_donnees = s_.dossier_depart,
                       .arret = {}};
    tache_.lance([e = etude(s_), r, chemin](std::stop_token arret) mutable {
        r.arret = arret;
        const rapport contenu = fait_rapport(e, r);
        ecrit fait{chemin, {}};
        if (arret.stop_requested()) return fait;
        const bool html = QFileInfo(chemin).suffix().startsWith("htm", Qt::CaseInsensitive);
        const std::string octets = html ? rapport_html(contenu) : rapport_pdf(contenu).toStdString();
        remplace_fichier(chemin.toStdString(), octets, fait.raison);
        return fait;
    });
}

void rapporteur::fini(const ecrit& e) {
    if (e.raison.empty())
        m_.signale("Rapport écrit : " + QDir::toNativeSeparators(e.chemin));
    else
        message(&m_, gravite::arret,
                "Le rapport n'a pas pu être écrit.\n" + e.chemin + " : " + QString::fromStdString(e.raison));
}
