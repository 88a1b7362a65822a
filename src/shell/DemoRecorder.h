#pragma once

class frmMain;

// For the demo run without a display: when TARNWICK_ECHO_STATUS is set every status line is
// printed as "STATUS: <text>"; TARNWICK_SCREENSHOT names a PNG file that gets a picture of
// the main window just before TARNWICK_QUIT_AFTER_MS ends the program. Nothing happens when
// none of them is set.
namespace DemoRecorder {
void Install(frmMain& window);
}
