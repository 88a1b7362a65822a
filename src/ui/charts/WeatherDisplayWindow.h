#pragma once

#include "ui/charts/LiveViewWindow.h"

#include <QList>

class QGridLayout;
class QLabel;
class QLineEdit;

// "Weather Information": the fifteen quantities of the latest reading in figures large enough
// to read across the pits. The figures grow and shrink with the window, and the boxes stand in
// one, three or five columns, whichever lets them be largest. It keeps no history.
class WeatherDisplayWindow : public LiveViewWindow {
    Q_OBJECT
public:
    explicit WeatherDisplayWindow(OpenViews& views, QWidget* parent = nullptr);
    // The maker the view commands use.
    static LiveViewWindow* make(ViewTable::View view, OpenViews& views);

    // The size of a window opened for the first time.
    QSize sizeHint() const override { return {720, 360}; }

    void showReading(const WeatherRecord& reading, const QString& statusLine) override;

    // In the order they stand on the display.
    const QList<QLineEdit*>& boxes() const { return boxList; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange(int columns);
    void fitFigures();

    QList<QLabel*> labels;
    QList<QLineEdit*> boxList;
    QGridLayout* grid;
    int columns = 0;
};
