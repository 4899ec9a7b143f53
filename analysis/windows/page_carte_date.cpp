/// The page "Carte" in time: search of the passes, and what is shown at a date.
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTableView>

#include <algorithm>
#include <cmath>

#include "analysis/windows/calcul_passages.h"
#include "analysis/windows/carte_terre.h"
#include "analysis/windows/dessin_polaire.h"
#include "analysis/windows/modele_passages.h"
#include "analysis/windows/page_carte.h"
#include "analysis/windows/table_stations.h"
#include "orbit/orb_projection.h"
#include "physics/milieu.h"
#include "shell/utilitaires.h"
#include "widgets/barre_temps.h"
#include "widgets/fichiers.h"
#include "widgets/style.h"

namespace {

QString nombre(double x, int decimales) { return QLocale().toString(x, 'f', decimales); }

QString texte_lieu(const point_sol& p) {
    return QString("%1° %2, %3° %4")
        .arg(nombre(std::fabs(p.lat), 2), p.lat < 0 ? "S" : "N", nombre(std::fabs(p.lon), 2),
             p.lon < 0 ? "O" : "E");
}

QString heure(double j) { return texte_date(j).mid(11); }

visee vise(const station& s, const place_satellite& p) {
    return repere_station(s).vers(geodesique_vers_cart(p.lon * rad_par_degre, p.lat * rad_par_degre, p.alt));
}

/// The pass in the station's sky.
std::vector<point_ciel> ciel(const record_orbite& orbite, const options_modele& modele, const station& s,
                             const passage& p) {
    constexpr int points = 120;
    orbit_state o;
    o.orbite = orbite;
    const trajectoire ou = trajectoire_du_modele(orbite, modele);
    const repere_station repere(s);
    std::vector<point_ciel> ligne;
    for (int i = 0; i <= points; ++i) {
        const double j = p.debut + (p.fin - p.debut) * i / points;
        place_orbite(j, modele, o);
        const visee v = repere.vers(ou(j).pos);
        ligne.push_back({v.azimut, v.elevation, o.eclipse == vrai});
    }
    return ligne;
}

} // namespace

const std::vector<station>& page_carte::stations() const {
    return s_.stations.empty() ? du_programme_ : s_.stations;
}

void page_carte::showEvent(QShowEvent* e) {
    page::showEvent(e);
    rafraichit();
}

void page_carte::resizeEvent(QResizeEvent* e) {
    page::resizeEvent(e);
    detail_->setVisible(height() > style::espace(100)); // the table and its tooltips tell the same
}

void page_carte::rafraichit() {
    if (s_.periode.j_debut != debut_vu_) { // another period: another place in time
        debut_vu_ = s_.periode.j_debut;
        date_ = s_.periode.j_debut;
    }
    modele_physique_->setVisible(s_.modele.physique);
    table_stations_->montre(stations(), s_.stations.empty());
    recherche();
    redessine();
}

void page_carte::change_stations(const std::vector<station>& liste, const QString& libelle) {
    s_.stations = liste;
    choisit_passage({});
    rafraichit();
    emit configuration_changee(libelle);
}

/// Searches the passes, unless what they depend on is as it was.
void page_carte::recherche() {
    const double jours = etendues[std::max(0, etendue_->currentIndex())];
    const double debut = s_.periode.j_debut, fin = jours > 0 ? debut + jours : s_.periode.j_fin;
    const record_orbite& o = s_.orbit.orbite;
    QString cle;
    for (const double x : {debut, fin, o.orb_inclinaison, o.orb_ascension, o.orb_excentricite, o.orb_argument,
                           o.orb_anomalie, double(o.orb_an), o.orb_jour, o.orb_demi})
        cle += QString::number(x, 'g', 17) + ' ';
    cle += s_.modele.physique ? (s_.modele.sans_j2 ? "physique sans J2 " : "physique ") : "";
    for (const station& s : stations()) cle += QString::fromStdString(station_vers_texte(s)) + '\n';
    if (cle == demande_) return;
    demande_ = cle;
    temps_->etendue(debut, fin);
    temps_->pose(date_);
    if (choisi_) choisit_passage({});
    calcul_->demande(o, s_.modele, stations(), debut, fin);
    montre_reponse();
}

void page_carte::passages_prets() {
    const bool premiers = modele_->rowCount() == 0;
    modele_->date(date_);
    modele_->pose(calcul_->resultat().passages, calcul_->stations());
    if (premiers) {
        vue_->resizeColumnsToContents();
        int large = vue_->verticalScrollBar()->sizeHint().width() + 2 * vue_->frameWidth();
        for (int c = 0; c <= modele_passages::duree; ++c) large += vue_->columnWidth(c);
        vue_->setMinimumWidth(std::min(large, style::espace(95))); // the columns that are read most
    }
    montre_reponse();
    redessine();
}

void page_carte::passage_clique(const QModelIndex& i) {
    const int ligne = ordre_->mapToSource(i).row();
    if (ligne < 0 || ligne >= modele_->rowCount()) return;
    const passage p = modele_->passages()[std::size_t(ligne)];
    choisit_passage(p);
    temps_->arrete();
    temps_->pose(p.date_max);
    date_changee(p.date_max);
    emit date_montree(p.date_max);
}

