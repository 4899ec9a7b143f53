/// Which curves the page shows, and how they become traces.
#include <QComboBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTreeWidget>

#include <algorithm>

#include "analysis/windows/calculs_gardes.h"
#include "analysis/windows/choix_variables.h"
#include "analysis/windows/lecture_courbes.h"
#include "analysis/windows/page_courbes.h"
#include "widgets/style.h"
#include "widgets/traces.h"

namespace {

constexpr double trait_courant = 2, trait_garde = 1.3; // [px]

QList<QStringList> de_json(const std::string& texte) {
    QList<QStringList> g;
    for (const QJsonValue v : QJsonDocument::fromJson(QByteArray::fromStdString(texte)).array()) {
        QStringList noms;
        for (const QJsonValue n : v.toObject()["courbes"].toArray())
            if (n.isString()) noms << n.toString();
        g << noms;
    }
    return g;
}

std::string en_json(const QList<QStringList>& g) {
    QJsonArray t;
    for (const QStringList& noms : g) t << QJsonObject{{"courbes", QJsonArray::fromStringList(noms)}};
    return QJsonDocument(t).toJson(QJsonDocument::Compact).toStdString();
}

/// What a page shows that nobody has chosen for yet.
const QList<QStringList> premier_choix = {{"gen_power", "p_demande", "bat_p"}, {"bat_soc"}, {"t_bat"}};

} // namespace

void page_courbes::lit_choix() {
    if (s_.courbes == choix_lu_) return;
    choix_lu_ = s_.courbes;
    choix_ = de_json(s_.courbes);
    if (choix_.isEmpty()) choix_ = premier_choix;
    montre_choix();
}

void page_courbes::change_choix(graphiques nouveau, const QString& libelle) {
    choix_ = std::move(nouveau);
    choix_lu_ = s_.courbes = en_json(choix_);
    montre_choix();
    emit presentation_changee(libelle);
    suit();
    montre_courbes();
}

void page_courbes::ajoute(const QString& nom, int g) {
    std::vector<voie> voies;
    if (!ajoute_voies(nom.toStdString(), s_.power, voies)) return;
    variables_->note_usage(nom);
    graphiques nouveau = choix_;
    if (g < 0 || g >= nouveau.size()) {
        nouveau << QStringList();
        g = int(nouveau.size()) - 1;
    }
    if (nouveau[g].contains(nom)) return;
    nouveau[g] << nom;
    change_choix(nouveau, "Courbes : + " + QString::fromStdString(titre_voie(voies[0], s_.power)));
}

void page_courbes::montre_variable(const QString& nom) {
    lit_choix();
    if (!noms_voulus().contains(nom)) ajoute(nom, -1);
    for (QTreeWidgetItemIterator i(arbre_); *i; ++i)
        if ((*i)->data(0, Qt::UserRole).toString() == nom) arbre_->setCurrentItem(*i);
}

void page_courbes::retire(int g, const QString& nom) {
    graphiques nouveau = choix_;
    if (nom.isEmpty())
        nouveau.removeAt(g);
    else
        nouveau[g].removeAll(nom);
    change_choix(nouveau, "Courbes : retrait");
}

void page_courbes::deplace(int sens) {
    QTreeWidgetItem* i = arbre_->currentItem();
    if (!i) return;
    graphiques nouveau = choix_;
    QTreeWidgetItem* parent = i->parent();
    const int g = arbre_->indexOfTopLevelItem(parent ? parent : i);
    const int k = parent ? parent->indexOfChild(i) : g;
    // A curve that leaves its chart goes to the next one.
    int ou = k + sens, chez = g;
    if (!parent) {
        if (ou < 0 || ou >= nouveau.size()) return;
        nouveau.move(k, ou);
        chez = ou;
    } else if (ou >= 0 && ou < nouveau[g].size())
        nouveau[g].move(k, ou);
    else {
        chez = g + sens;
        if (chez < 0 || chez >= nouveau.size()) return;
        const QString nom = nouveau[g].takeAt(k);
        ou = sens > 0 ? 0 : int(nouveau[chez].size());
        nouveau[chez].insert(ou, nom);
    }
    change_choix(nouveau, "Courbes : ordre");
    QTreeWidgetItem* la = arbre_->topLevelItem(chez);
    arbre_->setCurrentItem(parent ? la->child(ou) : la);
}

