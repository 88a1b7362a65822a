#include "feed/CommErrorText.h"

#include <array>

namespace {

struct CommError {
    int code;
    const char* text;
};

constexpr std::array<CommError, 7> CommErrors{{
    {1001, "Break signal received"},
    {1004, "Framing error"},
    {1006, "Port overrun"},
    {1008, "Receive buffer overflow"},
    {1009, "Parity error"},
    {1010, "Transmit buffer full"},
    {1011, "Unexpected error retrieving Device Control Block for the port"},
}};

} // namespace

QString commErrorText(int code) {
    for (const CommError& error : CommErrors) {
        if (error.code == code)
            return QString::fromLatin1(error.text);
    }
    return {};
}
