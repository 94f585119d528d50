#include "widgets/SliceBudget.h"

#include <algorithm>
#include <ctime>

qint64 SliceBudget::threadCpuNs()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return qint64(now.tv_sec) * 1000000000 + now.tv_nsec;
}

qint64 SliceBudget::moveNs(qsizetype documentCharacters) const
{
    return std::max(MinMoveNs, SliceNs - qint64(m_copyNsPerChar * double(documentCharacters)));
}

qsizetype SliceBudget::allowance(qsizetype documentCharacters) const
{
    return std::max(MinSliceChars,
                    qsizetype(double(moveNs(documentCharacters)) / m_nanosecondsPerChar));
}

qint64 SliceBudget::expectedNs(qsizetype characters) const
{
    return qint64(m_nanosecondsPerChar * double(characters));
}

void SliceBudget::noteOneOffCost(qint64 nanoseconds, qsizetype documentCharacters)
{
    if (nanoseconds < CopySeenNs || documentCharacters < CopyMinCharacters)
        return;
    const double perChar = double(nanoseconds) / double(documentCharacters);
    // Up at once, down slowly: one cheap copy does not make the next one cheap.
    m_copyNsPerChar = perChar > m_copyNsPerChar ? perChar : (3 * m_copyNsPerChar + perChar) / 4;
    m_copySeen = true;
}

void SliceBudget::noteSlice(qsizetype characters, qint64 nanoseconds)
{
    if (characters >= MinSliceChars) {
        const double cost = double(nanoseconds) / double(characters);
        m_nanosecondsPerChar = std::clamp((m_nanosecondsPerChar + cost) / 2, 2.0, 1e6);
    }
    // The reserve shrinks a little with every slice that saw no copy, so a
    // figure once too high does not hold the console back for good.
    if (!m_copySeen)
        m_copyNsPerChar *= 0.98;
    m_copySeen = false;
}
