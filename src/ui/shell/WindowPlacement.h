#pragma once

#include "core/Settings.h"

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

void SaveWindowPlacement(const QString& keyPath, QWidget* window);
void LoadWindowPlacement(const QString& keyPath, QWidget* window);

} // namespace Settings
