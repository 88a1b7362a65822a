# What both companion programs share: their console lines and their clean end on a signal.
add_library(tarnwick_toolsupport STATIC
    common/Console.cpp common/Console.h
    common/QuitOnSignal.cpp common/QuitOnSignal.h
)
target_include_directories(tarnwick_toolsupport PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(tarnwick_toolsupport PUBLIC Qt6::Core)

# The relay that shares the feed with display instances.
add_executable(oskerby
    oskerby/main.cpp
    oskerby/Relay.cpp oskerby/Relay.h
)
target_link_libraries(oskerby PRIVATE tarnwick_toolsupport Qt6::Network)

# The instrument in software, over a pseudo-terminal or through the relay.
add_executable(pellamor-sim
    pellamor-sim/main.cpp
    pellamor-sim/InstrumentSession.cpp pellamor-sim/InstrumentSession.h
    pellamor-sim/PtyLink.cpp pellamor-sim/PtyLink.h
    pellamor-sim/RelayLink.cpp pellamor-sim/RelayLink.h
)
target_link_libraries(pellamor-sim PRIVATE tarnwick_core tarnwick_toolsupport)
