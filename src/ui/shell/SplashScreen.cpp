#include "ui/shell/SplashScreen.h"

#include "ui/shell/CentreOnScreen.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr QSize skinSize(460, 220);
const QColor seeThrough(255, 0, 255);
const QColor badgeFace(24, 29, 38);
const QColor badgeRim(214, 170, 40);

// A checkered flag on a pole, square by square.
void paintFlag(QPainter& painter, const QRect& cloth) {
    constexpr int squares = 6;
    const int side = cloth.width() / squares;
    for (int row = 0; row * side < cloth.height(); ++row) {
        for (int column = 0; column < squares; ++column) {
            const QColor colour = (row + column) % 2 ? Qt::black : Qt::white;
            painter.fillRect(cloth.x() + column * side, cloth.y() + row * side, side, side, colour);
        }
    }
    painter.fillRect(cloth.x() - 8, cloth.y() - 6, 6, cloth.height() + 70, badgeRim);
}

// The artwork is drawn when the program runs. The badge's outline is drawn without smoothing
// so that no pixel of its edge takes a shade of the see-through colour.
QImage paintSkin() {
    QImage image(skinSize, QImage::Format_ARGB32);
    image.fill(seeThrough);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const QRect badge(10, 10, skinSize.width() - 20, skinSize.height() - 20);
    painter.setPen(QPen(badgeRim, 6));
    painter.setBrush(badgeFace);
    painter.drawRoundedRect(badge, 40, 40);

    paintFlag(painter, QRect(60, 50, 96, 80));

    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.setPen(Qt::white);
    QFont name = painter.font();
    name.setPixelSize(54);
    name.setBold(true);
    painter.setFont(name);
    painter.drawText(QRect(180, 40, 250, 90), Qt::AlignLeft | Qt::AlignVCenter,
                     QStringLiteral("Tarnwick"));
    painter.fillRect(QRect(180, 130, 240, 4), badgeRim);
    return image;
}

} // namespace

SplashScreen::SplashScreen(QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      skin(paintSkin()) {
    setObjectName(QStringLiteral("frmSplash"));
    setFixedSize(skin.size());
    setMask(shapeOf(skin));
    centreOnScreen(*this, QGuiApplication::primaryScreen());
}

QRegion SplashScreen::shapeOf(const QImage& picture) {
    const QImage pixels = picture.convertToFormat(QImage::Format_ARGB32);
    QRegion shape;
    if (pixels.isNull())
        return shape;
    const QRgb transparent = pixels.pixel(0, 0);
    for (int y = 0; y < pixels.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
        int x = 0;
        while (x < pixels.width()) {
            while (x < pixels.width() && row[x] == transparent)
                ++x;
            const int start = x;
            while (x < pixels.width() && row[x] != transparent)
                ++x;
            if (x > start)
                shape += QRect(start, y, x - start, 1);
        }
    }
    return shape;
}

void SplashScreen::paintEvent(QPaintEvent*) {
    QPainter(this).drawImage(0, 0, skin);
}
