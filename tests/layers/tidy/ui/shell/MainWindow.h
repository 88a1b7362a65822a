#pragma once

#include "core/Settings.h"

#include <QMainWindow>
