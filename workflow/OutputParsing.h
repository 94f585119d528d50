#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

// Reading progress out of what git and make print. Pure functions: the
// output handlers call them once per chunk, tests and the fuzzer call them
// directly. A chunk is parsed on its own; nothing carries over between chunks.
namespace OutputParsing {

// The label shown beside the bar when no transfer speed is known.
inline constexpr QStringView IdleSpeedLabel = u"ZELMOR";

// make's output is split at blank, "%", "[" and "]"; git's at blank and "|"
// (TextPieces::splitAtAny).
inline constexpr QStringView MakeSeparators = u" %[]";
inline constexpr QStringView GitSeparators = u" |";

// Every run of ASCII digits in text order, each as a 32-bit integer (a run
// too large gives 2147483647). "1.23" gives 1 and 23.
QList<qint32> numberHunter(QStringView text);

// The bar value a chunk of make's standard output sets: make's right-aligned
// "[ 45%]" prefix on the chunk's first line, read from pieces 1, 2 and 3 (the
// first that is not 0). Nothing when the chunk has fewer than five pieces or
// the three read as 0, and the bar keeps its value.
std::optional<qint32> makeProgressValue(QStringView text);

// What one chunk of a clone's standard error does to the bar and the label.
struct CloneProgress
{
    enum Outcome {
        Progress,     // set the bar and the label from the fields below
        TooFewPieces, // fewer than five pieces: no speed text can be built
        NoNumbers,    // speed text built, bar made determinate, but no figure
    };
    Outcome outcome = Progress;
    int pieces = 0;        // number of pieces of the git splitting
    qint32 percentage = 0; // kept, not shown
    qint32 value = 0;      // objects received...
    qint32 maximum = 0;    // ...of this many
    QString label;         // the speed text or IdleSpeedLabel
};

// Decides from the count k of numbers in the chunk which figures the bar
// shows: k of 3 (one counting line) or a multiple of 3 from 6 on (the speed
// is shown unless the third and sixth figures agree), a multiple of 7 (a
// transfer line with its speed; several updates in one chunk take the first
// update's figures and the last speed), anything else resets to 0 of 0.
// The speed text is pieces n-5 and n-4 joined by a blank, which is where git
// puts "456.00 KiB/s" before its padding and carriage return.
CloneProgress cloneProgress(QStringView text);

} // namespace OutputParsing
