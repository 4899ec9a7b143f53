/// What "Chercher…" can find, and the way there.
#include "shell/windows/menu.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "shell/windows/recherche.h"

namespace {

/// The commands of a menu and its sub-menus.
void ajoute_actions(const QMenu* m, const QString& chemin, QList<lieu>& lieux) {
    for (QAction* a : m->actions()) {
        QString titre = a->text().trimmed();
        titre.remove('&');
        if (a->menu()) {
            ajoute_actions(a->menu(), chemin + " › " + titre, lieux);
            continue;
        }
        if (a->isSeparator() || !a->isEnabled()) continue;
        lieux << lieu{titre, chemin, a->statusTip() + ' ' + a->shortcut().toString(QKeySequence::NativeText),
                      [a] { a->trigger(); }};
    }
}

} // namespace

QList<lieu> menu::lieux() {
    QList<lieu> tous;
    for (const QAction* a : menuBar()->actions())
        if (a->menu()) ajoute_actions(a->menu(), a->text().remove('&'), tous);
    return tous;
}

void menu::ouvre_recherche() {
    recherche boite(lieux(), this);
    if (boite.exec() == QDialog::Accepted && boite.choix()) boite.choix()();
}
