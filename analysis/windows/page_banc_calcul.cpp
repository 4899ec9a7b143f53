/// The runs of the bench: when they begin, and what is shown of them.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>
#include <cmath>
#include <map>

#include "analysis/windows/evenements_traces.h"
#include "analysis/windows/modele_passages.h"
#include "analysis/windows/page_banc.h"
#include "analysis/windows/reglages_banc.h"
#include "physics/milieu.h"
#include "project/etude_compare.h"
#include "shell/utilitaires.h"
#include "widgets/barre_temps.h"
#include "widgets/style.h"
#include "widgets/traces.h"
#include "widgets/verifications.h"

namespace {

constexpr double duree_vive = 2; // [s] a run that takes no longer follows every edit
constexpr double trait = 1.8;    // [px]

/// What the rotation depends on.
bool memes_reglages(const etude& a, const etude& b) {
    etude c = b;
    c.modele.physique = a.modele.physique;
    for (const rubrique r :
         {rubrique::orbite, rubrique::pointage, rubrique::attitude, rubrique::periode, rubrique::modele})
        if (!meme_section(a, c, r)) return false;
    return true;
}

QString nombre(double x) { return QLocale().toString(x, 'g', 6); }

QColor couleur(const std::string& nom, int rang) {
    using style::role;
    constexpr role axes[] = {role::axe_x, role::axe_y, role::axe_z};
    const char* angles[] = {"roulis", "tangage", "lacet"};
    for (int a = 0; a < 3; ++a)
        if (nom == angles[a] || nom.ends_with(std::string("_") + "xyz"[a])) return style::couleur(axes[a]);
    return rang == 0 ? style::couleur(role::generateur) : style::couleur(role::trait);
}

/// Torques and momenta of small satellites in a unit that needs no row of zeros.
struct unite_lisible {
    double facteur = 1;
    QString prefixe = {};

    explicit unite_lisible(double max) {
        if (max > 0 && max < 1e-3)
            *this = {1e6, "µ"};
        else if (max > 0 && max < 1)
            *this = {1e3, "m"};
    }

private:
    unite_lisible(double f, const QString& p) : facteur(f), prefixe(p) {}
};

bool sans_lignes(const resultat_courbes& r) {
    return r.courbes.empty() || r.courbes[0].valeurs.taille() == 0;
}

std::shared_ptr<const serie> multipliee(const serie& s, double facteur) {
    std::vector<double> v = s.valeurs();
    for (double& x : v) x *= facteur;
    return std::make_shared<const serie>(s.dates(), std::move(v));
}

} // namespace

void page_banc::rafraichit() {
    reglages_->relit();
    suit();
    if (loi_vue_ != s_.modele.controle.loi) {
        loi_vue_ = s_.modele.controle.loi;
        montre_d_office();
        montre_courbes();
    }
}

void page_banc::suit() {
    if (!jamais_vue_ && memes_reglages(vue_, s_)) return;
    if (resultat_ && !tache_.en_cours() && !resultat_->partiel && memes_reglages(lancee_, s_)) { // undone
        vue_ = s_;
        a_refaire_ = false;
        montre_etat();
        return;
    }
    jamais_vue_ = false;
    vue_ = s_;
    a_refaire_ = true;
    if (cout_seconde_ * (s_.periode.j_fin - s_.periode.j_debut) * secondes_par_jour < duree_vive)
        lance();
    else
        montre_etat();
}

void page_banc::lance() {
    if (suivi_) suivi_->arret = true;
    suivi_ = std::make_shared<suivi_courbes>();
    lancee_ = s_;
    a_refaire_ = false;
    tache_.lance([e = lancee_, dossier = s_.dossier_depart, suivi = suivi_](const std::stop_token& abandon) {
        return calcule_banc(e, dossier, *suivi, abandon);
    });
    minuterie_.start();
    montre_etat();
}

