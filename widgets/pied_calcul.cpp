#include "widgets/pied_calcul.h"

#include <QBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>

#include <algorithm>

#include "widgets/style.h"
#include "widgets/textes.h"

pied_calcul::pied_calcul(const QString& aide_calcul, const QString& aide_enregistrement, QWidget* parent)
    : QWidget(parent), statusbar_(new QProgressBar), lab_status_(new QLabel) {
    auto* ligne = new QHBoxLayout(this);
    ligne->setContentsMargins(0, 0, 0, 0);
    ligne->setSpacing(style::espace(2));
    statusbar_->setObjectName("statusbar");
    statusbar_->setRange(0, 1000);
    statusbar_->setTextVisible(false);
    statusbar_->setToolTip("Part de la période qui est calculée");
    ligne->addWidget(statusbar_, 1);
    lab_status_->setObjectName("lab_status");
    lab_status_->setFont(style::police_nombres(lab_status_));
    lab_status_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lab_status_->setFixedWidth(lab_status_->fontMetrics().horizontalAdvance("100.0 % ") + style::espace());
    ligne->addWidget(lab_status_);

    const auto bouton = [&](const char* nom, const char* texte, const QString& aide,
                            void (pied_calcul::*dit)()) {
        auto* b = new QPushButton(texte);
        b->setObjectName(nom);
        b->setToolTip(aide);
        style::bouton_pied(b);
        ligne->addWidget(b);
        connect(b, &QPushButton::clicked, this, dit);
        return b;
    };
    cmd_stopcalcul_ = bouton("cmd_stopcalcul", "&Interrompre", "Arrête le calcul à la fin du pas en cours",
                             &pied_calcul::interrompre);
    ligne->addSpacing(style::espace(4));
    cmd_saisir_ = bouton("cmd_saisir", "&Calculer", aide_calcul + " (F5)", &pied_calcul::calculer);
    connect(new QShortcut(QKeySequence("F5"), this), &QShortcut::activated, cmd_saisir_, &QPushButton::click);
    cmd_save_ = bouton("cmd_save", "&Enregistrer", aide_enregistrement, &pied_calcul::enregistrer);
    bouton("cmd_quit", "&Quitter", "Ferme la fenêtre (Échap)", &pied_calcul::quitter);
    boutons_ = {cmd_saisir_, cmd_stopcalcul_};
    etat(false);
}

void pied_calcul::ajoute(QWidget* w) {
    auto* ligne = static_cast<QHBoxLayout*>(layout());
    ligne->insertWidget(ligne->count() - 1, w);
}

void depart_arret::etat(bool en_cours) {
    const QWidget* avant = lance->window()->focusWidget();
    arrete->setEnabled(en_cours);
    lance->setEnabled(!en_cours);
    // A button that is disabled hands its focus on, in the end to "Quitter": the next Space would close the
    // window with its results. During the run nobody has it, and then the button that starts again.
    if (en_cours) {
        rend_focus = avant == lance;
        if (QWidget* w = lance->window()->focusWidget(); rend_focus && w) w->clearFocus();
    } else if (avant == arrete || (rend_focus && !avant)) {
        lance->setFocus();
    }
}

void pied_calcul::etat(bool en_cours) {
    cmd_save_->setEnabled(!en_cours);
    boutons_.etat(en_cours);
}

void pied_calcul::avance(double fraction) {
    const double pour_cent = std::min(100.0, 100 * fraction);
    statusbar_->setValue(static_cast<int>(pour_cent * 10));
    lab_status_->setText(texte_image(pour_cent, "0.0") + " %");
}
