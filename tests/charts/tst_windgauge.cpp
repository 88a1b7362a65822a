// The wind gauge: the mark a direction puts the pointer on, the marks of the dial, and the
// pointer as it is drawn.
#include "charts/WindGauge.h"

#include <QImage>
#include <QPainter>
#include <QTest>

namespace {

QImage dial(int mark) {
    QImage image(QSize(400, 400), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    WindGauge::draw(painter, mark, image.size());
    return image;
}

bool isPointer(const QImage& image, int x, int y) {
    return image.pixelColor(x, y) == QColor(200, 0, 0);
}

} // namespace

class TestWindGauge : public QObject {
    Q_OBJECT

private slots:
    void directionsUpTo22AndAHalfAreAHeadWind() {
        QCOMPARE(WindGauge::markOf(0), 17);
        QCOMPARE(WindGauge::markOf(22), 17);
        QCOMPARE(WindGauge::markOf(-10), 17);
    }

    void aboveThatTheDirectionIsCountedInStepsOf22() {
        QCOMPARE(WindGauge::markOf(23), 2);
        QCOMPARE(WindGauge::markOf(43), 2);
        QCOMPARE(WindGauge::markOf(44), 3);
        QCOMPARE(WindGauge::markOf(90), 5);
        QCOMPARE(WindGauge::markOf(180), 9);
        QCOMPARE(WindGauge::markOf(270), 13);
        // The steps run ahead of the marks: the head wind comes back early.
        QCOMPARE(WindGauge::markOf(351), 16);
        QCOMPARE(WindGauge::markOf(352), 17);
        QCOMPARE(WindGauge::markOf(360), 17);
        QCOMPARE(WindGauge::markOf(373), 17);
        QCOMPARE(WindGauge::markOf(374), 18);
    }

    void theSeventeenMarksOfTheDial() {
        const QStringList labels{"",    "", "45",  "", "90",  "", "135",      "", "Tail Wind", "",
                                 "225", "", "270", "", "315", "", "Head Wind"};
        QCOMPARE(int(WindGauge::Marks.size()), 17);
        for (int i = 0; i < 17; ++i) {
            QCOMPARE(WindGauge::Marks[std::size_t(i)].label.toString(), labels[i]);
            const double value = i == 16 ? 0 : 22.5 * i;
            QCOMPARE(WindGauge::Marks[std::size_t(i)].value, value);
        }
    }

    void thePointerPointsAtItsMark() {
        // The centre is (200, 200); the pointer reaches out most of the face.
        const QImage right = dial(5); // 90: to the right
        QVERIFY(isPointer(right, 250, 200));
        QVERIFY(!isPointer(right, 150, 200) && !isPointer(right, 200, 150));
        const QImage down = dial(9); // 180: "Tail Wind", at the bottom
        QVERIFY(isPointer(down, 200, 250));
        QVERIFY(!isPointer(down, 200, 150) && !isPointer(down, 250, 200));
        const QImage up = dial(17); // "Head Wind", at the top
        QVERIFY(isPointer(up, 200, 150));
        QVERIFY(!isPointer(up, 200, 250));
        const QImage first = dial(1); // the same place
        QVERIFY(isPointer(first, 200, 150));
        const QImage left = dial(13); // 270
        QVERIFY(isPointer(left, 150, 200));
    }
};

QTEST_MAIN(TestWindGauge)
#include "tst_windgauge.moc"
