target_sources(tarnwick_core PRIVATE
    CommErrorText.cpp CommErrorText.h
    CorrectionFactor.cpp CorrectionFactor.h
    DataFolder.cpp DataFolder.h
    LoggedWeather.h
    SerialFramer.cpp SerialFramer.h
    StatusLine.cpp StatusLine.h
    TcpLineSplitter.cpp TcpLineSplitter.h
    WeatherFeed.cpp WeatherFeed.h
    WeatherLog.cpp WeatherLog.h
    WeatherLogFormat.cpp WeatherLogFormat.h
    WeatherLookup.cpp
    WeatherParser.cpp WeatherParser.h
    WeatherQuantities.cpp WeatherQuantities.h
    WeatherReplay.cpp
    WeatherReplaySink.h
)
