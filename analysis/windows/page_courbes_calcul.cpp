/// The runs of the page: when they begin, how they are followed, what comes of them.
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>
#include <cmath>

#include "analysis/windows/calcul_passages.h"
#include "analysis/windows/calculs_gardes.h"
#include "analysis/windows/choix_variables.h"
#include "analysis/windows/evenements_traces.h"
#include "analysis/windows/page_courbes.h"
#include "project/etude_compare.h"
#include "shell/utilitaires.h"
#include "widgets/graduation.h"
#include "widgets/style.h"
#include "widgets/traces.h"

namespace {

constexpr double duree_vive = .2; // [s] a run that takes no longer follows every edit

bool memes_reglages(const etude& a, const etude& b) {
    etude c = b;
    c.courbes = a.courbes;
    c.notes = a.notes;
    return meme_etude(a, c);
}

double nombre_de_pas(const simulation_period& p) {
    return p.pas_sim > 0 ? (p.j_fin - p.j_debut) * secondes_par_jour / p.pas_sim + 1 : 1;
}

std::vector<std::string> textes(const QStringList& noms) {
    std::vector<std::string> t;
    for (const QString& n : noms) t.push_back(n.toStdString());
    return t;
}

} // namespace

bool page_courbes::calcule_en_cours() const {
    return tache_.en_cours() || tache_gardes_.en_cours() || !a_completer_.empty();
}

void page_courbes::rafraichit() {
    variables_->suit(s_);
    lit_choix();
    lab_modele_->setVisible(s_.modele.physique);
    suit();
}

/// Begins a run where settings or curves ask for one that is short; a long one waits for the button.
void page_courbes::suit() {
    const QStringList noms = noms_voulus();
    const bool autres = jamais_vue_ || !memes_reglages(vue_, s_);
    if (autres) {
        vue_ = s_;
        gardes_->suit(vue_);
        montre_ecarts();
        cherche_passages();
        if (resultat_) montre_courbes(); // labels of the kept runs
    }
    const bool manque = std::any_of(noms.begin(), noms.end(), [this](const QString& n) {
        return !(tache_.en_cours() ? noms_lances_ : noms_calcules_).contains(n);
    });
    complete_gardes();
    if (!jamais_vue_ && !autres && !manque) return;
    if (resultat_ && !tache_.en_cours() && !manque && memes_reglages(calculee_, s_)) { // undone
        a_refaire_ = false;
        montre_etat();
        return;
    }
    a_refaire_ = true;
    const bool court = cout_pas_ * nombre_de_pas(s_.periode) < duree_vive;
    if (court || jamais_vue_)
        lance();
    else
        montre_etat();
    jamais_vue_ = false;
}

void page_courbes::lance() {
    if (suivi_) suivi_->arret = true;
    suivi_ = std::make_shared<suivi_courbes>();
    lancee_ = s_;
    noms_lances_ = noms_voulus();
    a_refaire_ = false;
    tache_.lance([e = lancee_, noms = textes(noms_lances_), dossier = s_.dossier_depart,
                  suivi = suivi_](const std::stop_token& abandon) {
        return calcule_courbes(e, noms, dossier, *suivi, abandon);
    });
    minuterie_.start();
    montre_etat();
}

void page_courbes::arrete() {
    if (suivi_) suivi_->arret = true;
}

void page_courbes::pret(resultat_courbes r) {
    if (r.pas > 0) cout_pas_ = r.duree / double(r.pas);
    calculee_ = lancee_;
    noms_calcules_ = noms_lances_;
    resultat_ = std::make_shared<const resultat_courbes>(std::move(r));
    traces_->etendue(resultat_->debut, resultat_->fin);
    montre_evenements();
    montre_courbes();
    montre_etat();
    cmd_garde_->setEnabled(true);
}

