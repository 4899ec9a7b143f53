#include "orbit/windows/orbito_conf.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <cmath>

#include "orbit/orb_trajecto.h"
#include "orbit/windows/page_attitude.h"
#include "orbit/windows/page_environnement.h"
#include "orbit/windows/page_orbite.h"
#include "shell/utilitaires.h"
#include "widgets/style.h"

orbito_conf::orbito_conf(session& s, QWidget* parent)
    : fenetre(s, "orbito_conf", "Caractéristiques orbitales", parent), s_(s), onglets_(new QTabWidget),
      orbite_(new page_orbite(s)), attitude_(new page_attitude(s)),
      environnement_(new page_environnement(s)) {
    onglets_->setObjectName("Onglet_orbite");
    onglets_->addTab(defilee(orbite_), style::icone("orbite"), "Orbi&te");
    onglets_->addTab(defilee(attitude_), style::icone("proprietes"), "&Attitude");
    onglets_->addTab(defilee(environnement_), style::icone("envir"), "En&vironnement");
    auto* pile = new QVBoxLayout(contenu());
    pile->addWidget(onglets_);

    connect(orbite_, &page_orbite::modifiee, this, &orbito_conf::marque_changement);
    auto* quitter = new QPushButton("&Quitter");
    quitter->setObjectName("orb_quit");
    quitter->setToolTip("Ferme la fenêtre ; les réglages sont déjà pris en compte");
    connect(quitter, &QPushButton::clicked, this, &orbito_conf::close);
    pose_quitter(quitter);
    connect(attitude_, &page_attitude::modifiee, this, &orbito_conf::marque_changement);
    connect(environnement_, &page_environnement::modifiee, this, &orbito_conf::marque_changement);
    connect(orbite_, &page_orbite::avis, this, &orbito_conf::montre_bandeau);
    connect(orbite_, &page_orbite::epoque_changee, this, &orbito_conf::propose_periode);
    connect(attitude_, &page_attitude::avis, this, &orbito_conf::montre_bandeau);
    connect(attitude_, &page_attitude::faute_soleil, this, [this](const QString& raison) {
        const record_orbite& o = s_.orbit.orbite;
        rapporte_faute("le pointage soleil", date_epoque(o.orb_an, o.orb_jour - 1.0), raison);
    });
    form_load();
}

void orbito_conf::form_load() {
    const record_orbite& o = s_.orbit.orbite;
    orb_position(date_epoque(o.orb_an, o.orb_jour - 1.0), s_.orbit);
    orbite_->rafraichit();
    attitude_->rafraichit();
    environnement_->form_load();
}

/// The period does not follow a new epoch by itself: the user may have chosen it.
void orbito_conf::propose_periode() {
    const record_orbite& o = s_.orbit.orbite;
    const double epoque = date_epoque(o.orb_an, o.orb_jour - 1.0);
    constexpr double ecart = 1.0 / secondes_par_jour;
    if (!(o.orb_moy_mvt > 0) || !(std::fabs(epoque) < 1e5) || std::fabs(epoque - s_.periode.j_debut) < ecart)
        return;
    const QString debut = QString::fromStdString(date_vers_texte(jour_vers_date(s_.periode.j_debut)));
    propose_bandeau(
        bandeau() + (bandeau().isEmpty() ? "" : "\n") +
            QString("La simulation commence le %1, l'époque de l'orbite est une autre date.").arg(debut),
        "&Une révolution depuis l'époque", [this] {
            const record_orbite& orbite = s_.orbit.orbite;
            s_.periode.j_debut = date_epoque(orbite.orb_an, orbite.orb_jour - 1.0);
            s_.periode.j_fin = s_.periode.j_debut + 1.0 / orbite.orb_moy_mvt;
            marque_changement();
            emit periode_changee();
        });
}

void orbito_conf::montre_page(int page) { onglets_->setCurrentIndex(page); }

void orbito_conf::keyPressEvent(QKeyEvent* e) {
    // Enter in a box has done its work; it must not go on to a button.
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) return e->accept();
    fenetre::keyPressEvent(e);
}
