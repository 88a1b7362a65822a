#include "ui/shell/CommandBar.h"

#include "core/DateText.h"
#include "ui/shell/ElidedLabelText.h"
#include "ui/shell/ToolIcons.h"

#include <QAction>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

using namespace CommandTable;

CommandBar::CommandBar(QMainWindow& window, std::function<void(const QString&)> onCommand)
    : QObject(&window), window(window), onCommand(std::move(onCommand)) {
    for (const Tool& tool : CommandTable::tools())
        createTool(tool);
    for (const Band& band : bands()) {
        if (band.kind == BandKind::StatusBar)
            fillStatusBar(band);
        else
            fillBand(band);
    }
    clock = new QTimer(this);
    clock->setObjectName(QStringLiteral("tmrClock"));
    clock->setInterval(1000);
    connect(clock, &QTimer::timeout, this, &CommandBar::showClock);
    clock->start();
    showClock();
}

QAction* CommandBar::tool(const QString& name) const {
    return tools.value(name);
}

// A text field is made with the bar that holds it; a submenu's tool is the menu's own entry.
void CommandBar::createTool(const Tool& tool) {
    if (tool.kind == ToolKind::TextBox)
        return;
    QAction* action = nullptr;
    if (tool.kind == ToolKind::Submenu) {
        const Band* band = findBand(tool.band);
        auto* menu = new QMenu(tool.caption, &window);
        menu->setObjectName(band->name);
        menu->setWindowTitle(band->caption);
        action = menu->menuAction();
    } else {
        action = new QAction(tool.caption, &window);
        if (tool.kind == ToolKind::WindowList)
            action->setMenu(new QMenu(&window));
        else
            connect(action, &QAction::triggered, this,
                    [this, name = tool.name] { onCommand(name); });
    }
    action->setObjectName(tool.name);
    action->setText(tool.caption);
    action->setIcon(ToolIcons::icon(tool.name));
    if (!tool.toolTip.isEmpty())
        action->setToolTip(tool.toolTip);
    describe(*action, tool);
    action->setCheckable(tool.kind == ToolKind::Toggle);
    tools.insert(tool.name, action);
}

// The description rests on the status bar while the pointer is on the tool; the category
// files the tool with its kin, for anyone who lists the tools by group.
void CommandBar::describe(QObject& target, const Tool& tool) {
    if (!tool.description.isEmpty()) {
        target.setProperty("statusTip", tool.description);
        target.setProperty("whatsThis", tool.description);
    }
    if (!tool.category.isEmpty())
        target.setProperty("category", tool.category);
}

// A text field on a bar says what it is for while it is empty, and to a screen reader. It
// takes the room the tools leave, and never less than a short page needs.
QAction* CommandBar::createTextField(QToolBar& bar, const Tool& tool) {
    auto* field = new QLineEdit(&bar);
    field->setObjectName(tool.name);
    field->setMinimumWidth(TextFieldMinimumWidth);
    field->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    field->setPlaceholderText(tool.caption);
    field->setAccessibleName(tool.caption);
    field->setToolTip(tool.caption);
    describe(*field, tool);
    QAction* action = bar.addWidget(field);
    action->setObjectName(tool.name);
    action->setText(tool.caption);
    describe(*action, tool);
    return action;
}

void CommandBar::fillBand(const Band& band) {
    QList<QAction*>& items = bandItems[band.name];
    if (band.kind == BandKind::ToolBar) {
        auto* bar = new QToolBar(band.caption, &window);
        bar->setObjectName(band.name);
        // Pictures only, so that every tool fits on a narrow screen; the tool tips name them.
        bar->setToolButtonStyle(Qt::ToolButtonIconOnly);
        window.addToolBar(bar);
        for (const QString& item : band.items) {
            if (item == Separator) {
                items.append(bar->addSeparator());
            } else if (const Tool* tool = findTool(item); tool->kind == ToolKind::TextBox) {
                tools.insert(item, createTextField(*bar, *tool));
                items.append(tools.value(item));
            } else {
                bar->addAction(tools.value(item));
                items.append(tools.value(item));
            }
        }
        return;
    }
    QMenu* menu = window.findChild<QMenu*>(band.name);
    if (!menu) {
        menu = window.menuBar()->addMenu(band.caption);
        menu->setObjectName(band.name);
    }
    for (const QString& item : band.items) {
        if (item == Separator) {
            items.append(menu->addSeparator());
        } else {
            menu->addAction(tools.value(item));
            items.append(tools.value(item));
        }
    }
}

void CommandBar::fillStatusBar(const Band& band) {
    auto* bar = new QStatusBar(&window);
    bar->setObjectName(band.name);
    bar->setWindowTitle(band.caption);
    window.setStatusBar(bar);
    for (const QString& name : band.items) {
        const StatusPanel* panel = findStatusPanel(name);
        auto* label = new QLabel(panel->caption, bar);
        label->setObjectName(panel->name);
        label->setToolTip(panel->toolTip);
        label->setEnabled(panel->enabled);
        // The weather takes what room there is, and no more: a long line is cut short on the
        // screen. The other panels keep to their text.
        if (name == QLatin1String("lblStatus")) {
            new ElidedLabelText(*label);
            bar->addWidget(label, 1);
        } else
            bar->addPermanentWidget(label);
    }
}

void CommandBar::showTools(const std::function<bool(const QString&)>& canRun) {
    for (const Tool& tool : CommandTable::tools()) {
        if (tool.kind == ToolKind::Command || tool.kind == ToolKind::Toggle)
            tools.value(tool.name)->setVisible(canRun(tool.name));
    }
    for (const Tool& tool : CommandTable::tools()) {
        if (tool.kind == ToolKind::TextBox)
            tools.value(tool.name)->setVisible(tools.value(tool.band)->isVisible());
    }
    // Submenus first, so a menu knows whether the submenus it holds have anything to show.
    for (BandKind kind : {BandKind::Submenu, BandKind::Menu, BandKind::ToolBar}) {
        for (const Band& band : bands()) {
            if (band.kind == kind)
                showBand(band);
        }
    }
}

// A separator shows only between two groups that both show something; a band with nothing to
// show is hidden.
void CommandBar::showBand(const Band& band) {
    const QList<QAction*>& items = bandItems.value(band.name);
    bool shownBefore = false;
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (!items[i]->isSeparator()) {
            shownBefore = shownBefore || items[i]->isVisible();
            continue;
        }
        bool shownAfter = false;
        for (qsizetype j = i + 1; j < items.size() && !items[j]->isSeparator(); ++j)
            shownAfter = shownAfter || items[j]->isVisible();
        items[i]->setVisible(shownBefore && shownAfter);
    }
    if (band.kind == BandKind::ToolBar)
        window.findChild<QToolBar*>(band.name)->setVisible(shownBefore);
    else
        window.findChild<QMenu*>(band.name)->menuAction()->setVisible(shownBefore);
}

void CommandBar::refresh() {
    showClock();
    window.layout()->invalidate();
    window.layout()->activate();
    window.menuBar()->repaint();
    for (QToolBar* bar : window.findChildren<QToolBar*>())
        bar->repaint();
    window.statusBar()->repaint();
}

void CommandBar::showClock() {
    const QDateTime now = QDateTime::currentDateTime();
    window.findChild<QLabel*>(QStringLiteral("lblTIME"))->setText(DateText::timeText(now.time()));
    window.findChild<QLabel*>(QStringLiteral("lblDATE"))
        ->setText(DateText::logDateText(now.date()));
}
