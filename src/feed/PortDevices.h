#pragma once

#include <QString>

// Which device a "ComN" entry of the port list opens. On Windows it is COMN itself. Elsewhere
// serial ports have other names, so the user can set the device of each entry (value "Com3"
// of the port devices setting, for instance "/dev/ttyUSB0"); an entry with none set opens
// /dev/ttyS<N-1>, the N-th built-in port.

QString portDevice(int comPort);
// Stores the device of an entry; an empty text removes it, so the entry opens its built-in
// port again.
void setPortDevice(int comPort, const QString& device);
