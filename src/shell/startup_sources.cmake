target_sources(tarnwick_core PRIVATE
    InstanceChannel.cpp InstanceChannel.h
    clsMonitors.cpp clsMonitors.h
)
target_sources(tarnwick_ui PRIVATE
    CountMonitors.cpp CountMonitors.h
    Main.cpp Main.h
    WindowPlacement.cpp WindowPlacement.h
    frmSplash.cpp frmSplash.h
)
