/// A watch over the floating-point status: the one way in which a model reports a numerical fault.
///
/// A division by zero, an invalid operation (root or logarithm outside its domain, 0/0) or an overflow
/// raises a sticky status flag of the processor. The caller of a model brackets each step with a watch and
/// ends its run when the watch has seen one of them; the hot loops themselves test nothing.
#pragma once

#include <cfenv>
#include <string>

/// The faults that end a run.
inline constexpr int fautes_surveillees = FE_DIVBYZERO | FE_INVALID | FE_OVERFLOW;

class surveillance {
public:
    surveillance() { std::feclearexcept(fautes_surveillees); }
    /// True once a fault has occurred since the construction or the last `efface`.
    bool faute() const { return std::fetestexcept(fautes_surveillees) != 0; }
    /// Clearing costs far more than looking: it is done where there is something to clear.
    void efface() {
        if (faute()) std::feclearexcept(fautes_surveillees);
    }
    /// What happened, in the user's language; empty without a fault.
    static std::string description() {
        const int flags = std::fetestexcept(fautes_surveillees);
        if (flags & FE_DIVBYZERO) return "division par zéro";
        if (flags & FE_INVALID) return "opération non valide";
        if (flags & FE_OVERFLOW) return "dépassement de capacité";
        return {};
    }
};

/// Raises the fault of an iteration that does not end (non-finite value or too many passes).
inline void leve_faute() { std::feraiseexcept(FE_INVALID); }

/// Passes after which a loop without a limit of its own is taken to hang.
inline constexpr int passes_max = 1'000'000;
