/// A run that a window makes in its own loop: one at a time for the program, events served as it goes.
#pragma once

#include <QElapsedTimer>

#include "shell/marques.h"
#include "shell/periode.h"

class course {
public:
    /// Takes the mark of a run in progress, unless another run holds it. A run that works on the shared
    /// records (not on copies) makes the complete simulation start anew afterwards.
    course(marques& m, const simulation_period& periode, bool sur_session = true);
    ~course();
    course(const course&) = delete;
    course& operator=(const course&) = delete;

    bool libre() const { return tenue_; } ///< false: another run is on, this one must not start

    /// True when the events should be served: at the first call and then every 20 ms, so that the model steps
    /// keep most of the time.
    bool a_servir();
    /// True when the window should show how far the run has come: at the first call and then every 80 ms.
    bool a_montrer();
    /// Serves the pending events. The window may be deleted meanwhile: test a QPointer to it afterwards.
    static void sert_evenements();
    /// True when the period or the configuration is no longer the one that the run started with.
    bool reglages_changes() const;

private:
    marques& m_;
    const simulation_period& periode_;
    bool tenue_;
    QElapsedTimer servi_, montre_; ///< not valid before the first time
    uint32_t version_;
    double debut_, fin_;
    int32_t pas_;
};

/// What a window says when a run cannot start because another one is on.
inline constexpr const char* message_calcul_en_cours =
    "Un autre calcul est en cours : interrompez-le ou attendez sa fin.";
/// What a window says when a run ended because the settings changed under it.
inline constexpr const char* message_reglages_changes =
    "La configuration ou la période a changé pendant le calcul : il s'est arrêté.";
