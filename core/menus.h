// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

/// One entry of the main window's menus, in the order in which they stand.
struct MenuEntry {
    const char* name;
    const char* parent;  ///< empty: on the menu bar
    const char* caption; ///< "-" for a separator
    const char* shortcut;
    enum class State { Menu, Open, Later, HiddenMenu, Hidden } state;
    // Menu: holds entries. Open: can be used. Later: stands disabled. Hidden: not shown.
};

/// An entry of the drop-down of the toolbar's first button.
struct ButtonMenu {
    const char* key;
    const char* caption;
    bool enabled;
};

const std::vector<MenuEntry>& menuEntries();
const std::vector<ButtonMenu>& customerButtonMenus();
