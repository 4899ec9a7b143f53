#include "shell/windows/notes_html.h"

#include <QRegularExpression>
#include <QStringList>

#include <utility>

#include "project/etude_champs.h"

namespace {

/// A line of the notes, each field that it names ("bat_c=6") a link to the window that edits it.
QString avec_liens(const QString& ligne, const etude& e) {
    static const QRegularExpression champ(R"(([a-zA-Z_]\w*(?:\[\d+\]|\.\w+)*)=)");
    QString texte;
    qsizetype fait = 0;
    for (auto i = champ.globalMatch(ligne); i.hasNext();) {
        const auto m = i.next();
        element_etude x;
        std::string raison;
        if (!cherche_champ(m.captured(1).toStdString(), e, x, raison)) continue;
        const QString fenetre = x.champ->fenetre;
        if (fenetre.isEmpty() || fenetre == "menu") continue;
        texte += ligne.mid(fait, m.capturedStart() - fait).toHtmlEscaped() +
                 QString("<a href=\"%1:%2\">%3</a>").arg(fenetre).arg(x.champ->page).arg(m.captured(1));
        fait = m.capturedEnd(1);
    }
    return texte + ligne.mid(fait).toHtmlEscaped();
}

} // namespace

QString notes_en_html(const etude& e) {
    const QString notes = QString::fromStdString(e.notes);
    QString texte, listes, avant;
    bool dans_liste = false;
    const auto ferme = [&] {
        if (dans_liste) listes += "</ul></td>";
        dans_liste = false;
    };
    for (const QString& ligne : notes.split('\n')) {
        const QString propre = avec_liens(ligne.trimmed(), e);
        if (propre.startsWith("- ")) {
            if (!dans_liste)
                listes += "<td width=\"50%\"><b>" + std::exchange(avant, {}) +
                          "</b><ul style=\"margin-top:2px; margin-left:14px; -qt-list-indent:0\">";
            dans_liste = true;
            listes += "<li>" + propre.sliced(2) + "</li>";
            continue;
        }
        ferme();
        if (!avant.isEmpty()) texte += avant + "<br>";
        avant = propre;
    }
    ferme();
    texte += avant;
    while (texte.endsWith("<br>")) texte.chop(4);
    return listes.isEmpty()
               ? texte
               : texte + "<table width=\"100%\" cellspacing=\"6\"><tr>" + listes + "</tr></table>";
}
