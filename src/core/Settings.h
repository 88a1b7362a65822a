#pragma once

#include <QString>

// Settings kept on top of the settings tree: the zoom of reports and views, and where each
// window stood when it was closed.
namespace Settings {

// The zoom is a double, so that quarter steps from a stored 3.9 land on 4.15 exactly as
// written.
void saveScale(double scale);
// 1 unless a numeric value is stored; kept between 0.25 and 4.
double loadScale();

enum class PlacementField { Width, Height, Top, Left };

// A window as the placement store sees it. The window offers its state (0 normal,
// 1 minimised, 2 maximised) and its normal size and position in pixels.
class PlacedWindow {
public:
    virtual ~PlacedWindow() = default;
    virtual int windowState() const = 0;
    virtual void setWindowState(int state) = 0;
    virtual int placement(PlacementField field) const = 0;
    virtual void setPlacement(PlacementField field, int value) = 0;
};

// Writes WindowState, and only for a normal window Width, Height, Top and Left, so a window
// closed maximised keeps its earlier normal size.
void saveWindowPlacement(const QString& keyPath, const PlacedWindow& window);
// Applies what is stored; seeds missing or bad values from the window as it stands.
void loadWindowPlacement(const QString& keyPath, PlacedWindow& window);

} // namespace Settings