void page_courbes::montre_choix() {
    QTreeWidgetItem* avant = arbre_->currentItem();
    while (avant && avant->parent()) avant = avant->parent();
    const int g_avant = avant ? arbre_->indexOfTopLevelItem(avant) : -1;
    arbre_->clear();
    for (int g = 0; g < choix_.size(); ++g) {
        auto* i = new QTreeWidgetItem(arbre_, {QString("Graphique %1").arg(g + 1)});
        for (const QString& nom : choix_[g]) {
            std::vector<voie> v;
            const bool connu = ajoute_voies(nom.toStdString(), s_.power, v);
            auto* c = new QTreeWidgetItem(i, {connu ? QString::fromStdString(titre_voie(v[0], s_.power))
                                                    : nom + " (absente de ce montage)"});
            c->setData(0, Qt::UserRole, nom);
            c->setToolTip(0, nom);
        }
    }
    arbre_->expandAll();
    if (g_avant >= 0 && g_avant < choix_.size()) arbre_->setCurrentItem(arbre_->topLevelItem(g_avant));
}

QStringList page_courbes::noms_voulus() const {
    QStringList noms;
    for (const QStringList& g : choix_) noms << g;
    noms.removeDuplicates();
    return noms;
}

QColor page_courbes::couleur_de(const QString& nom, int rang) const {
    using style::role;
    const std::pair<const char*, role> fixes[] = {
        {"gen_power", role::generateur},  {"p_payload", role::charge_utile}, {"bat_p", role::batterie},
        {"bat_soc", role::batterie},      {"flux_sun", role::soleil},        {"flux_alb", role::terre},
        {"p_demande", role::charge_utile}};
    for (const auto& [n, r] : fixes)
        if (nom == n) return style::couleur(r);
    const role axes[] = {role::axe_x, role::axe_y, role::axe_z};
    for (int a = 0; a < 3; ++a)
        if (nom.endsWith(QString("_") + "xyz"[a])) return style::couleur(axes[a]);
    return style::couleur_courbe(rang);
}

trace_courbe page_courbes::courbe_de(const QString& nom, const std::shared_ptr<const resultat_courbes>& r,
                                     const resultat_courbes* moins) const {
    trace_courbe t;
    const courbe_calculee* c = r->cherche(nom.toStdString());
    if (!c) return t;
    t.nom = nom;
    t.titre = QString::fromStdString(titre_voie(c->quoi, s_.power));
    t.unite = QString::fromUtf8(c->quoi.quoi->unite);
    t.decimales = c->quoi.quoi->decimales;
    t.donnees = {r, &c->valeurs}; // kept as long as the run is
    if (!moins) return t;
    const courbe_calculee* autre = moins->cherche(nom.toStdString());
    t.donnees = autre ? std::make_shared<const serie>(c->valeurs.ecart(autre->valeurs)) : nullptr;
    t.nom = "ecart_" + nom;
    t.titre = "Écart : " + t.titre;
    return t;
}

void page_courbes::montre_ecarts() {
    const int avant = cbo_ecart_->currentIndex();
    cbo_ecart_->clear();
    cbo_ecart_->addItem("Valeurs");
    for (const calcul_garde& c : gardes_->calculs()) cbo_ecart_->addItem("Écart à « " + c.libelle + " »");
    cbo_ecart_->setEnabled(cbo_ecart_->count() > 1);
    cbo_ecart_->setCurrentIndex(avant < cbo_ecart_->count() ? std::max(avant, 0) : 0);
}

void page_courbes::montre_courbes() {
    QVector<trace_graphique> tous;
    const int e = cbo_ecart_->currentIndex() - 1;
    const auto& gardes = gardes_->calculs();
    const resultat_courbes* moins =
        e >= 0 && e < int(gardes.size()) ? gardes[std::size_t(e)].resultat.get() : nullptr;
    for (const QStringList& noms : choix_) {
        trace_graphique g;
        for (int rang = 0; rang < noms.size(); ++rang) {
            const QColor couleur = couleur_de(noms[rang], rang);
            if (resultat_) {
                trace_courbe t = courbe_de(noms[rang], resultat_, moins);
                t.couleur = couleur;
                t.epaisseur = trait_courant;
                if (t.donnees) g.courbes << t;
            }
            for (const calcul_garde& c : gardes) {
                if (!c.montre || !c.resultat || c.resultat.get() == moins) continue;
                trace_courbe t = courbe_de(noms[rang], c.resultat, moins);
                t.calcul = c.libelle;
                // Among several variables the colour tells the variable, and the dash the run.
                t.couleur = noms.size() == 1 ? c.couleur : couleur;
                t.trait = c.trait;
                t.epaisseur = trait_garde;
                if (t.donnees) g.courbes << t;
            }
        }
        tous << g;
    }
    traces_->montre(tous);
    lecture_->suit(traces_->dessin());
}
