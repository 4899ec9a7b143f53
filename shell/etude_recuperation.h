/// Copies of the work that is not saved, in the user's state folder, and what a crash has left there.
///
/// Each running program holds a lock on the name of its copy: a copy whose lock is free has lost its program.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "project/etude.h"

class etude_recuperation {
public:
    /// The folder is made when the first copy is written.
    explicit etude_recuperation(std::string dossier);
    etude_recuperation(const etude_recuperation&) = delete;
    etude_recuperation& operator=(const etude_recuperation&) = delete;
    /// The copy stays: only `efface` says that it is needed no more.
    ~etude_recuperation();

    /// Writes the copy, with the path of the étude's own file (empty for none). May be called by any thread.
    bool ecrit(const etude& e, const std::string& chemin_etude);
    void efface();

    struct trouvee {
        std::string copie;        ///< path of the copy
        std::string chemin_etude; ///< its étude's own file
        etude e;
        double age = 0; ///< [s] since it was written
    };
    /// What programs that are gone have left, the newest first. What cannot be read is passed over.
    static std::vector<trouvee> trouve(const std::string& dossier);
    /// Removes a copy that has been taken over or given up.
    static void jette(const std::string& copie);

private:
    bool verrouille();

    std::string dossier_, copie_;
    int verrou_ = -1;
    std::mutex un_seul_;
};
