# The links to the instrument, their settings and the port settings dialog.
target_sources(tarnwick_core PRIVATE
    InstrumentConnection.cpp InstrumentConnection.h
    LineSettings.cpp LineSettings.h
    PacedLink.cpp PacedLink.h
    PortDevices.cpp PortDevices.h
    PortLink.h
    PortSettings.cpp PortSettings.h
    ReplayLink.cpp ReplayLink.h
    SerialLink.cpp SerialLink.h
    SimulatorLink.cpp SimulatorLink.h
    TcpLink.cpp TcpLink.h
)
target_sources(tarnwick_ui PRIVATE
    frmProperties.cpp frmProperties.h
)
