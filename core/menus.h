// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

/// An entry of the main window's menus.
struct MenuEntry {
    enum class State { Menu, HiddenMenu, Open, Hidden };

    const char* name;
    const char* parent = "";  ///< empty: on the menu bar
    const char* caption = ""; ///< "-" for a separator
    const char* shortcut = "";
    State state = State::Open; ///< Menu: a submenu. Open: enabled. Hidden: not shown.
    void (*run)() = nullptr;   ///< null for menus and separators

    bool isMenu() const { return state == State::Menu || state == State::HiddenMenu; }
};

/// A button of the toolbar.
struct ToolbarButton {
    const char* name;
    const char* toolTip;
    const char* picture;
    void (*run)();
    std::span<const MenuEntry> dropDown = {};
};

/// All menu entries in display order, each menu before its entries.
std::span<const MenuEntry> menuEntries();
std::span<const ToolbarButton> toolbarButtons();
