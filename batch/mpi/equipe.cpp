#include "equipe.h"

#include <mpi.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <queue>
#include <thread>
#include <vector>

namespace {

constexpr long bloc = 32;          // variants that a rank gets at a time
constexpr long plus_de_blocs = -1; // in the place of a first variant
enum etiquette { demande = 1, attribution, lignes };

std::string calcule_bloc(const balayage& b, long debut) {
    std::string texte;
    for (long v = debut; v < std::min(debut + bloc, b.variantes()); ++v)
        texte += texte_ligne(b.plan(), b.calcule(v)) + "\n";
    return texte;
}

/// What rank 0 knows: blocks given out, rows that wait for those before them. Its own worker and the messages
/// of the other ranks share it.
class chantier {
public:
    chantier(const balayage& b, long depuis, int rangs)
        : b_(b), prochain_(depuis), attendu_(depuis), avance_(8 * bloc * rangs) {}

    /// The next block; `plus_de_blocs` when all are given out, nothing while too many rows wait.
    std::optional<long> donne() {
        const std::lock_guard l(verrou_);
        if (prochain_ >= b_.variantes()) return plus_de_blocs;
        if (prochain_ >= attendu_ + avance_) return {};
        prochain_ += bloc;
        return prochain_ - bloc;
    }
    void recoit(long debut, std::string texte) {
        const std::lock_guard l(verrou_);
        prets_.emplace(debut, std::move(texte));
    }
    /// The rows that come next, empty while they are not there.
    std::string suite() {
        const std::lock_guard l(verrou_);
        std::string texte;
        while (!prets_.empty() && prets_.begin()->first == attendu_) {
            texte += prets_.begin()->second;
            prets_.erase(prets_.begin());
            attendu_ = std::min(attendu_ + bloc, b_.variantes());
        }
        return texte;
    }
    bool fini() {
        const std::lock_guard l(verrou_);
        return attendu_ >= b_.variantes();
    }

private:
    const balayage& b_;
    std::mutex verrou_;
    long prochain_, attendu_, avance_;
    std::map<long, std::string> prets_;
};

constexpr auto repos = std::chrono::microseconds(500);

void travaille_sur_place(const balayage& b, chantier& c, const std::stop_token& arret) {
    while (!arret.stop_requested()) {
        const auto debut = c.donne();
        if (debut == plus_de_blocs) return;
        if (debut)
            c.recoit(*debut, calcule_bloc(b, *debut));
        else
            std::this_thread::sleep_for(repos);
    }
}

/// One message that has arrived; false when there is none.
bool recoit_message(chantier& c, std::queue<int>& en_attente) {
    int la = 0;
    MPI_Status etat;
    MPI_Iprobe(MPI_ANY_SOURCE, MPI_ANY_TAG, MPI_COMM_WORLD, &la, &etat);
    if (!la) return false;
    if (etat.MPI_TAG == demande) {
        MPI_Recv(nullptr, 0, MPI_CHAR, etat.MPI_SOURCE, demande, MPI_COMM_WORLD, MPI_STATUS_IGNORE);
        en_attente.push(etat.MPI_SOURCE);
        return true;
    }
    int taille = 0;
    MPI_Get_count(&etat, MPI_CHAR, &taille);
    std::string texte(static_cast<std::size_t>(taille), '\0');
    MPI_Recv(texte.data(), taille, MPI_CHAR, etat.MPI_SOURCE, lignes, MPI_COMM_WORLD, MPI_STATUS_IGNORE);
    // A row begins with its variant: the first one tells the block.
    const long debut = std::stol(texte);
    c.recoit(debut, std::move(texte));
    return true;
}

} // namespace

void dirige(const balayage& b, long depuis, int rangs, const std::function<void(const std::string&)>& ecrit) {
    chantier c(b, depuis, rangs);
    std::jthread sur_place([&](const std::stop_token& arret) { travaille_sur_place(b, c, arret); });
    std::queue<int> en_attente;
    int partis = 0;
    while (!c.fini() || partis < rangs - 1) {
        bool actif = recoit_message(c, en_attente);
        while (!en_attente.empty()) {
            const auto debut = c.donne();
            if (!debut) break;
            MPI_Send(&*debut, 1, MPI_LONG, en_attente.front(), attribution, MPI_COMM_WORLD);
            if (*debut == plus_de_blocs) ++partis;
            en_attente.pop();
            actif = true;
        }
        if (const std::string texte = c.suite(); !texte.empty()) {
            ecrit(texte);
            actif = true;
        }
        if (!actif) std::this_thread::sleep_for(repos);
    }
}

void sert(const balayage& b) {
    while (true) {
        MPI_Send(nullptr, 0, MPI_CHAR, 0, demande, MPI_COMM_WORLD);
        long debut = plus_de_blocs;
        MPI_Recv(&debut, 1, MPI_LONG, 0, attribution, MPI_COMM_WORLD, MPI_STATUS_IGNORE);
        if (debut == plus_de_blocs) return;
        const std::string texte = calcule_bloc(b, debut);
        MPI_Send(texte.data(), static_cast<int>(texte.size()), MPI_CHAR, 0, lignes, MPI_COMM_WORLD);
    }
}
