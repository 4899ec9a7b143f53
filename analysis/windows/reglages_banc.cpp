#include "analysis/windows/reglages_banc.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "analysis/banc_attitude.h"
#include "analysis/windows/boite_champ.h"
#include "physics/options_modele.h"
#include "widgets/style.h"

namespace {

constexpr double heures_par_jour = 24;

QLabel* etiquette(const QString& texte, QWidget* pour) {
    auto* l = new QLabel(texte);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    l->setBuddy(pour);
    return l;
}

QLabel* remarque(const char* nom) {
    auto* l = new QLabel;
    l->setObjectName(nom);
    l->setWordWrap(true);
    l->setTextFormat(Qt::RichText);
    return l;
}

QGridLayout* grille_de(QGroupBox* cadre) {
    auto* g = new QGridLayout(cadre);
    g->setContentsMargins(style::espace(2), style::espace(1), style::espace(2), style::espace(1));
    g->setHorizontalSpacing(style::espace(2));
    g->setVerticalSpacing(style::espace(1));
    return g;
}

} // namespace

reglages_banc::reglages_banc(session& s, QWidget* parent)
    : QWidget(parent), s_(s), lab_modele_(remarque("lab_banc_modele")),
      lab_pointage_(remarque("lab_banc_pointage")), lab_controle_(remarque("lab_banc_controle")) {
    auto* pile = new QVBoxLayout(this);
    pile->setContentsMargins(0, 0, style::espace(1), 0);
    pile->setSpacing(style::espace(2));
    for (QWidget* w : {cree_essai(), cree_depart(), cree_parties(), cree_controle()}) pile->addWidget(w);
    pile->addStretch(1);
    for (QLabel* l : {lab_pointage_, lab_controle_})
        connect(l, &QLabel::linkActivated, this, [this](const QString& lien) {
            emit demande_fenetre(lien.section('/', 0, 0), lien.section('/', 1).toInt());
        });
    relit();
}

boite_champ* reglages_banc::boite(const QString& nom, const QString& champ, int caracteres) {
    auto* b = new boite_champ(s_, nom, champ, caracteres);
    connect(b, &boite_champ::change, this, [this] { emit change({}); });
    boites_ << b;
    return b;
}

QComboBox* reglages_banc::liste(const char* nom, const QString& titre, const QStringList& choix,
                                std::function<int()> lit, std::function<void(int)> ecrit) {
    auto* c = new QComboBox;
    c->setObjectName(nom);
    c->setAccessibleName(titre);
    c->addItems(choix);
    connect(c, &QComboBox::activated, this, [this, lit, ecrit = std::move(ecrit)](int k) {
        if (lit() == k) return;
        ecrit(k);
        relit();
        emit change({});
    });
    listes_.append({c, std::move(lit)});
    return c;
}

QGroupBox* reglages_banc::cree_essai() {
    auto* cadre = new QGroupBox("Essai");
    auto* g = grille_de(cadre);
    auto* modele = liste(
        "cbo_modele", "Modèle du programme", {"de référence", "physique"},
        [this] { return int(s_.modele.physique); }, [this](int k) { s_.modele.physique = k == 1; });
    modele->setToolTip("Le modèle des autres pages et fenêtres ; le banc montre toujours le modèle physique");
    g->addWidget(etiquette("Modèle", modele), 0, 0);
    g->addWidget(modele, 0, 1, 1, 2);
    g->addWidget(lab_modele_, 1, 0, 1, 3);
    auto* duree = boite("txt_banc_duree", "periode.fin");
    duree->echelle(heures_par_jour, [](const etude& e) { return e.periode.j_debut; });
    duree->decrit("Durée", "h", "Durée de la période de simulation, depuis son début");
    auto* pas = boite("txt_banc_pas", "periode.pas");
    pas->decrit("Pas", "s",
                "Une ligne de résultats par pas ; le mouvement lui-même est calculé à des pas "
                "internes plus courts, quel que soit celui-ci");
    g->addWidget(etiquette("Durée", duree), 2, 0);
    g->addWidget(duree, 2, 1);
    g->addWidget(new QLabel("h"), 2, 2);
    g->addWidget(etiquette("Pas", pas), 3, 0);
    g->addWidget(pas, 3, 1);
    g->addWidget(new QLabel("s"), 3, 2);
    g->setColumnStretch(2, 1);
    return cadre;
}

QGroupBox* reglages_banc::cree_depart() {
    auto* cadre = new QGroupBox("Départ");
    auto* g = grille_de(cadre);
    const char* angles[] = {"roulis", "tangage", "lacet"};
    const char* tetes[] = {"x (roulis)", "y (tangage)", "z (lacet)"};
    for (int i = 0; i < 3; ++i) {
        auto* tete = new QLabel(tetes[i]);
        tete->setAlignment(Qt::AlignRight);
        g->addWidget(tete, 0, 1 + i);
        auto* angle = boite(QString("txt_banc_") + angles[i], QString("pointage.") + angles[i], 6);
        auto* taux = boite(QString("txt_banc_omega_%1").arg(i), QString("omega_init[%1]").arg(i), 6);
        angles_ << angle;
        g->addWidget(angle, 1, 1 + i);
        g->addWidget(taux, 2, 1 + i);
        if (i > 0) continue;
        g->addWidget(etiquette("Angles (°)", angle), 1, 0);
        g->addWidget(etiquette("Vitesses (°/s)", taux), 2, 0);
    }
    g->addWidget(lab_pointage_, 3, 0, 1, 4);
    return cadre;
}

