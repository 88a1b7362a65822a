#include "feed/WeatherQuantities.h"

#include "core/NumberText.h"

QString quantityText(const WeatherQuantity& quantity, const WeatherRecord& record) {
    if (quantity.real)
        return valueText(record.*quantity.real);
    return valueText(record.*quantity.whole);
}

ReadingTexts readingTexts(const WeatherRecord& record) {
    ReadingTexts texts;
    for (size_t i = 0; i < WeatherQuantities.size(); ++i)
        texts[i] = quantityText(WeatherQuantities[i], record);
    return texts;
}

bool storeQuantity(const WeatherQuantity& quantity, WeatherRecord& record, float value) {
    if (quantity.real) {
        record.*quantity.real = value;
        return true;
    }
    const auto whole = NumberText::roundToInt32(double(value));
    if (!whole)
        return false;
    record.*quantity.whole = *whole;
    return true;
}
