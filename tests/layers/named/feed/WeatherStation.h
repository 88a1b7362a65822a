#pragma once

class MainWindow;

class WeatherStation {
    MainWindow* window = nullptr;
};
