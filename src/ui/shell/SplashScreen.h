#pragma once

#include "core/Hourglass.h"

#include <QImage>
#include <QRegion>
#include <QWidget>

// The window shown while the main window loads: its skin picture as a shaped window
// without a frame, centred on the screen, with the hourglass pointer for as long as it lives.
class SplashScreen : public QWidget {
    Q_OBJECT
public:
    explicit SplashScreen(QWidget* parent = nullptr);

    const QImage& skinImage() const { return skin; }

    // The outline of a picture: the colour of its top left pixel is see-through, and every
    // maximal run of other pixels in each row belongs to the shape.
    static QRegion shapeOf(const QImage& picture);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Hourglass hourglass;
    QImage skin;
};
