/// The étude's file, `NAME.kestrel`: JSON, driven by the tables of fields.
///
/// Angles and rates stand in it as the records hold them. A key that is missing takes its default, one that
/// is not known is kept and written back. What another field gives (totals of mass and inertia, initial
/// angles of the integrator) stands in it only where it differs from that.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "project/etude.h"

inline constexpr int format_etude = 1;

/// Reads the file; false with "file: energie.bat_c : 0 n'est pas permis (supérieur à 0)", and the étude is
/// then untouched. The working state of the records comes out fresh.
bool charge_etude(const std::string& chemin, etude& e, std::string& raison);

/// Writes the file whole or not at all. What could not be read back (a value out of its limits, which an
/// older file may bring) is refused in the same words.
bool sauve_etude(const std::string& chemin, const etude& e, std::string& raison);

/// How strictly a text is read: a recovery copy takes any value and leaves out what is no number.
enum class lecture { stricte, toute_valeur };

/// The text of the file, and back; the reason comes without the file's name.
std::string texte_etude(const etude& e);
bool lit_texte_etude(std::string_view texte, etude& e, std::string& raison,
                     lecture comment = lecture::stricte);

/// A JSON list of consumption modes, as the étude holds it, from a file. False with the reason, which names
/// the file.
bool charge_modes(const std::string& chemin, std::vector<mode_conso>& modes, std::string& raison);
