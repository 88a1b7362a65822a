#pragma once

#include <QAbstractTableModel>
#include <QTableView>
