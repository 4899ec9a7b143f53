/// How the controls of all windows behave, where the toolkit of the desktop does otherwise.
///
/// The mouse wheel changes a list, a slider or a number only when it has the focus. Escape in a box that the
/// hand has changed puts the old text back; the next one goes to the window. In a window that asks for it,
/// Enter on a list, a radio button or a check box moves on as in its boxes. Tab leaves tables and lists,
/// every control has a name for screen readers (widgets/acces.h), and links follow the palette.
#pragma once

#include <QObject>

class QApplication;
class QLineEdit;
class QWidget;

/// Installs the behaviour for the program.
void installe_conduite(QApplication& app);

/// Enter moves on from the lists, radio buttons and check boxes of the window.
void entree_avance(QWidget* fenetre);

/// True when the hand has changed the text of a box since the program last wrote it: only then an entry
/// counts, even where the new text equals the rounded one that was shown.
bool touchee(const QLineEdit* boite);

/// Brings the page and the window of a control forward and gives it the focus, at once or, where it is being
/// hidden at this moment, as soon as that is done.
void ramene(QWidget* controle);
