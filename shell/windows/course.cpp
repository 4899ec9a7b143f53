#include "shell/windows/course.h"

#include <QCoreApplication>

namespace {

bool echu(QElapsedTimer& t, qint64 ms) {
    if (t.isValid() && t.elapsed() < ms) return false;
    t.start();
    return true;
}

} // namespace

course::course(session& s, bool sur_session)
    : s_(s), tenue_(!s.calcul_en_cours), version_(s.version_config), debut_(s.periode.j_debut),
      fin_(s.periode.j_fin), pas_(s.periode.pas_sim) {
    if (!tenue_) return;
    s_.calcul_en_cours = true;
    if (!sur_session) return;
    ++s_.calculs;
    if (s_.sim_state == sim_lancee) s_.sim_state = sim_en_pause;
}

course::~course() {
    if (tenue_) s_.calcul_en_cours = false;
}

bool course::a_servir() { return echu(servi_, 20); }

bool course::a_montrer() { return echu(montre_, 80); }

void course::sert_evenements() { QCoreApplication::processEvents(); }

bool course::reglages_changes() const {
    return s_.version_config != version_ || s_.periode.j_debut != debut_ || s_.periode.j_fin != fin_ ||
           s_.periode.pas_sim != pas_;
}
