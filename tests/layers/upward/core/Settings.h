#pragma once

#include "ui/shell/MainWindow.h"
