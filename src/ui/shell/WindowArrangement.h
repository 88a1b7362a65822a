#pragma once

class QMdiArea;

// Arranging the child windows of the main window. Minimised windows keep their place;
// maximised ones are restored first so that they can take their share.
namespace WindowArrangement {

// One above the other, each the full width of the client area.
void tileHorizontally(QMdiArea& area);
// Side by side, each the full height of the client area.
void tileVertically(QMdiArea& area);
// Overlapping, each a step below and to the right of the one before.
void cascade(QMdiArea& area);

} // namespace WindowArrangement
