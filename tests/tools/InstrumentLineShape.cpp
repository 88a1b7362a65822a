#include "InstrumentLineShape.h"

#include "core/DateText.h"
#include "core/NumberText.h"

#include <QList>
#include <QRegularExpression>

bool hasInstrumentShape(const QByteArray& line) {
    const QString plain = QStringLiteral("-?\\d+");
    const QString twoPlaces = QStringLiteral("-?\\d+\\.\\d\\d");
    const QString threePlaces = QStringLiteral("-?\\d+\\.\\d\\d\\d");
    // Date, time, ABP Temp RH AA AH GR VP DP ADR DA PA WD WS WG AL.
    const QList<QString> shapes = {QStringLiteral("\\d\\d/\\d\\d/\\d{4}"),
                                   QStringLiteral("\\d\\d:\\d\\d:\\d\\d"),
                                   twoPlaces,
                                   twoPlaces,
                                   twoPlaces,
                                   plain,
                                   twoPlaces,
                                   plain,
                                   threePlaces,
                                   plain,
                                   twoPlaces,
                                   plain,
                                   plain,
                                   plain,
                                   plain,
                                   plain,
                                   plain};

    if (!line.startsWith(' ') || !line.endsWith('\r'))
        return false;
    const QList<QByteArray> tokens = line.mid(1, line.size() - 2).split(' ');
    if (tokens.size() != shapes.size())
        return false;
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        const QRegularExpression shape(QRegularExpression::anchoredPattern(shapes[i]));
        if (!shape.match(QString::fromLatin1(tokens[i])).hasMatch())
            return false;
    }
    if (!DateText::isDate(QString::fromLatin1(tokens[0])))
        return false;
    for (qsizetype i = 2; i < tokens.size(); ++i) {
        if (!NumberText::isNumeric(QString::fromLatin1(tokens[i])))
            return false;
    }
    return true;
}
