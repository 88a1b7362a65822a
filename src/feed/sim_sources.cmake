# The instrument in software, for demos, tests and the pellamor-sim tool.
target_sources(tarnwick_core PRIVATE
    SimulatedInstrument.cpp SimulatedInstrument.h
)
