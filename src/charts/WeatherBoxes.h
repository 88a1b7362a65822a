#pragma once

#include "core/WeatherRecord.h"

#include <QString>
#include <QStringView>
#include <array>

// The fifteen figures of the large display: what each box is called, its tool tip and how it
// writes its quantity of a reading.
namespace WeatherBoxes {

struct Box {
    QStringView name; // "ABP": the box is txtABP, its label lblABP "ABP:"
    QStringView toolTip;
    QString (*text)(const WeatherRecord& reading); // plain number text
};
constexpr int Count = 15;

// In the order the boxes stand on the display.
extern const std::array<Box, Count> Boxes;

// The order in which a reading fills the boxes, by name.
extern const std::array<QStringView, Count> FillOrder;

// The box of a name of the table.
const Box& find(QStringView name);

QString boxName(const Box& box);   // "txtABP"
QString labelName(const Box& box); // "lblABP"
QString labelText(const Box& box); // "ABP:"

} // namespace WeatherBoxes
