/// The other windows, which the main window makes on demand: shown, listed, with the keys of the whole
/// program.
#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QStatusBar>

#include "analysis/windows/verdict_vivant.h"
#include "shell/windows/etabli.h"
#include "shell/windows/fenetres.h"
#include "shell/windows/fra_simulation.h"
#include "shell/windows/guide.h"
#include "shell/windows/menu.h"
#include "widgets/fenetre.h"

fenetre* menu::montre_fenetre(const QString& nom, int page) {
    auto& place = fenetres_[nom];
    if (!place) {
        const fabrique_fenetre f = fabrique(nom);
        if (!f) {
            if (etabli_->montre(nom)) activateWindow();
            return nullptr;
        }
        place.reset(f(s_));
        fenetre* neuve = place.get();
        connect(neuve, &fenetre::configuration_changee, this, &menu::configuration_a_change);
        ajoute_raccourcis(neuve);
        if (nom.endsWith("_conf")) // whoever has changed a number wants to see what it does
            for (const char* action :
                 {"mn_sim_pow_com", "mn_sim_pow_gs", "mn_exp_pow_bat", "mn_exp_pow_data", "mn_sim_att_com"})
                neuve->addAction(findChild<QAction*>(action));
        montre_modele(neuve);
        if (nom == "orbito_conf" || nom == "power_conf") neuve->pose_pied(verdict_->nouveau_signe());
        connect(neuve, &fenetre::periode_changee, fra_simulation_, &fra_simulation::montre);
        connect(neuve, &fenetre::demande_fenetre, this, &menu::montre_fenetre);
        connect(neuve, &fenetre::resultats_changes, this, &menu::rafraichit);
        connect(neuve, &fenetre::allure_changee, fra_simulation_, &fra_simulation::montre_echelle);
        connect(neuve, &fenetre::demande_aide, this, &menu::montre_aide);
    }
    fenetre* f = place.get();
    if (page >= 0) f->montre_page(page);
    f->setWindowState(f->windowState() & ~Qt::WindowMinimized);
    f->show();
    f->raise();
    f->activateWindow();
    return f;
}

/// The guide at the section of a window, or at the entry of a number of the étude ("energie.bat_c").
void menu::montre_aide(const QString& de) {
    if (guide::fichier(s_).isEmpty()) return;
    fenetre* f = montre_fenetre("guide", de.contains('.') ? -1 : guide::page_de(de));
    if (auto* g = qobject_cast<guide*>(f); g && de.contains('.')) g->montre_champ(de);
}

/// Ctrl+S and Ctrl+Maj+S save the project of a window that saves nothing of its own.
void menu::ajoute_raccourcis(fenetre* f) {
    for (const QAction* a : f->findChildren<QAction*>())
        if (a->shortcuts().contains(QKeySequence::Save)) return;
    for (const QAbstractButton* b : f->findChildren<QAbstractButton*>())
        if (b->shortcut() == QKeySequence::Save) return;
    const bool attitude = f->tag() == "attconf";
    const std::pair<const char*, const char*> touches[] = {
        {"Ctrl+S", attitude ? "mn_attfich_enreg" : "mn_fichier_enreg"},
        {"Ctrl+Shift+S", attitude ? "mn_attfich_enregsous" : "mn_fichier_enregsous"}};
    for (const auto& [touche, commande] : touches)
        connect(new QShortcut(QKeySequence(touche), f), &QShortcut::activated, this, [this, f, commande] {
            // The box that is being edited takes its entry in first, and keeps the focus.
            if (QWidget* actif = f->focusWidget()) {
                actif->clearFocus();
                actif->setFocus();
            }
            findChild<QAction*>(enregistrement(commande))->trigger();
        });
}

/// The menu "Fenêtre": what is open, by the names of the guide.
void menu::remplit_fenetres() {
    auto* m = findChild<QMenu*>("mn_fenetre");
    m->clear();
    const auto ajoute = [&](QWidget* w, const QString& titre) {
        QAction* a = m->addAction(titre, this, [w] {
            w->setWindowState(w->windowState() & ~Qt::WindowMinimized);
            w->raise();
            w->activateWindow();
        });
        a->setCheckable(true);
        a->setChecked(w->isActiveWindow());
        a->setStatusTip("Mettre « " + titre + " » au premier plan");
    };
    ajoute(this, "Fenêtre principale");
    m->addSeparator();
    for (auto& [nom, f] : fenetres_)
        if (f && f->isVisible()) {
            const QString titre = guide::titre_page(guide::page_de(nom));
            ajoute(f.get(), titre.isEmpty() ? f->windowTitle() : titre);
        }
    m->addSeparator();
    m->addAction("&Tout fermer", this, [this] {
        for (auto& [nom, f] : fenetres_)
            if (f) f->close();
    });
}

/// Says in the status bar what has been done, and in the window that is in front.
void menu::signale(const QString& texte) {
    statusBar()->showMessage(texte, 20000);
    if (auto* f = qobject_cast<fenetre*>(QApplication::activeWindow())) f->signale(texte);
}
