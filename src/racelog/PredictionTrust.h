#pragma once

#include <QObject>
#include <QString>
#include <optional>

// How far a race log's prediction can be trusted now, for everyone who shows it: how far its
// predictions have been off on the day, how far the track runs from what the air says, and
// what the air of the next rounds will make of the car. The log's predictor works them out;
// the window and the crew's phones read them, by the signal.
class PredictionTrust : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // The miss a prediction is likely to stay within, and how many predictions say so.
    struct Miss {
        double seconds = 0;
        int predictions = 0;
        bool operator==(const Miss&) const = default;
    };
    // How much slower than the air says (faster when negative) the car ran in its last runs
    // today, and how many runs say so.
    struct Drift {
        double seconds = 0;
        int runs = 0;
        bool operator==(const Drift&) const = default;
    };

    const std::optional<Miss>& likelyMiss() const { return miss; }
    const std::optional<Drift>& drift() const { return trackDrift; }
    // The line of the next rounds' air and the log's times in it; empty before the first.
    const QString& outlook() const { return outlookLine; }

    void setMeasures(const std::optional<Miss>& likelyMiss, const std::optional<Drift>& drift);
    void setOutlook(const QString& line);

signals:
    // Told only when something changed.
    void changed();

private:
    std::optional<Miss> miss;
    std::optional<Drift> trackDrift;
    QString outlookLine;
};
