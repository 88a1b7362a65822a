#pragma once

#include <QByteArray>

// True for a line exactly as the instrument writes it: a space, the date "MM/DD/YYYY", the
// time "hh:mm:ss", fifteen numbers each with its own count of decimals, and a CR.
bool hasInstrumentShape(const QByteArray& line);
