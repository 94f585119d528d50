#pragma once

#include <QStringView>
#include <QtGlobal>

#include <limits>

// Numbers read out of text as the tools print them and as the settings hold
// them: ASCII digits only, never an error, never an overflow.
namespace TextNumbers {

struct DigitRun
{
    qint64 value = 0;      // stops growing at the ceiling it was read with
    qsizetype length = 0;  // 0: text does not start with a digit
};

// The run of ASCII digits at the start of text. A run too large reads as
// ceiling; reading on to the run's end still tells where it stops.
DigitRun leadingDigits(QStringView text, qint64 ceiling = std::numeric_limits<qint32>::max());

// Text read as an integer: optional leading white space, an optional sign,
// then digits; 0 when no digit follows. Saturates at the 32-bit limits.
qint32 integerValue(QStringView text);

} // namespace TextNumbers
