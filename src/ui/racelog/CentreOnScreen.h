#pragma once

class QWidget;

// Places a window, at the size its contents ask for, in the middle of its screen.
void CentreOnScreen(QWidget& window);
