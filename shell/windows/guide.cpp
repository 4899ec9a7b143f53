#include "shell/windows/guide.h"

#include <QFile>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include "shell/windows/style.h"

guide::guide(session& s, QWidget* parent) : fenetre(s, "guide", "Guide de l'utilisateur", parent) {
    auto* texte = new QTextBrowser;
    texte->setObjectName("txt_guide");
    texte->setOpenExternalLinks(true);
    texte->document()->setDocumentMargin(style::espace(6));
    texte->setSource(QUrl::fromLocalFile(fichier(s)));
    auto* pile = new QVBoxLayout(contenu());
    pile->setContentsMargins(0, 0, 0, 0);
    pile->addWidget(texte);
    resize(style::espace(220), style::espace(170));
}

QString guide::fichier(const session& s) {
    const QString dossier = QString::fromStdString(s.dossier_depart);
    for (const char* nom : {"/guide/guide.html", "/guide/guide.md"})
        if (QFile::exists(dossier + nom)) return dossier + nom;
    return {};
}
