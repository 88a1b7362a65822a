#pragma once

// The settings every race log's prediction shares, which the user switches for all logs at
// once from the main window.
struct PredictionSettings {
    // The feed overwrites each log's adjusted altitude and vapor pressure with the live ones.
    bool automaticUpdates = true;
    // The prediction line reports the change of vapor pressure since the reference run.
    bool deltaVP = false;
};
