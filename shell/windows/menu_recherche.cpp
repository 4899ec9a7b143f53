/// What "Chercher…" can find, and the way there.
#include "shell/windows/menu.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QStackedWidget>

#include "analysis/windows/choix_variables.h"
#include "analysis/windows/page_courbes.h"
#include "project/etude_champs.h"
#include "shell/windows/etabli.h"
#include "shell/windows/fra_simulation.h"
#include "shell/windows/recherche.h"
#include "widgets/acces.h"
#include "widgets/conduite.h"
#include "widgets/fenetre.h"

namespace {

/// The commands of a menu and its sub-menus.
void ajoute_actions(const QMenu* m, const QString& chemin, QList<lieu>& lieux) {
    for (QAction* a : m->actions()) {
        QString titre = a->text().section('\t', 0, 0).trimmed();
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

/// Hidden by a choice, not by the tab in front.
bool cache(const QWidget* w) {
    for (; !w->isWindow(); w = w->parentWidget())
        if (w->isHidden() && !qobject_cast<const QStackedWidget*>(w->parentWidget())) return true;
    return false;
}

} // namespace

QList<lieu> menu::lieux() {
    QList<lieu> tous;
    for (const QAction* a : menuBar()->actions())
        if (a->menu()) ajoute_actions(a->menu(), a->text().remove('&'), tous);
    for (const champ_etude& c : etude_champs()) {
        if (c.annexe || !*c.fenetre) continue;
        for (int i = 0; i < (c.liste ? 1 : c.nombre()); ++i) tous << lieu_du_champ({&c, 0, i});
    }
    for (const auto& v : choix_variables::lignes_de(s_))
        tous << lieu{v.texte, "Courbe · " + v.nom, v.nom + ' ' + v.bulle.section('\n', 1, 1),
                     [this, nom = v.nom] {
                         etabli_->montre("page_courbes");
                         if (auto* p = qobject_cast<page_courbes*>(etabli_->de("page_courbes")))
                             p->montre_variable(nom);
                     }};
    return tous;
}

lieu menu::lieu_du_champ(const element_etude& x) {
    const champ_etude& c = *x.champ;
    QString titre = QString::fromStdString(titre_element(x));
    if (!titre.isEmpty()) titre[0] = titre[0].toUpper();
    const QString unite = QString::fromStdString(c.unite), nom = QString::fromStdString(nom_element(x));
    if (!unite.isEmpty()) titre += " (" + unite + ")";
    const QString chemin = QString::fromStdString(chemin_element(x));
    return {titre, QString("Réglage · %1 · %2").arg(QString::fromUtf8(c.groupe), nom),
            QStringList{nom.section('[', 0, 0), chemin, unite, QString::fromStdString(c.sens)}.join(' '),
            [this, x, chemin] { montre_champ(*x.champ, chemin); }};
}

/// Goes to the box of a number: its window, its tab, its element where a list shows one at a time.
void menu::montre_champ(const champ_etude& c, const QString& chemin) {
    const QString nom = c.fenetre;
    const bool page = etabli_->noms().contains(nom);
    fenetre* f = page || nom == objectName() ? nullptr : montre_fenetre(nom, c.page);
    if (page) etabli_->montre(nom);
    if (nom == objectName()) findChild<QAction*>("mn_outils")->setChecked(true);
    QWidget* ou = f;
    if (!f) ou = page ? static_cast<QWidget*>(etabli_->de(nom)) : fra_simulation_;
    QWidget* boite = amene_au_champ(ou, chemin);
    if (!boite) return;
    if (boite->isEnabled() && !cache(boite)) return ramene(boite);
    if (f)
        f->signale("Ce réglage ne sert pas avec les choix faits sur cette page : il y est grisé ou caché.");
}

void menu::ouvre_recherche() {
    recherche boite(lieux(), this);
    if (boite.exec() == QDialog::Accepted && boite.choix()) boite.choix()();
}
