#include "pages/PageFonts.h"

namespace PageFonts {

void install() {
    static const bool installed = [] {
        QFont::insertSubstitutions(QStringLiteral("Tahoma"), {QStringLiteral("Liberation Sans"),
                                                              QStringLiteral("DejaVu Sans")});
        QFont::insertSubstitution(QStringLiteral("Arial"), QStringLiteral("Liberation Sans"));
        QFont::insertSubstitution(QStringLiteral("Arial Narrow"),
                                  QStringLiteral("Liberation Sans Narrow"));
        return true;
    }();
    Q_UNUSED(installed);
}

QFont font(const PageDocument::Style& style) {
    QFont font(style.fontFamily);
    font.setPointSizeF(style.fontSize);
    return font;
}

} // namespace PageFonts