void page_carte::choisit_passage(std::optional<passage> p) {
    choisi_ = p;
    if (!p || p->station >= modele_->stations().size()) {
        polaire_->montre({}, 0);
        detail_->clear();
        return;
    }
    const station& s = modele_->stations()[p->station];
    polaire_->montre(ciel(s_.orbit.orbite, s_.modele, s, *p), s.masque);
    detail_->setText(QString("<b>%1</b> : de %2 (%3) à %4 (%5), au plus haut %6 à %7, au plus près %8 km")
                         .arg(QString::fromStdString(s.nom).toHtmlEscaped(), heure(p->debut),
                              texte_degres(p->a_debut.azimut), heure(p->fin), texte_degres(p->a_fin.azimut),
                              texte_degres(p->au_max.elevation), heure(p->date_max))
                         .arg(std::lround(p->distance_min)));
}

void page_carte::montre_date(double j) {
    if (j == date_) return;
    temps_->pose(j);
    date_changee(j);
}

void page_carte::date_changee(double j) {
    date_ = j;
    redessine();
}

void page_carte::redessine() {
    if (!isVisible()) return;
    orbit_state etat = s_.orbit;
    place_orbite(date_, s_.modele, etat);
    emit etat_montre(etat, date_);

    contenu_carte c;
    c.soleil = point_subsolaire(s_.modele, date_);
    const place_satellite ici = place_au_sol(s_.orbit.orbite, s_.modele, date_);
    const bool fini = std::isfinite(ici.lon) && std::isfinite(ici.lat) && std::isfinite(ici.distance);
    std::optional<visee> dans_le_passage;
    for (std::size_t i = 0; i < stations().size(); ++i) {
        const station& s = stations()[i];
        station_carte m;
        m.nom = QString::fromStdString(s.nom);
        m.place = {s.longitude, s.latitude};
        if (fini) {
            const visee v = vise(s, ici);
            m.cercle = cercle_station(s, ici.distance);
            m.en_vue = v.elevation >= s.masque;
            m.choisie = choisi_ && choisi_->station == i;
            if (m.choisie && date_ >= choisi_->debut && date_ <= choisi_->fin) dans_le_passage = v;
        }
        c.stations.push_back(std::move(m));
    }
    if (fini) {
        c.satellite = ici;
        c.trace = trace_.autour(s_.orbit.orbite, s_.modele, date_, avant_->value(), apres_->value());
        c.present = trace_.present();
    }
    carte_->montre(std::move(c));
    polaire_->montre_present(dans_le_passage);
    montre_satellite(ici);
    // The table counts down; it need not at every frame of the play.
    if (std::fabs(date_ - date_table_) * secondes_par_jour >= (temps_->joue() ? 5 : 0)) {
        date_table_ = date_;
        modele_->date(date_);
        vue_->viewport()->update();
    }
    montre_reponse();
}

void page_carte::montre_satellite(const place_satellite& p) {
    satellite_->setText(std::isfinite(p.alt) ? QString("Satellite : %1 ; %2 km, %3")
                                                   .arg(texte_lieu(p), nombre(p.alt, 0),
                                                        p.eclipse ? "dans l'ombre" : "au Soleil")
                                             : QString("Satellite : l'orbite ne donne pas de position"));
}

void page_carte::montre_pointeur(double lon, double lat) {
    const double h = heure_solaire(lon, carte_->contenu().soleil.lon);
    const int minutes = int(h * 60) % 1440;
    pointeur_->setText(QString("%1 ; %2 h %3, heure solaire vraie")
                           .arg(texte_lieu({lon, lat}))
                           .arg(minutes / 60)
                           .arg(minutes % 60, 2, 10, QChar('0')));
    pointeur_->show();
}

void page_carte::montre_reponse() {
    if (calcul_->en_cours() && modele_->rowCount() == 0) return reponse_->setText("Passages : calcul…");
    if (calcul_->resultat().faute) return reponse_->setText("Passages : l'orbite ne donne pas de position.");
    const auto& liste = modele_->passages();
    const passage *en_vue = nullptr, *prochain = nullptr;
    for (const passage& p : liste) {
        if (p.debut <= date_ && date_ <= p.fin && (!en_vue || p.fin > en_vue->fin)) en_vue = &p;
        if (p.debut > date_ && !prochain) prochain = &p;
    }
    const auto nom = [&](const passage& p) {
        return QString::fromStdString(modele_->stations()[p.station].nom);
    };
    if (en_vue)
        reponse_->setText(QString("En vue de %1 pour encore %2 ; au plus haut %3 à %4.")
                              .arg(nom(*en_vue), texte_delai((en_vue->fin - date_) * secondes_par_jour),
                                   texte_degres(en_vue->au_max.elevation), heure(en_vue->date_max)));
    else if (prochain)
        reponse_->setText(QString("Prochain passage : %1 dans %2, à %3 au plus haut, pendant %4.")
                              .arg(nom(*prochain), texte_delai((prochain->debut - date_) * secondes_par_jour),
                                   texte_degres(prochain->au_max.elevation), texte_delai(prochain->duree())));
    else
        reponse_->setText(QString("Aucun passage d'ici au %1.").arg(texte_date(temps_->fin())));
}

void page_carte::enregistre() {
    const QString chemin = demande_nom(this, "Enregistrer les passages", "passages.csv", "Tableau (*.csv)");
    if (chemin.isEmpty()) return;
    enregistre_octets(this, chemin,
                      QByteArray::fromStdString(passages_csv(modele_->passages(), modele_->stations())));
}
