/// The one table of the main window's menu entries and toolbar keys.
#pragma once

#include <span>

/// What an entry is; only commands can be chosen.
enum class genre_entree { titre, sous_menu, etiquette, separateur, commande };

struct entree_menu {
    int niveau; ///< 0 in the menu bar, 1 in a menu, 2 in a sub-menu
    genre_entree genre;
    const char* controle; ///< object name
    const char* texte;
    const char* icone;   ///< key of `style::icone`, may be empty
    const char* fenetre; ///< the window that it opens, empty for a command of the main window
    int page;            ///< the page brought forward, -1 for none
    const char* bulle;   ///< what it is for, shown in the status bar
};

/// In the order of the menus.
std::span<const entree_menu> entrees_menu();

struct touche_barre {
    const char* barre;    ///< object name of its toolbar
    const char* cle;      ///< of the click and of its icon
    const char* commande; ///< the menu entry to which a click is forwarded
    const char* bulle;
};

/// In the order of the toolbars.
std::span<const touche_barre> touches_barres();
