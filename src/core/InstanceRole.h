#pragma once

// What this process is, decided once at start: the main instance reads the instrument and
// writes the weather log; a display instance is fed over TCP by the main instance and only
// shows.
enum class InstanceRole { Main, Display };
