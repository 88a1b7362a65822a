#pragma once

#include <QList>
#include <QObject>

#include <functional>

class QLineEdit;
class QWidget;

// How the text fields of a dialog treat the user: each lets only some keys through as they
// are typed (a small letter may become a capital), may select its whole text when entered,
// and puts its text right when left. The rules live as long as their owner.
class TextFieldRules : public QObject {
    Q_OBJECT
public:
    struct Rule {
        QWidget* field;  // what takes the focus: the text field, or the editable list
        QLineEdit* text; // where the text is typed
        QChar (*keyFilter)(QChar);
        bool selectAllOnEntry;
        std::function<void()> onLeaving;
    };

    explicit TextFieldRules(QObject* owner);

    void add(QLineEdit* field, QChar (*keyFilter)(QChar), std::function<void()> onLeaving);
    void add(const Rule& rule);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const Rule* ruleOf(QObject* watched) const;
    static bool filterKey(const Rule& rule, QEvent* event);

    QList<Rule> rules;
};
