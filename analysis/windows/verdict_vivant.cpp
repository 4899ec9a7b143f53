#include "analysis/windows/verdict_vivant.h"

#include "analysis/phrase_bilan.h"
#include "project/etude_compare.h"

verdict_vivant::verdict_vivant(session& s, QObject* parent)
    : QObject(parent), s_(s), tache_(this, [this](bilan b) { montre(std::move(b)); }) {}

void verdict_vivant::suit() {
    if (!jamais_ && meme_etude(vue_, s_)) return;
    jamais_ = false;
    vue_ = s_;
    etat_ = etat_verdict::calcul;
    emit change(etat_, {});
    reglages_bilan r{.dossier_donnees = s_.dossier_depart};
    tache_.lance([e = vue_, r](std::stop_token arret) mutable {
        r.arret = std::move(arret);
        return calcule_bilan(std::move(e), r);
    });
}

void verdict_vivant::montre(bilan b) {
    etat_ = b.faute || b.tours.empty() ? etat_verdict::inconnu
            : b.tient                  ? etat_verdict::tient
                                       : etat_verdict::tient_pas;
    phrase_ = QString::fromStdString(phrase_bilan(b, criteres_en_vigueur(vue_)));
    emit change(etat_, phrase_);
    bilan_ = std::move(b);
    emit bilan_pret(bilan_);
}

signe_verdict* verdict_vivant::nouveau_signe() {
    auto* signe = new signe_verdict;
    signe->montre(etat_, phrase_);
    connect(this, &verdict_vivant::change, signe, &signe_verdict::montre);
    return signe;
}