void page_banc::pret(resultat_courbes r) {
    if (const double s = (r.fin - r.debut) * secondes_par_jour; s > 0) cout_seconde_ = r.duree / s;
    resultat_ = std::make_shared<const resultat_courbes>(std::move(r));
    const resultat_courbes& x = *resultat_;
    if (sans_lignes(x)) { // a fault in the initial state: the charts are empty, the reason is told
        montre_courbes();
        montre_etat();
        montre_reponse();
        return;
    }
    traces_->etendue(x.debut, x.fin);
    QVector<QPair<double, double>> bandes;
    for (const auto& [de, a] : x.eclipses) bandes << qMakePair(de, a);
    QVector<trace_evenement> e;
    for (const evenement_date& v : x.evenements)
        e << trace_evenement{v.date, static_cast<int>(v.quoi), QString::fromStdString(v.detail)};
    traces_->pose_mention(lab_modele_->text());
    traces_->pose_bandes(bandes);
    traces_->pose_evenements(genres_evenements(), e);
    temps_->etendue(x.debut, x.fin);
    date_ = std::clamp(date_, x.debut, x.fin);
    temps_->pose(date_);
    montre_courbes();
    montre_etat();
    montre_reponse();
    montre_attitude();
}

/// "dipôle maximal (x 2 fois, z 7 fois, d'abord après 12 min 30 s)".
QString page_banc::saturations() const {
    struct limite {
        std::map<QString, int> axes;
        double debut;
    };
    std::map<QString, limite> limites;
    for (const evenement_date& e : resultat_->evenements) {
        if (e.quoi != evenement::saturation) continue;
        const QString detail = QString::fromStdString(e.detail); // "Roue z : couple maximal"
        limite& l = limites.try_emplace(detail.section(" : ", 1), limite{{}, e.date}).first->second;
        ++l.axes[detail.section(" : ", 0, 0).section(' ', -1)];
    }
    QStringList t;
    for (const auto& [quoi, l] : limites) {
        QStringList axes;
        for (const auto& [axe, n] : l.axes) axes << QString("%1 %2 fois").arg(axe).arg(n);
        t << QString("%1 (%2, d'abord après %3)")
                 .arg(quoi, axes.join(", "), texte_delai((l.debut - resultat_->debut) * secondes_par_jour));
    }
    return t.join(" ; ");
}

void page_banc::montre_etat() {
    const bool court = tache_.en_cours();
    barre_->setVisible(court);
    cmd_arrete_->setVisible(court);
    cmd_calcule_->setVisible(!court);
    cmd_calcule_->setEnabled(!court && (a_refaire_ || !resultat_ || resultat_->partiel));
    if (court) {
        barre_->setValue(int(1000 * suivi_->part));
        lab_etat_->setText("Calcul…");
        return;
    }
    minuterie_.stop();
    if (a_refaire_ || !resultat_) {
        lab_etat_->setText(resultat_ ? "Les réglages ont changé depuis ce calcul."
                                     : "Un calcul long : « Calculer » le lance.");
        if (!resultat_) lab_reponse_->setText("Les courbes de la rotation du satellite seront ici.");
        return;
    }
    const resultat_courbes& r = *resultat_;
    QString t = !r.raison.empty() ? QString::fromStdString(r.raison)
                : r.partiel       ? "Arrêté le " + texte_date(r.fin) + " : le calcul est partiel."
                                  : QString("%1 pas en %2 ms").arg(r.pas).arg(std::ceil(r.duree * 1000));
    if (r.cadence > 1) t += QString(", un sur %1 gardé").arg(r.cadence);
    if (const QString s = saturations(); !s.isEmpty()) t += " — saturation : " + s;
    lab_etat_->setText(t);
    lab_etat_->setToolTip(t);
}

