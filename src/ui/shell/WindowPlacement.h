#pragma once

#include "core/Settings.h"

#include <QObject>
#include <QString>

class QWidget;

// A window as the placement store sees it: a top-level window or a child window of the MDI
// area. Its size and position are those of its normal state; setting them while the window
// is minimised or maximised changes what restoring it gives.
class WidgetPlacement : public Settings::PlacedWindow {
public:
    explicit WidgetPlacement(QWidget& widget) : widget(widget) {}

    int windowState() const override;
    void setWindowState(int state) override;
    int placement(Settings::PlacementField field) const override;
    void setPlacement(Settings::PlacementField field, int value) override;

private:
    QWidget& widget;
};

namespace Settings {

void saveWindowPlacement(const QString& keyPath, QWidget* window);
void loadWindowPlacement(const QString& keyPath, QWidget* window);

} // namespace Settings

// Keeps the place of a window of the MDI area under its settings key: the place stored is
// taken when the window is first shown in its frame, and the place it has is stored when it
// closes. The keeper lives as long as the window.
class KeptPlacement : public QObject {
public:
    KeptPlacement(QWidget& window, QString keyPath);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* placedWindow() const;

    QWidget& window;
    QString keyPath;
    bool restored = false;
};
