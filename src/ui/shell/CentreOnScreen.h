#pragma once

class QScreen;
class QWidget;

// Places a window at its present size in the middle of a screen: the one given, or else the
// screen the window is on.
void centreOnScreen(QWidget& window, const QScreen* screen = nullptr);
