/// Cross-field repairs of the cell's numbers: the cell model needs Isc above Imp and Voc above Vmp, new and
/// at end of life. Each routine follows an entry of the field that it is named after: a value gives way
/// itself, while a ratio keeps its entry and its partner gives way. They do nothing where the partner's ratio
/// would need a division by zero.
#pragma once

#include "power/power.h"

inline constexpr double ecart_cellule = .02; ///< [A] and [V], the gap that a repair restores

void repare_isc(power_record& p); ///< after an entry of Isc: raises Isc itself above Imp
void repare_imp(power_record& p); ///< after an entry of Imp: lowers Imp itself below Isc
void repare_voc(power_record& p);
void repare_vmp(power_record& p);

void repare_radisc(power_record& p); ///< after an entry of Isc/Isc0: Imp/Imp0 2 % below equality
void repare_radimp(power_record& p); ///< after an entry of Imp/Imp0: Isc/Isc0 2 % above equality
void repare_radvoc(power_record& p);
void repare_radvmp(power_record& p);
