/// The small linear systems of the attitude integrator.
#pragma once

/// Solves A x = b for a system of n <= 6 by LU decomposition (Crout) with scaled partial pivoting; rows
/// scaled by their Euclidean norm. A is row-major with `largeur` columns. Returns 0, or -1 for a singular
/// system, which leaves x as it is.
int resout_lineaire(int n, const double* A, int largeur, const double* b, double* x);
