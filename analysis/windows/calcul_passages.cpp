#include "analysis/windows/calcul_passages.h"

void calcul_passages::demande(const record_orbite& o, const options_modele& modele,
                              std::vector<station> stations, double debut, double fin) {
    en_cours_ = true;
    const unsigned tour = ++tour_;
    fil_ = std::jthread(
        [this, tour, o, modele, stations = std::move(stations), debut, fin](const std::stop_token& arret) {
            auto r = cherche_passages(trajectoire_du_modele(o, modele), stations, debut, fin, arret);
            if (arret.stop_requested()) return;
            QMetaObject::invokeMethod(this, [this, tour, stations, r = std::move(r)]() mutable {
                if (tour != tour_) return;
                en_cours_ = false;
                resultat_ = std::move(r);
                stations_ = std::move(stations);
                emit pret();
            });
        });
}
