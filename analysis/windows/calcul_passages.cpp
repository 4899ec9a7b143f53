#include "analysis/windows/calcul_passages.h"

calcul_passages::calcul_passages(QObject* parent)
    : QObject(parent), tache_(this, [this](resultat_passages r) {
          resultat_ = std::move(r);
          stations_ = demandees_;
          emit pret();
      }) {}

void calcul_passages::demande(const record_orbite& o, const options_modele& modele,
                              std::vector<station> stations, double debut, double fin) {
    demandees_ = std::move(stations);
    tache_.lance([o, modele, ou = demandees_, debut, fin](const std::stop_token& arret) {
        return cherche_passages(trajectoire_du_modele(o, modele), ou, debut, fin, arret);
    });
}
