#include "exchange/RacepakFile.h"

#include "core/NumberText.h"
#include "core/Registry.h"
#include "core/SettingKeys.h"
#include "feed/CorrectionFactor.h"
#include "racelog/RunTable.h"

#include <QDir>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStringList>
#include <array>
#include <cmath>

namespace RacepakFile {

namespace {

constexpr int VPColumn = 21;
constexpr int ABPColumn = 22;
constexpr int TempColumn = 23;
// A field the program does not measure; the other software reads it as no value.
constexpr int Zero = -1;
// The correction factor is no column of its own; it is worked out from three.
constexpr int Factor = -2;

const QByteArray Header =
    QByteArrayLiteral("mm/dd/yyyy hh:mm:ss, Temp, Humidity, Barometric Pressure, "
                      "Pressure Altitude, Corr Factor, Density Alt, Air Density, "
                      "Grains of Water, Vapor Pressure, Dry Barometer, Dew Point, Wet Bulb Temp");

// The fields of the record after its moment, in the order the other software reads them.
constexpr std::array<int, 12> Fields{
    TempColumn, // Temp
    24,         // Humidity
    ABPColumn,  // Barometric Pressure
    29,         // Pressure Altitude
    Factor,     // Corr Factor
    20,         // Density Alt
    28,         // Air Density
    26,         // Grains of Water
    VPColumn,   // Vapor Pressure
    Zero,       // Dry Barometer
    27,         // Dew Point
    Zero,       // Wet Bulb Temp
};

// The folder the file goes to when the settings name none.
QString standardFolder() {
#ifdef Q_OS_WIN
    // Where the other software looks: Zorvane\Racepak in the program files folder.
    const QString base = qEnvironmentVariable("ProgramFiles");
#else
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
#endif
    if (base.isEmpty())
        return {};
    return QDir::cleanPath(QDir::fromNativeSeparators(base) + QStringLiteral("/Zorvane/Racepak"));
}

} // namespace

QString folder() {
    const QString chosen = Registry::get(SettingKeys::RacepakFolder);
    if (chosen != Registry::NoKeyValue)
        return QDir::cleanPath(QDir::fromNativeSeparators(chosen));
    return standardFolder();
}

std::optional<QString> correctionFactorText(const RunTable& runs, int row) {
    if (row < 1 || row >= runs.tableRows())
        return std::nullopt;
    const std::optional<float> temp = NumberText::toSingle(runs.cell(row, TempColumn));
    const std::optional<float> abp = NumberText::toSingle(runs.cell(row, ABPColumn));
    const std::optional<float> vp = NumberText::toSingle(runs.cell(row, VPColumn));
    if (!temp || !abp || !vp)
        return std::nullopt;
    const std::optional<float> factor = correctionFactor(*abp, *temp, *vp);
    if (!factor)
        return std::nullopt;
    // Rounded as a single too: the text is the shortest one that reads back to the rounded
    // value, so 1.01234 gives "1.0123" and not the float's longer binary neighbour.
    const float rounded = float(std::round(double(*factor) * 10000.0) / 10000.0);
    return NumberText::general(rounded);
}

std::optional<QByteArray> contents(const RunTable& runs, int row, const QDateTime& now) {
    const std::optional<QString> factor = correctionFactorText(runs, row);
    if (!factor)
        return std::nullopt;
    QStringList record{now.toString(QStringLiteral("MM/dd/yyyy hh:mm:ss"))};
    for (const int field : Fields) {
        if (field == Zero)
            record << QStringLiteral("0");
        else if (field == Factor)
            record << *factor;
        else
            record << runs.cell(row, field);
    }
    return Header + "\r\n" + record.join(QStringLiteral(", ")).toUtf8() + "\r\n";
}

bool write(const RunTable& runs, int row, const QDateTime& now) {
    const std::optional<QByteArray> text = contents(runs, row, now);
    const QString target = folder();
    if (!text || target.isEmpty() || !QDir().mkpath(target))
        return false;
    QSaveFile file(target + u'/' + FileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(*text);
    return file.commit();
}

} // namespace RacepakFile
