/// The choice of the model in the main window, and the sign of it in every window.
#include <QAction>
#include <QActionGroup>
#include <QMenu>

#include "analysis/modes.h"
#include "shell/windows/etabli.h"
#include "shell/windows/menu.h"
#include "widgets/fenetre.h"
#include "widgets/marque_modele.h"

namespace {

/// What a window has to say of the model and of the consumption modes in force; empty for nothing.
QString note_de(const QString& fenetre, const etude& e) {
    QStringList t;
    if (fenetre == "att_sim" && e.modele.physique)
        t << "Cette simulation reste celle du modèle de référence. L'attitude du modèle physique : "
             "<a href=\"page_banc\">banc d'attitude</a>, <a href=\"page_courbes\">courbes</a>.";
    if (fenetre == "att_exp_data" && e.modele.physique)
        t << "Couples du modèle physique au pointage nominal. Ceux de l'attitude atteinte : "
             "<a href=\"page_banc\">banc d'attitude</a>.";
    if (fenetre == "power_exp_bat" && (e.modele.physique || !e.modes.empty()))
        t << "Essai d'un accumulateur seul : ni le modèle ni les modes de consommation n'y changent rien.";
    const bool suit_la_demande =
        fenetre == "power_sim_all" || fenetre == "power_exp_pan" || fenetre == "power_exp_data";
    if (suit_la_demande && !e.modes.empty())
        t << QString::fromStdString(phrase_modes(e)).toHtmlEscaped() +
                 " <a href=\"page_bilan\">Bilan, modes de consommation</a>";
    return t.join("<br>");
}

} // namespace

/// The entries of the model's menu: checkable, each an edit of the étude.
void menu::construit_modele() {
    const auto lie = [this](const QString& nom, auto change) {
        auto* a = findChild<QAction*>(nom);
        a->setCheckable(true);
        connect(a, &QAction::triggered, this, [this, change](bool coche) {
            change(coche);
            s_.config_modifiee = 1;
            configuration_a_change();
        });
        return a;
    };
    auto* groupe = new QActionGroup(this);
    groupe->addAction(lie("mn_modele_reference", [this](bool) { s_.modele.physique = false; }));
    groupe->addAction(lie("mn_modele_physique", [this](bool) { s_.modele.physique = true; }));
    for (const partie_modele& p : parties_modele())
        lie(QString("mn_modele_") + p.nom, [this, sans = p.sans](bool avec) { s_.modele.*sans = !avec; });
}

/// Menu, titles and notes as the étude has it.
void menu::montre_modele() {
    const options_modele& m = s_.modele;
    findChild<QAction*>(m.physique ? "mn_modele_physique" : "mn_modele_reference")->setChecked(true);
    for (const partie_modele& p : parties_modele()) {
        auto* a = findChild<QAction*>(QString("mn_modele_") + p.nom);
        a->setChecked(!(m.*p.sans));
        a->setEnabled(m.physique);
    }
    if (windowTitle().contains(mention_physique) != m.physique) montre_titres();
    for (auto& [nom, f] : fenetres_)
        if (f) montre_modele(f.get());
}

void menu::montre_modele(fenetre* f) {
    f->mentionne(s_.modele.physique ? QString(mention_physique) : QString());
    f->montre_note(note_de(f->objectName(), s_));
}

QString menu::titre_du_modele() const {
    return s_.modele.physique ? QString(" – ") + mention_physique : QString();
}
