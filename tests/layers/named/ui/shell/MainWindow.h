#pragma once

#include <QMainWindow>

class MainWindow : public QMainWindow {};
