#pragma once

#include <QtGlobal>

// How much text one slice of the console may move into its document so that
// the slice, with the paint and the reading of a child's output that share
// its turn of the event loop, stays within a frame.
//
// Much of a slice's cost comes after the text is in: the document and the
// view take in the change at the end of the edit, and the oldest lines go.
// No clock can stop that part, so a slice moves as many characters as the
// slices before it managed in their time, end included, and the clock only
// guards against surprises. What a character costs differs fivefold between
// plain and coloured text, and with the machine, so it is learned.
//
// Now and then the document copies all its text at once: it compacts its
// buffer at the end of an edit once dropped lines fill it, and the buffer
// grows by copying. That costs in proportion to what the console holds, and
// no slice can tell in advance which edit it falls in, so every slice keeps
// that much of its time free. The reserve rises at once with a dearer copy
// and shrinks slowly while none is seen.
//
// Costs are what the caller measured, in nanoseconds, on threadCpuNs():
// time the system gave other programs in between says nothing about what the
// next slice will cost, and on a busy machine a wall clock would shrink the
// slices for it. Nothing else here reads a clock.
class SliceBudget
{
public:
    static constexpr qint64 SliceNs = 8000000;
    // However much the reserve takes, moving text keeps this much.
    static constexpr qint64 MinMoveNs = 2000000;
    // Fewer characters say too little about what one costs.
    static constexpr qsizetype MinSliceChars = 1024;
    // A one-off cost above this, with a document of at least
    // CopyMinCharacters, is taken for a copy of all its text.
    static constexpr qint64 CopySeenNs = 1500000;
    static constexpr qsizetype CopyMinCharacters = 64 * 1024;

    // The processor time this thread has had.
    static qint64 threadCpuNs();

    // The time the next slice may spend moving text, and the characters it
    // may move, with a document of so many characters.
    qint64 moveNs(qsizetype documentCharacters) const;
    qsizetype allowance(qsizetype documentCharacters) const;
    // What moving so many characters is expected to cost.
    qint64 expectedNs(qsizetype characters) const;

    // A cost that moving text does not explain, seen with a document of so
    // many characters.
    void noteOneOffCost(qint64 nanoseconds, qsizetype documentCharacters);
    // A slice has ended: it moved so many characters in so much time, all
    // included.
    void noteSlice(qsizetype characters, qint64 nanoseconds);

private:
    // What moving one character has cost lately, its share of the end of
    // the edit and of dropping old lines included; at first a guess on the
    // safe side.
    double m_nanosecondsPerChar = 200;
    // What copying all the text costs per character held: about 8 ns where
    // it was measured, mostly fresh memory being touched.
    double m_copyNsPerChar = 8;
    bool m_copySeen = false; // since the last noteSlice()
};
