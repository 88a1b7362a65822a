#pragma once

#include "charts/WindRose.h"
#include "pages/Drawing.h"
#include "ui/charts/LiveViewWindow.h"
#include "ui/output/PrintableWindow.h"

#include <QImage>

class QLabel;
class QMenu;

// The drawing surface of the wind rose. It keeps the rose's picture and shows it as it is, so a
// repaint of the screen costs nothing; the picture is drawn anew only when the rose changes or
// the surface takes a new size. Print and PDF draw the rose anew by the same routine, at the
// resolution of the paper.
class WindRosePlot : public QWidget {
    Q_OBJECT
public:
    WindRosePlot(const WindRose& rose, QWidget* parent = nullptr);

    void redraw();
    const QImage& picture() const { return image; }
    // The rose as it stands, drawn at the surface's size for the printer or a page.
    Drawing drawing() const;
    // How many times the picture has been drawn.
    int drawCount() const { return draws; }

signals:
    void rightButtonPressed(const QPoint& globalPosition);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    const WindRose& rose;
    QImage image;
    int draws = 0;
};

// "Rose Plot": where the wind has come from since the window opened, summed by sector, with
// the latest direction on a needle. Head wind is up the plot, tail wind down.
class WindRoseWindow : public LiveViewWindow, public PrintableWindow {
    Q_OBJECT
public:
    explicit WindRoseWindow(OpenViews& views, QWidget* parent = nullptr);
    // The maker the view commands use.
    static LiveViewWindow* make(ViewTable::View view, OpenViews& views);

    // The size of a window opened for the first time.
    QSize sizeHint() const override { return {420, 420}; }

    void showReading(const WeatherRecord& reading, const QString& statusLine) override;
    // A replayed row gives its direction and speed; the rose is drawn at the end of the
    // replay.
    void addLoggedPoint(float t, const QList<float>& values) override;
    void endOfReplay() override;
    void clear() override;

    // Adds a wind speed from a compass direction and redraws.
    void addWind(float value, qint16 direction);
    // The sum of the sector of a plot angle.
    float sumAt(qint16 angle) const { return model.sumAt(angle); }
    void clearSums();

    void printDocument() override;
    void saveAsPdf() override;

    const WindRose& rose() const { return model; }
    WindRosePlot* plot() const { return surface; }
    QMenu* optionsMenu() const { return options; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fitToWindow();

    WindRose model;
    WindRosePlot* surface;
    QLabel* headWind;
    QLabel* tailWind;
    QMenu* options;
};