QGroupBox* reglages_banc::cree_parties() {
    auto* cadre = new QGroupBox("Ce qui agit");
    auto* g = grille_de(cadre);
    const char* textes[] = {"Dérive J2",
                            "Gradient de gravité",
                            "Frottement de l'air",
                            "Pression solaire",
                            "Magnétisme",
                            "Amortisseurs",
                            "Roues"};
    int k = 0;
    for (const partie_modele& p : parties_modele()) {
        auto* c = new QCheckBox(textes[k]);
        c->setObjectName(QString("chk_banc_") + p.nom);
        QString sens = QString::fromUtf8(p.sens);
        sens[0] = sens[0].toUpper();
        c->setToolTip(sens);
        connect(c, &QCheckBox::toggled, this, [this, sans = p.sans](bool avec) {
            if (s_.modele.*sans == !avec) return;
            s_.modele.*sans = !avec;
            relit();
            emit change({});
        });
        parties_ << c;
        g->addWidget(c, k / 2, k % 2);
        ++k;
    }
    return cadre;
}

QGroupBox* reglages_banc::cree_controle() {
    auto* cadre = new QGroupBox("Contrôle d'attitude");
    auto* g = grille_de(cadre);
    controle_attitude& c = s_.modele.controle;
    auto* loi = liste(
        "cbo_banc_loi", "Loi de contrôle", {"aucune", "B-dot (magnétocoupleurs)", "PD sur les roues"},
        [&c] { return int(c.loi); }, [&c](int k) { c.loi = loi_controle(k); });
    loi->setToolTip("B-dot freine la rotation ; PD tient un pointage avec les roues");
    g->addWidget(etiquette("Loi", loi), 0, 0);
    g->addWidget(loi, 0, 1, 1, 2);
    auto* cible = liste(
        "cbo_banc_cible", "Cible de la loi PD", {"pointage nominal (nadir)", "face vers le Soleil"},
        [&c] { return int(c.cible); }, [&c](int k) { c.cible = cible_controle(k); });
    auto* face = liste(
        "cbo_banc_face", "Face tournée vers le Soleil", {"+x", "+y", "+z", "-x", "-y", "-z"},
        [&c] { return c.face; }, [&c](int k) { c.face = k; });
    int l = 1;
    const auto range = [&](QList<QWidget*>& chez, const QString& texte, QWidget* w, const QString& unite) {
        auto* e = etiquette(texte, w);
        auto* u = new QLabel(unite);
        g->addWidget(e, l, 0);
        g->addWidget(w, l, 1, 1, unite.isEmpty() && !qobject_cast<boite_champ*>(w) ? 2 : 1);
        if (!unite.isEmpty()) g->addWidget(u, l, 2);
        for (QWidget* x : std::initializer_list<QWidget*>{e, w, u}) chez << x;
        ++l;
    };
    const auto nombre = [&](QList<QWidget*>& chez, const QString& texte, const QString& champ) {
        auto* b = boite("txt_banc_" + champ, "controle." + champ, 8);
        range(chez, texte, b, b->unite());
    };
    nombre(de_b_dot_, "Gain", "gain");
    nombre(de_b_dot_, "Dipôle maximal", "dipole_max");
    range(de_pd_, "Cible", cible, {});
    range(de_face_, "Face", face, {});
    nombre(de_pd_, "Pulsation propre", "frequence");
    nombre(de_pd_, "Amortissement", "amortissement");
    nombre(de_pd_, "Couple maximal", "couple_max");
    nombre(de_pd_, "Vitesse maximale", "vitesse_max");
    g->addWidget(lab_controle_, l, 0, 1, 3);
    g->setColumnStretch(2, 1);
    return cadre;
}

void reglages_banc::montre_loi() {
    const controle_attitude& c = s_.modele.controle;
    const auto montre = [](const QList<QWidget*>& tous, bool oui) {
        for (QWidget* w : tous) w->setVisible(oui);
    };
    montre(de_b_dot_, c.loi == loi_controle::b_dot);
    montre(de_pd_, c.loi == loi_controle::pd);
    montre(de_face_, c.loi == loi_controle::pd && c.cible == cible_controle::soleil);
    QStringList dits;
    for (const std::string& a : avertissements_attitude(s_))
        dits << QString::fromStdString(a).section(" : ", 1).toHtmlEscaped();
    const QString lien = "<a href=\"att_conf/2\">Roues, amortisseurs, dipôles…</a>";
    lab_controle_->setText(dits.isEmpty() ? lien : "<b>Attention : " + dits.join(" ; ") + ".</b><br>" + lien);
}

void reglages_banc::relit() {
    for (boite_champ* b : boites_) b->montre();
    for (const auto& [c, lit] : listes_) c->setCurrentIndex(lit());
    int k = 0;
    for (const partie_modele& p : parties_modele()) {
        const QSignalBlocker muet(parties_[k]);
        parties_[k++]->setChecked(!(s_.modele.*p.sans));
    }
    lab_modele_->setVisible(!s_.modele.physique);
    lab_modele_->setText(
        "Le banc montre le modèle physique ; le reste du programme suit celui de référence.");
    const bool orbital = s_.orbit.pointage.orbital == vrai;
    for (QWidget* w : angles_) w->setEnabled(orbital);
    lab_pointage_->setText(orbital
                               ? "Angles par rapport au repère orbital : x le long de la trace, z vers le "
                                 "zénith. <a href=\"orbito_conf/1\">Pointage…</a> "
                                 "<a href=\"att_conf/0\">Inerties…</a>"
                               : "Le pointage est donné dans le repère inertiel. "
                                 "<a href=\"orbito_conf/1\">Pointage…</a> "
                                 "<a href=\"att_conf/0\">Inerties…</a>");
    montre_loi();
}