void page_courbes::montre_etat() {
    const bool court = tache_.en_cours();
    barre_->setVisible(court);
    cmd_arrete_->setVisible(court);
    cmd_calcule_->setVisible(!court && (a_refaire_ || (resultat_ && resultat_->partiel)));
    cmd_garde_->setEnabled(resultat_ != nullptr && !court);
    if (court) {
        barre_->setValue(int(1000 * suivi_->part));
        lab_etat_->setText("Calcul…");
        return;
    }
    minuterie_.stop();
    if (!resultat_) return;
    const resultat_courbes& r = *resultat_;
    QString t = !r.raison.empty() ? QString::fromStdString(r.raison)
                : r.partiel       ? "Arrêté le " + texte_instant(r.fin) + " : le calcul est partiel."
                                  : QString("%1 pas en %2 ms").arg(r.pas).arg(std::ceil(r.duree * 1000));
    if (r.cadence > 1) t += QString(", un sur %1 gardé").arg(r.cadence);
    if (a_refaire_) t = "Les réglages ou les courbes ont changé depuis ce calcul.";
    if (r.alerte.size() && !a_refaire_) t += " — " + QString::fromStdString(r.alerte);
    lab_etat_->setText(t);
}

/// Runs again, one after the other, the kept ones that lack a variable in sight.
void page_courbes::complete_gardes() {
    if (tache_gardes_.en_cours()) return;
    const auto& gardes = gardes_->calculs();
    const std::vector<std::string> noms = textes(noms_voulus());
    if (a_completer_.empty())
        for (std::size_t k = 0; k < gardes.size(); ++k) {
            // A name may stand for several variables, and for none in that étude.
            const bool manque = std::any_of(noms.begin(), noms.end(), [&](const std::string& n) {
                std::vector<voie> v;
                ajoute_voies(n, gardes[k].reglages.power, v);
                return std::any_of(v.begin(), v.end(),
                                   [&](const voie& x) { return !gardes[k].resultat->cherche(x.nom); });
            });
            if (manque) a_completer_.push_back(gardes[k].numero);
        }
    std::erase_if(a_completer_, [this](int k) { return !gardes_->cherche(k); });
    if (a_completer_.empty()) return;
    const auto suivi = std::make_shared<suivi_courbes>();
    tache_gardes_.lance([e = gardes_->cherche(a_completer_.front())->reglages, noms,
                         dossier = s_.dossier_depart, suivi](const std::stop_token& abandon) {
        return calcule_courbes(e, noms, dossier, *suivi, abandon);
    });
}

void page_courbes::garde_pret(resultat_courbes r) {
    const int numero = a_completer_.front();
    a_completer_.pop_front();
    gardes_->remplace(numero, std::make_shared<const resultat_courbes>(std::move(r)));
}

void page_courbes::cherche_passages() {
    const auto memes = [this](rubrique r) { return meme_section(vue_passages_, s_, r); };
    if (passages_cherches_ && memes(rubrique::orbite) && memes(rubrique::periode) &&
        memes(rubrique::stations) && memes(rubrique::modele))
        return;
    passages_cherches_ = true;
    vue_passages_ = s_;
    passages_->demande(s_.orbit.orbite, s_.modele, s_.stations, s_.periode.j_debut, s_.periode.j_fin);
}

void page_courbes::montre_evenements() {
    if (!resultat_) return;
    QVector<QPair<double, double>> bandes;
    for (const auto& [de, a] : resultat_->eclipses) bandes << qMakePair(de, a);
    QVector<trace_evenement> e;
    for (const evenement_date& x : resultat_->evenements)
        e << trace_evenement{x.date, static_cast<int>(x.quoi), QString::fromStdString(x.detail)};
    for (const passage& p : passages_->resultat().passages)
        e << trace_evenement{p.debut, static_cast<int>(evenement::passage),
                             QString::fromStdString(passages_->stations()[p.station].nom)};
    std::stable_sort(e.begin(), e.end(), [](const auto& x, const auto& y) { return x.date < y.date; });
    traces_->pose_mention(calculee_.modele.physique ? lab_modele_->text() : QString());
    traces_->pose_bandes(bandes);
    traces_->pose_evenements(genres_evenements(), e);
}
