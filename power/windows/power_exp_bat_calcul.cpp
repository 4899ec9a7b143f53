/// The run of the battery study.
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>
#include <cmath>

#include "power/diagnostic.h"
#include "power/windows/power_exp_bat.h"
#include "shell/formats.h"
#include "shell/lancement.h"
#include "shell/surveillance.h"
#include "widgets/course.h"
#include "widgets/graphe.h"
#include "widgets/pied_calcul.h"
#include "widgets/verifications.h"

void power_exp_bat::etat_boutons(bool en_cours) {
    en_cours_ = en_cours;
    boutons_.etat(en_cours);
}

/// The capacity is the divisor of the discharge: an accumulator without any cannot be studied.
bool power_exp_bat::accepte_temperature() {
    const std::string refus = refus_etude_batterie(s_.power, saisies_[tchde].valeur);
    if (refus.empty()) return true;
    message(this, gravite::avertissement, QString::fromStdString(refus));
    saisies_[tchde].boite->setFocus();
    saisies_[tchde].boite->selectAll();
    return false;
}

void power_exp_bat::cmd_saisir_clic() {
    if (en_cours_) return;
    for (int c = 0; c < nombre_champs; ++c)
        if (!valide(static_cast<champ>(c))) return;
    if (!accepte_temperature() || !exige(!s_.calcul_en_cours, message_calcul_en_cours)) return;
    reglages_batterie r;
    r.duree = saisies_[tecl].valeur;
    r.temperature = saisies_[tchde].valeur;
    r.k = saisies_[chk].valeur;
    r.v_max = saisies_[chvmax].valeur;
    r.i_charge = saisies_[chcour].valeur;
    r.puissance_constante = opt_depuis_->isChecked();
    r.p_decharge = saisies_[depuis].valeur;
    r.i_decharge = saisies_[decour].valeur;

    power_record copie = s_.power; // the curves of the project; the study stands apart from its state
    etude_batterie etude(copie, r);
    lab_dod_->clear();
    lab_tch_->clear();
    montre_bandeau({});
    for (graphe* g : pict_graphs_) {
        g->donnees(0, {}, {});
        g->bandes({{0.0, r.duree}});
    }
    fin_decharge_ = r.duree;
    t_dernier_ = 0;
    if (!deroule(etude)) return;
    etat_boutons(false);
    regle_defilement(false);
    retrace_courbes();
}

bool power_exp_bat::deroule(etude_batterie& etude) {
    course c(s_, s_.periode, false);
    surveillance veille;
    stop_ = false;
    etat_boutons(true);
    lab_status_->setText("Décharge…");
    statusbar_->setRange(0, std::max(1, static_cast<int>(fin_decharge_ * 100)));
    switch (phase(etude, &etude_batterie::decharge, c, veille)) {
    case suite::disparue: return false;
    case suite::arrete: return true;
    default: break;
    }
    lab_dod_->setText(QString::number(etude.profondeur()));
    lab_status_->setText("Recharge…");
    statusbar_->setRange(100, 200);
    switch (phase(etude, &etude_batterie::recharge, c, veille)) {
    case suite::disparue: return false;
    case suite::arrete: return true;
    default: break;
    }
    lab_tch_->setText(QString::fromStdString(format_duree(etude.temps_recharge())));
    lab_status_->setText("Terminé");
    statusbar_->setValue(statusbar_->maximum());
    return true;
}

power_exp_bat::suite power_exp_bat::phase(etude_batterie& etude,
                                          bool (etude_batterie::*seconde)(point_batterie&), course& c,
                                          surveillance& veille) {
    const QPointer<power_exp_bat> moi(this);
    point_batterie pt;
    for (;;) {
        veille.efface();
        const bool reste = (etude.*seconde)(pt);
        if (veille.faute()) {
            const QString raison = QString::fromStdString(surveillance::description());
            dit_faute(etude, raison);
            return suite::arrete;
        }
        if (!reste) return suite::continue_;
        if (pt.t % 10 == 0) ajoute_point(pt);
        if (etude.charge_a_signaler()) renvoie(message_charge_incompatible, "power_conf", page_batteries);
        if (!c.a_servir()) continue;
        if (c.a_montrer()) {
            statusbar_->setValue(
                std::clamp(etude.avancement(), statusbar_->minimum(), statusbar_->maximum()));
            regle_defilement(true);
            retrace_courbes();
        }
        course::sert_evenements();
        if (!moi) return suite::disparue;
        if (stop_) {
            lab_status_->setText("Interrompu");
            return suite::arrete;
        }
    }
}

void power_exp_bat::dit_faute(const etude_batterie& etude, const QString& raison) {
    const QString quand = QString::fromStdString(format_duree(t_dernier_));
    lab_status_->setText("Arrêté sur une faute");
    message(
        this, gravite::arret,
        etude.sans_fin()
            ? QString("La recharge ne se termine pas : après %1 secondes l'accumulateur n'est pas plein.\n"
                      "Augmentez le courant de charge ou la tension maximum.")
                  .arg(passes_max)
            : QString("Faute numérique : l'étude de la batterie s'est arrêtée vers t = %1.\n%2\n"
                      "Vérifiez les valeurs saisies et les courbes de la batterie.")
                  .arg(quand, raison));
}

void power_exp_bat::ajoute_point(const point_batterie& pt) {
    t_dernier_ = pt.t;
    const double minutes = static_cast<double>(pt.t) / 60;
    pict_graphs_[0]->ajoute_point(0, minutes, pt.v);
    pict_graphs_[1]->ajoute_point(0, minutes, pt.s * 100);
}
