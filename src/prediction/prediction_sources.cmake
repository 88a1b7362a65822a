# The window-free core of prediction: the ET model, the prediction line, run completion and
# the pager's texts and timing.
target_sources(tarnwick_core PRIVATE
    ComputeFault.h
    EtModel.cpp EtModel.h
    PagerComposer.cpp PagerComposer.h
    PagerSchedule.cpp PagerSchedule.h
    PredictionModel.cpp PredictionModel.h
    RunCells.cpp RunCells.h
    RunCompletion.cpp RunCompletion.h
)
