#include "ui/shell/WarningText.h"

#include <QLabel>
#include <QPalette>

// A palette that sets the text colour alone leaves every other colour to the window; an empty
// one gives the text colour back as well.
void showAsWarning(QLabel& label, bool warning) {
    QPalette palette;
    if (warning)
        palette.setColor(QPalette::WindowText, WarningColor);
    label.setPalette(palette);
}
