#pragma once

#include "ui/charts/LiveViewWindow.h"

class QLabel;

// The dial of the wind gauge: a pointer that rests on one of its marks.
class WindDial : public QWidget {
    Q_OBJECT
public:
    explicit WindDial(QWidget* parent = nullptr);

    // The mark the pointer rests on, 1 to 17.
    int mark() const { return pointerMark; }
    // A number outside the marks leaves the pointer where it is.
    void setMark(int mark);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int pointerMark = 1;
};

// "Wind Direction": the latest wind direction on a dial relative to the track, with the
// direction in figures below it. It keeps no history.
class WindGaugeWindow : public LiveViewWindow {
    Q_OBJECT
public:
    explicit WindGaugeWindow(OpenViews& views, QWidget* parent = nullptr);
    // The maker the view commands use.
    static LiveViewWindow* make(ViewTable::View view, OpenViews& views);

    // The size of a window opened for the first time.
    QSize sizeHint() const override { return {320, 360}; }

    void showReading(const WeatherRecord& reading, const QString& statusLine) override;

    WindDial* dial() const { return windDirection; }
    QLabel* valueLabel() const { return value; }

private:
    WindDial* windDirection;
    QLabel* value;
};
