/// Files that are there whole or not at all, and the system's reasons in French.
#pragma once

#include <string>
#include <string_view>

/// Why the system refused, from an `errno`.
std::string raison_systeme(int numero);

/// A file written beside its place, under a name that says that it is not finished, then put there in one
/// step: whatever happens, the old or the new content stands whole. Links are followed and the old mode is
/// kept; a write-protected file is refused. What is no plain file (a device, a pipe) is written directly.
///
/// Every member that can fail returns false and leaves the reason, in French, in `raison()`; what was written
/// beside is gone then, and the old file stands.
class ecriture_sure {
public:
    ecriture_sure() = default;
    ecriture_sure(const ecriture_sure&) = delete;
    ecriture_sure& operator=(const ecriture_sure&) = delete;
    ~ecriture_sure() { abandonne(); }

    /// Opens the file beside `chemin`; under a fixed ending where `suffixe` gives one, so that it can be
    /// found again after a crash.
    bool ouvre(const std::string& chemin, const std::string& suffixe = {});
    bool ecrit(std::string_view octets);
    /// The content is complete and on the disk, still beside the old file.
    bool ferme_sur_disque();
    /// Puts the new file in its place. Where that fails, a file with a fixed ending stays beside.
    bool pose();
    /// Drops what was written.
    void abandonne();

    const std::string& raison() const { return raison_; }
    /// Where the new content goes, links followed; empty where it is written directly.
    std::string destination() const { return provisoire_.empty() ? std::string() : destination_; }

private:
    bool echec(int numero);
    bool ferme();

    std::string destination_, provisoire_, raison_;
    bool reste_ = false; ///< the provisional file outlives a failure of `pose`
    int fd_ = -1;
};

/// Writes `contenu` as the whole of a file, on the disk when true comes back.
bool remplace_fichier(const std::string& chemin, std::string_view contenu, std::string& raison);
