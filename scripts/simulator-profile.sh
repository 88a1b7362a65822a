# Sourced by scripts that run Tarnwick on the instrument simulator: a profile of its own
# (settings, data and runtime folders under one folder) whose Com1 is the simulator's
# pseudo-terminal, read at 9600 bits per second, 8 data bits, no parity, one stop bit.
#   simulator_profile <profile folder> <pseudo-terminal path>
# Exports XDG_CONFIG_HOME, XDG_DATA_HOME and XDG_RUNTIME_DIR for the programs started after.
simulator_profile() {
    local profile=$1 device=$2
    mkdir -p "$profile/config/Zorvane" "$profile/data" "$profile/run"
    chmod 700 "$profile/run"
    export XDG_CONFIG_HOME="$profile/config" XDG_DATA_HOME="$profile/data" \
        XDG_RUNTIME_DIR="$profile/run"
    cat >"$profile/config/Zorvane/registry.ini" <<INI
[SOFTWARE]
Zorvane\\Main\\Defaults\\PagerFrequency=0
Zorvane\\SerialPort\\0=1
Zorvane\\SerialPort\\1=5
Zorvane\\SerialPort\\2=0
Zorvane\\SerialPort\\3=4
Zorvane\\SerialPort\\4=0
Zorvane\\SerialPort\\5=0
Zorvane\\SerialPort\\6=None
Zorvane\\SerialPort\\7=None
Zorvane\\SerialPort\\Devices\\Com1=$device
INI
}
