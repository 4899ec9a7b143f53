/// The small label that tells that the physical model is the one in force.
#pragma once

class QLabel;

inline constexpr const char* mention_physique = "modèle physique";

/// The label, framed; its page shows it where it holds.
QLabel* marque_modele(const char* nom);
