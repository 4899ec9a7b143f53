/// Undo and redo: the moments of the session that can be come back to, each a copy of its étude.
///
/// A moment also knows the files that the étude belongs to and what they hold. Saving changes that for the
/// moments since the last opening, so that undoing never brings an old file name back; undoing an opening
/// does.
#pragma once

#include <deque>
#include <memory>

#include "shell/session.h"

class etude_historique {
public:
    /// Begins with the session as it stands. The session must outlive it.
    explicit etude_historique(session& s);

    static constexpr std::size_t profondeur = 500;

    /// Takes what has changed since the last moment as one step; without a label it is found by comparing.
    /// False when nothing has.
    bool note(const std::string& libelle = {});
    /// The same for an opening, which may have brought other files.
    bool note_ouverture(const std::string& libelle);

    /// The labels of the steps that can be undone and redone; empty for none.
    std::string libelle_annuler() const;
    std::string libelle_refaire() const;
    /// They restore the settings, the files' names and what they hold; false when there is no step. What had
    /// not been noted yet is undone first.
    bool annule();
    bool refait();
    /// Takes the session as it stands for the moment that has been come back to: what a window mends when it
    /// shows it is no step.
    void adopte();

private:
    struct fichiers {
        provenance d_ou;
        etude gardee;
    };
    struct instant {
        std::string libelle; ///< of the step that led here
        etude e;
        std::shared_ptr<fichiers> f;
    };

    fichiers fichiers_de_session() const;
    void ajoute(const std::string& libelle, std::shared_ptr<fichiers> f);
    void applique();

    session& s_;
    std::deque<instant> instants_;
    std::size_t courant_ = 0;
};
