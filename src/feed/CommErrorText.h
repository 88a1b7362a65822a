#pragma once

#include <QString>

// What a serial comm error number means, in the words the status bar shows after
// "Comm Error: ". Empty for a number with no words of its own.
QString commErrorText(int code);
