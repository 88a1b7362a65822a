#pragma once

#include "core/CommandTable.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <functional>

class QAction;
class QMainWindow;
class QTimer;
class QToolBar;

// The main window's menus, submenus, tool bar and status bar, built from the command table.
// Every tool is one QAction named after the tool; a click on it reports the tool's name, and
// the window decides what runs.
class CommandBar : public QObject {
    Q_OBJECT
public:
    CommandBar(QMainWindow& window, std::function<void(const QString&)> onCommand);

    // The tool of a name (for a text field, the bar's action that holds it); nullptr when the
    // table has no such tool.
    QAction* tool(const QString& name) const;

    // Shows the commands that can run and the tools that are always there, and hides a band
    // or a separator that is left with nothing to show. Called again when a command joins.
    void showTools(const std::function<bool(const QString&)>& canRun);

    // Lays the bands out anew and repaints them, with the clock brought up to date.
    void refresh();

    // The least width of a text field on a bar, in pixels.
    static constexpr int TextFieldMinimumWidth = 160;

private:
    void createTool(const CommandTable::Tool& tool);
    static void describe(QObject& target, const CommandTable::Tool& tool);
    static QAction* createTextField(QToolBar& bar, const CommandTable::Tool& tool);
    void fillBand(const CommandTable::Band& band);
    void fillStatusBar(const CommandTable::Band& band);
    void showBand(const CommandTable::Band& band);
    void showClock();

    QMainWindow& window;
    std::function<void(const QString&)> onCommand;
    QHash<QString, QAction*> tools;
    QHash<QString, QList<QAction*>> bandItems; // each band's actions, separators included
    QTimer* clock = nullptr;
};
