#pragma once

class QKeyEvent;

// The character code a key press types, as the run table and its cell editors see it: the
// character of the key, and for Ctrl with a letter the control code (Ctrl+C is 3, Ctrl+V 22,
// Ctrl+X 24). 0 for a key that types nothing: arrows, function keys, Delete.
int typedKeyCode(const QKeyEvent& event);
