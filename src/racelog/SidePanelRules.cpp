#include "racelog/SidePanelRules.h"

#include "core/DateText.h"
#include "core/NumberText.h"

namespace SidePanelRules {

QString settledLogDate(const QString& text, const QDate& today) {
    const auto value = DateText::parse(text);
    if (!value)
        return DateText::logDateText(today);
    return DateText::logDateText(value->date.value_or(QDate(1899, 12, 30)));
}

QString settledTargetET(const QString& text) {
    const double value = NumberText::toDouble(text).value_or(0.0);
    return NumberText::format(value, QStringLiteral("#0.00##"));
}

QString settledPredictInput(const QString& text) {
    return NumberText::isNumeric(text) ? text : QStringLiteral("0");
}

QString settledPageIdentifier(const QString& text) {
    return text.trimmed();
}

} // namespace SidePanelRules
