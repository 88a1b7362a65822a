#pragma once

#include <QObject>

class QLabel;

// Shows a label's text cut short with "..." where it does not fit, and lets the label take no
// more room than its layout gives it: a long text never widens the window. The label keeps
// its whole text; only the painting is shortened.
class ElidedLabelText : public QObject {
public:
    explicit ElidedLabelText(QLabel& label);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLabel& label;
};
