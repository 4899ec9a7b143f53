/// Colours, spacing, fonts and icons of the program: the one place where a window takes its look from.
#pragma once

#include <QColor>
#include <QFont>
#include <QIcon>

class QApplication;
class QLineEdit;
class QLabel;
class QPalette;
class QPushButton;
class QWidget;

namespace style {

/// What a colour means, everywhere: synoptic, gauges, charts, tables.
enum class role {
    generateur,
    batterie,
    charge_utile,
    perte,
    eclipse,
    soleil,
    terre,
    axe_x,
    axe_y,
    axe_z,
    trait,   ///< lines of drawings and icons
    discret, ///< secondary text, grids
    alerte,
};

/// Fusion style under the desktop's palette, French translations of the standard dialogs, icon of the
/// program.
void applique(QApplication& app);

/// Raises the contrast of disabled controls, hints, links and choices to what can be read; the style in force
/// does so by itself with the desktop's palette.
void lisible(QPalette& p);

/// True under a dark palette.
bool sombre();
/// The same colour as a text: dark or light enough to be read (4.5:1) on the grounds of the palette in force.
QColor en_texte(const QColor& c);
/// The colour of a meaning, readable on the palette in force.
QColor couleur(role r);
/// The curve colours of charts without a fixed meaning, told apart on light and dark.
QColor couleur_courbe(int n);
/// The same meaning under a light or dark palette, where `c` is one of the colours above; otherwise `c`.
QColor accorde(const QColor& c, bool fonce);

/// A share of one colour and the rest of another.
QColor melange(const QColor& a, const QColor& b, double part_a);

/// n times the spacing unit (4 px at 100 %).
int espace(int n = 1);
/// Font of numbers: tabular figures of the interface font.
QFont police_nombres(const QWidget* w = nullptr);

/// A drawn icon of the program ("ouvrir" is :/icones/ouvrir.svg), in the palette's two tones.
QIcon icone(const QString& nom);

/// A box that shows a computed value: looks different from one that can be typed in.
void montre_calcule(QLabel* l);
/// Sets off a box whose value stops a run.
void marque(QLineEdit* e, bool fautive);
/// A number box: right-aligned, number font, a width of `caracteres` digits.
void boite_nombre(QLineEdit* e, int caracteres = 10);

/// A button with its name, text and tooltip; Enter in a box is not for it.
QPushButton* bouton(const QString& nom, const QString& texte, const QString& aide);
/// A button of a window's foot: as wide as those of the other windows; Enter in a box is not for it.
void bouton_pied(QPushButton* b);

} // namespace style
