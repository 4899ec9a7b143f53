/// The threads of a sweep: variants are taken in blocks, rows are handed out in order.
#include <algorithm>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

#include "analysis/balayage.h"

namespace {

constexpr long bloc = 16; // variants that a thread takes at a time

/// Where the threads meet: which block is next, and the rows that wait for those before them.
struct rendez_vous {
    std::mutex verrou;
    std::condition_variable place, pret;
    long prochain = 0; ///< first variant that nobody has taken
    std::map<long, std::vector<ligne_balayage>> blocs;
    bool fini = false;
};

void travaille(const balayage& b, rendez_vous& r, long& attendu, long avance, const std::stop_token& arret) {
    while (true) {
        long debut = 0;
        {
            std::unique_lock l(r.verrou);
            r.place.wait(l, [&] { return r.fini || r.prochain < attendu + avance; });
            if (r.fini || r.prochain >= b.variantes()) return;
            debut = r.prochain;
            r.prochain += bloc;
        }
        std::vector<ligne_balayage> lignes;
        for (long v = debut; v < std::min(debut + bloc, b.variantes()); ++v) {
            if (arret.stop_requested()) return;
            lignes.push_back(b.calcule(v, arret));
        }
        const std::lock_guard l(r.verrou);
        r.blocs.emplace(debut, std::move(lignes));
        r.pret.notify_one();
    }
}

} // namespace

void deroule_balayage(const balayage& b, long depuis, int coeurs,
                      const std::function<bool(ligne_balayage&&)>& ligne, const std::stop_token& arret) {
    const int fils = coeurs > 0 ? coeurs : std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
    rendez_vous r;
    r.prochain = depuis;
    long attendu = depuis; // first variant that has not been handed out
    std::vector<std::jthread> equipe;
    for (int i = 0; i < fils; ++i)
        equipe.emplace_back([&] { travaille(b, r, attendu, 8 * bloc * fils, arret); });
    const std::stop_callback reveille(arret, [&] {
        const std::lock_guard l(r.verrou);
        r.fini = true;
        r.place.notify_all();
        r.pret.notify_all();
    });

    std::unique_lock l(r.verrou);
    while (attendu < b.variantes() && !r.fini) {
        r.pret.wait(l, [&] { return r.fini || r.blocs.contains(attendu); });
        if (r.fini) break;
        std::vector<ligne_balayage> lignes = std::move(r.blocs.extract(attendu).mapped());
        attendu += static_cast<long>(lignes.size());
        r.place.notify_all();
        l.unlock();
        bool va = true;
        for (ligne_balayage& x : lignes) va = va && ligne(std::move(x));
        l.lock();
        if (!va) break;
    }
    r.fini = true;
    r.place.notify_all();
}
