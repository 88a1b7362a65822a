#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The main window's command bar as data: every tool with its caption and tooltip, and every
// band (menus, submenus, the tool bar and the status bar) with the names of what it holds, in
// order. The window builds its menus from this and nothing else, and a command is found by
// its tool's name.
namespace CommandTable {

enum class ToolKind {
    Command,    // runs the command of its name
    Toggle,     // a command that carries a check mark
    Inert,      // shown, but never enabled and never run
    Submenu,    // opens the band named in Tool::band
    WindowList, // opens the list of the open child windows
    TextBox,    // a text field on a bar
};

struct Tool {
    QString name;
    QString caption;
    QString toolTip; // empty when the tool has none
    ToolKind kind = ToolKind::Command;
    // Submenu: the band it opens. TextBox: the tool it belongs with, shown when that is.
    QString band = {};
    // A sentence on what the tool does, shown on the status bar while the pointer rests on it.
    QString description = {};
    // The group the tool is filed under with its kin; a text box's group names it on its bar.
    QString category = {};
};

enum class BandKind { Menu, Submenu, ToolBar, StatusBar };

struct Band {
    QString name;
    QString caption;
    BandKind kind;
    QStringList items; // tool names (status panels for the status bar) and Separator
};

struct StatusPanel {
    QString name;
    QString caption;
    QString toolTip;
    bool enabled = true;
};

// Marks a separator among a band's items.
inline const QString Separator = QStringLiteral("-");

// Every tool: the commands in the order of the dispatch, then the palette of the Color menu.
const QList<Tool>& tools();
// The bands: the menus in the order of the menu bar, the two submenus, the tool bar and the
// status bar.
const QList<Band>& bands();
// The panels of the status bar, in the order in which the status bar names them.
const QList<StatusPanel>& statusPanels();

const Tool* findTool(const QString& name);
const Band* findBand(const QString& name);
const StatusPanel* findStatusPanel(const QString& name);

} // namespace CommandTable
