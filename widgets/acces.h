/// What screen readers, search and help know of a control: its name, and the number of the étude that it
/// edits.
#pragma once

#include <QString>

#include <string>

class QWidget;

/// Tells that a control edits the number of the étude at `chemin` ("energie.bat_c"); `titre` names it where
/// it has no text of its own.
void lie_champ(QWidget* controle, const std::string& chemin, const std::string& titre);

/// The same for what knows its own path and caption: an element of the étude.
template <class E>
void lie_champ(QWidget* controle, const E& element) {
    lie_champ(controle, chemin_element(element), titre_element(element));
}

/// The number that a control edits, or the one that it is a part of; empty for none.
QString champ_du_controle(const QWidget* controle);

/// The control of a window that edits a number, first one that can be used now; where none does, one that
/// edits another element of the same field. nullptr when the window has none.
QWidget* controle_du_champ(const QWidget* fenetre, const QString& chemin);
/// The same, with the lists of the window turned to the element where they show one at a time.
QWidget* amene_au_champ(QWidget* fenetre, const QString& chemin);

/// Gives a control without a name the words of its label, of its tooltip or of its hint; done for every
/// control as it is shown.
void nomme(QWidget* w);
