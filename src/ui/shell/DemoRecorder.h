#pragma once

class MainWindow;

// For the demo run without a display: when TARNWICK_ECHO_STATUS is set every status line is
// printed as "STATUS: <text>"; TARNWICK_SCREENSHOT names a PNG file that gets a picture of
// the main window, with a dialog open on it drawn where it stands, just before
// TARNWICK_QUIT_AFTER_MS ends the program, and TARNWICK_DEMO_COMMANDS names tools (separated by
// commas) that run one after the other once the window is up, so a picture can show what a user
// would open. Nothing happens when none of them is set.
namespace DemoRecorder {
void install(MainWindow& window);
}
