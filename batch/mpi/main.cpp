/// kestrel_batch_mpi: kestrel_batch under MPI. A sweep is shared out among the ranks; every other command
/// runs on rank 0 alone.
#include <mpi.h>

#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

#include "batch/execution.h"
#include "equipe.h"

namespace {

/// When a rank dies the launcher ends the others by this signal.
void dit_la_fin(int) {
    constexpr char mot[] =
        "kestrel_batch_mpi : un rang s'est arrêté, le calcul est interrompu ; les lignes écrites "
        "restent et --reprise continue après elles\n";
    if (write(STDERR_FILENO, mot, sizeof mot - 1) < 0) _exit(1);
    _exit(1);
}

/// The other ranks read the same command line without a word, and their output goes nowhere.
void fait_silence() {
    const int rien = open("/dev/null", O_WRONLY);
    dup2(rien, STDOUT_FILENO);
    dup2(rien, STDERR_FILENO);
}

} // namespace

int main(int argc, char** argv) {
    int niveau = 0, rang = 0, rangs = 1;
    MPI_Init_thread(&argc, &argv, MPI_THREAD_FUNNELED, &niveau);
    MPI_Comm_rank(MPI_COMM_WORLD, &rang);
    MPI_Comm_size(MPI_COMM_WORLD, &rangs);
    int fin = 0;
    if (rang == 0) {
        std::signal(SIGTERM, dit_la_fin);
        bool partage = false;
        fin = execute(argc, argv, [&](const balayage& b, long depuis, const auto& ecrit) {
            partage = true;
            MPI_Bcast(&partage, 1, MPI_CXX_BOOL, 0, MPI_COMM_WORLD);
            try {
                dirige(b, depuis, rangs, ecrit);
            } catch (const echec_ecriture& echec) { // the others would wait for ever
                signale(echec.what());
                MPI_Abort(MPI_COMM_WORLD, entree_illisible);
            }
        });
        if (!partage) MPI_Bcast(&partage, 1, MPI_CXX_BOOL, 0, MPI_COMM_WORLD);
    } else {
        fait_silence();
        bool partage = false;
        MPI_Bcast(&partage, 1, MPI_CXX_BOOL, 0, MPI_COMM_WORLD);
        if (partage) sert(*balayage_de(argc, argv));
    }
    MPI_Finalize();
    return fin;
}
