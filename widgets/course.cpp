#include "widgets/course.h"

#include <QCoreApplication>

namespace {

bool echu(QElapsedTimer& t, qint64 ms) {
    if (t.isValid() && t.elapsed() < ms) return false;
    t.start();
    return true;
}

} // namespace

course::course(marques& m, const simulation_period& periode, bool sur_session)
    : m_(m), periode_(periode), tenue_(!m.calcul_en_cours), version_(m.version_config),
      debut_(periode.j_debut), fin_(periode.j_fin), pas_(periode.pas_sim) {
    if (!tenue_) return;
    m_.calcul_en_cours = true;
    if (!sur_session) return;
    ++m_.calculs;
    if (m_.sim_state == sim_lancee) m_.sim_state = sim_en_pause;
}

course::~course() {
    if (tenue_) m_.calcul_en_cours = false;
}

bool course::a_servir() { return echu(servi_, 20); }

bool course::a_montrer() { return echu(montre_, 80); }

void course::sert_evenements() { QCoreApplication::processEvents(); }

bool course::reglages_changes() const {
    return m_.version_config != version_ || periode_.j_debut != debut_ || periode_.j_fin != fin_ ||
           periode_.pas_sim != pas_;
}