void page_banc::montre_courbes() {
    if (!resultat_) return;
    QVector<trace_graphique> tous;
    for (const groupe_banc& g : groupes_banc()) {
        if (!groupes_.contains(g.nom)) continue;
        trace_graphique graphique;
        const variable* premier = nullptr;
        double max = 0;
        for (const std::string& nom : g.voies)
            if (const courbe_calculee* c = resultat_->cherche(nom))
                max = std::max({max, c->valeurs.max(), -c->valeurs.min()});
        const unite_lisible lisible(max);
        for (std::size_t rang = 0; rang < g.voies.size(); ++rang) {
            const courbe_calculee* c = resultat_->cherche(g.voies[rang]);
            if (!c) continue;
            trace_courbe t;
            t.nom = QString::fromStdString(g.voies[rang]);
            // The axes of one vector: the first names it.
            const bool suite = rang > 0 && c->quoi.quoi == premier;
            premier = c->quoi.quoi;
            t.titre = suite ? t.nom.section('_', -1) : QString::fromStdString(titre_voie(c->quoi, s_.power));
            t.unite = QString::fromUtf8(c->quoi.quoi->unite);
            t.decimales = c->quoi.quoi->decimales;
            t.couleur = couleur(g.voies[rang], int(rang));
            t.trait = rang == 3 ? Qt::DashLine : Qt::SolidLine;
            t.epaisseur = trait;
            if (t.unite.startsWith("N·m") && lisible.facteur != 1) {
                t.unite.prepend(lisible.prefixe);
                t.decimales = 3;
                t.donnees = multipliee(c->valeurs, lisible.facteur);
            } else
                t.donnees = {resultat_, &c->valeurs}; // kept as long as the run is
            graphique.courbes << t;
        }
        tous << graphique;
    }
    traces_->setMinimumHeight(style::espace(18) + int(tous.size()) * style::espace(22));
    traces_->montre(tous);
    traces_->pose_curseur(date_);
}

// -- The level

void page_banc::choisit_seuil() {
    const auto k = std::size_t(cbo_grandeur_->currentIndex());
    txt_seuil_->setText(QString::number(seuils_[k], 'g', 8));
    lab_unite_->setText(QString::fromUtf8(grandeurs_banc()[k].unite));
    montre_reponse();
}

void page_banc::lit_seuil() {
    const auto k = std::size_t(cbo_grandeur_->currentIndex());
    const QString ancien = QString::number(seuils_[k], 'g', 8);
    double x = 0;
    if (txt_seuil_->text() == ancien || !verif_double(txt_seuil_, txt_seuil_->text(), ancien, x)) return;
    if (!verif_min(txt_seuil_, x, 0, false, ancien)) return;
    seuils_[k] = x;
    choisit_seuil();
}

void page_banc::montre_reponse() {
    if (!resultat_) return;
    const auto k = std::size_t(cbo_grandeur_->currentIndex());
    const grandeur_banc& g = grandeurs_banc()[k];
    const resultat_courbes& r = *resultat_;
    if (sans_lignes(r)) {
        lab_reponse_->setText("Avec ces réglages, la rotation ne peut pas être calculée.");
        return;
    }
    const passage_seuil p = passe_sous(r, g, seuils_[k]);
    const auto apres = [&](double j) { return texte_delai((j - r.debut) * secondes_par_jour); };
    const QString unite = QString::fromUtf8(g.unite);
    const QString sous = QString("sous %1%2%3").arg(nombre(seuils_[k]), unite == "°" ? "" : " ", unite);
    QString t = QString::fromUtf8(g.titre);
    if (!p.premier)
        t += " ne passe pas " + sous + " en " + apres(r.fin) + ".";
    else if (p.definitif == r.debut)
        t += " est " + sous + " du début à la fin.";
    else if (p.premier == r.debut)
        t += " est " + sous + " au début" +
             (p.definitif ? ", puis pour de bon après " + apres(*p.definitif) + "."
                          : QString(", mais n'y reste pas."));
    else if (p.premier == p.definitif)
        t += " passe " + sous + " après " + apres(*p.premier) + " et y reste.";
    else if (p.definitif)
        t += " passe " + sous + " après " + apres(*p.premier) + ", et pour de bon après " +
             apres(*p.definitif) + ".";
    else
        t += " passe " + sous + " après " + apres(*p.premier) + ", mais n'y reste pas.";
    lab_reponse_->setText(t);
}

// -- The date shown

void page_banc::montre_date(double j) {
    if (j == date_) return;
    date_ = j;
    temps_->pose(j);
    traces_->pose_curseur(j);
    montre_attitude();
}

void page_banc::montre_attitude() {
    if (!isVisible() || !cmd_vue_->isChecked() || !resultat_) return;
    const auto q = attitude_a(*resultat_, date_);
    if (!q) return;
    orbit_state o = lancee_.orbit;
    options_modele m = lancee_.modele;
    m.physique = true;
    place_orbite(date_, m, o);
    emit attitude_montree(o, date_, rotation_de(*q));
}
