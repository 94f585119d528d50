#pragma once

#include <QList>
#include <QString>
#include <QStringView>

// How a terminal turns what a tool prints into lines, without a window: the
// console feeds raw tool output through it and shows the result.
//
// - A carriage return moves to the start of the current line and what
//   follows overwrites it, so a progress line redrawn a thousand times ends
//   as one line with its final figures; "\r\n" is an ordinary line end.
// - A backspace moves back one character, erasing it when it was the last of
//   the line (the next character overwrites it anyway).
// - SGR sequences (ESC [ ... m) set the style of the characters that follow;
//   ESC [ K erases the rest of the line. Every other escape sequence (CSI,
//   OSC and the other strings, charset selections, two-character escapes) is
//   consumed; other control characters are dropped.
// - A line longer than MaxLineLength continues on the next line, as it would
//   on a terminal that many columns wide. This keeps every line the view lays
//   out, and every redraw, bounded however long a tool's line is.
//
// A chunk may end anywhere, inside a sequence included; the next chunk
// continues it. Every character is handled in constant time, redrawn ones
// included, so any output is absorbed in time proportional to its size.
class TerminalText
{
public:
    static constexpr qsizetype MaxLineLength = 4096;

    // A style packed into one number, 0 for the console's own look:
    // foreground and background colour and a few attributes.
    using Style = quint64;
    // Colours: 0 is the default, PaletteColour | n the colour n of the
    // 256-colour palette (0-7 the standard, 8-15 the bright colours),
    // TrueColour | 0xRRGGBB any other.
    static constexpr quint32 PaletteColour = 0x100;
    static constexpr quint32 TrueColour = 0x1000000;
    enum Attribute : quint64 {
        Bold = quint64(1) << 50,
        Faint = quint64(1) << 51,
        Italic = quint64(1) << 52,
        Underline = quint64(1) << 53,
        Inverse = quint64(1) << 54,
    };
    static quint32 foreground(Style style) { return quint32(style & 0x1FFFFFF); }
    static quint32 background(Style style) { return quint32((style >> 25) & 0x1FFFFFF); }
    static Style withForeground(Style style, quint32 colour) { return (style & ~quint64(0x1FFFFFF)) | colour; }
    static Style withBackground(Style style, quint32 colour)
    {
        return (style & ~(quint64(0x1FFFFFF) << 25)) | (quint64(colour) << 25);
    }

    // A stretch of text in one style.
    struct Run
    {
        qsizetype length = 0;
        Style style = 0;
        bool operator==(const Run &) const = default;
    };

    // Interprets a chunk of raw output.
    void write(QStringView chunk);

    // Text that no longer changes: the lines ended since the last take, each
    // with its "\n" (and a line given up by detachLine(), without one), and
    // its styles as consecutive runs, empty when it is all in the default
    // style.
    struct Finished
    {
        QString text;
        QList<Run> runs;
    };
    Finished takeFinished();
    bool hasFinished() const { return !m_finished.isEmpty(); }
    // The same without handing them over; clearFinished() then forgets them.
    const QString &finishedText() const { return m_finished; }
    const QList<Run> &finishedRuns() const { return m_finishedRuns; }
    void clearFinished();

    // The line being written, as it reads now, and its runs (empty when all
    // default).
    const QString &currentLine() const { return m_line; }
    QList<Run> currentRuns() const;
    // Whether the current line changed since the last clearLineChanged().
    bool lineChanged() const { return m_lineChanged; }
    void clearLineChanged() { m_lineChanged = false; }

    // The current line stays as it reads but is no longer written to: what
    // follows starts a new line at its end (used when other text is put
    // after it). The style and a sequence in progress carry on.
    void detachLine();
    // Back to the start: no line, no style, no sequence in progress.
    void reset();

private:
    enum class State { Text, Escape, EscapeIntermediate, Csi, CsiIgnore, String, StringEscape };

    void print(QStringView text);
    void control(QChar c);
    void endLine();
    void finishCsi(QChar final);
    void selectGraphicRendition();
    void eraseInLine();
    void finishText(QStringView text, const QList<Style> &styles);
    void changeLine(qsizetype from, qsizetype to, QStringView text);

    State m_state = State::Text;
    QString m_params; // of the CSI sequence in progress
    Style m_style = 0;

    QString m_line;
    QList<Style> m_lineStyles; // one per character; empty while all are default
    qsizetype m_column = 0;
    bool m_lineChanged = false;

    QString m_finished;
    QList<Run> m_finishedRuns;
    bool m_finishedStyled = false;
};

// The plain text a sequence of chunks leaves on a terminal: the finished
// lines followed by the current one.
QString terminalPlainText(const QStringList &chunks);
