// libFuzzer target for the console's line discipline: whatever a tool
// prints, and wherever its output is cut into chunks, the terminal must end
// with the same text in the same styles, no line wider than a terminal line,
// and styles that cover exactly the text. Built and run by bench/fuzz.sh.

#include "FuzzCheck.h"
#include "widgets/TerminalText.h"

#include <QString>

#include <cstdint>
#include <cstdlib>

namespace {


struct Screen
{
    QString text;
    QList<TerminalText::Run> runs;
    QString line;
    QList<TerminalText::Run> lineRuns;
};

Screen feed(const QString &input, qsizetype step)
{
    TerminalText terminal;
    Screen screen;
    for (qsizetype at = 0; at < input.size(); at += step) {
        terminal.write(QStringView(input).mid(at, step));
        // Taken as the console takes it, between chunks.
        const TerminalText::Finished finished = terminal.takeFinished();
        if (!finished.runs.isEmpty() && screen.runs.isEmpty() && !screen.text.isEmpty())
            screen.runs.append({screen.text.size(), 0});
        if (!finished.runs.isEmpty())
            screen.runs.append(finished.runs);
        else if (!screen.runs.isEmpty() && !finished.text.isEmpty())
            screen.runs.append({finished.text.size(), 0});
        screen.text += finished.text;
    }
    screen.line = terminal.currentLine();
    screen.lineRuns = terminal.currentRuns();
    return screen;
}

// Runs of one style next to each other, merged, so two ways of cutting the
// same text compare equal.
QList<TerminalText::Run> merged(const QList<TerminalText::Run> &runs)
{
    QList<TerminalText::Run> result;
    for (const TerminalText::Run &run : runs) {
        if (run.length == 0)
            continue;
        if (!result.isEmpty() && result.last().style == run.style)
            result.last().length += run.length;
        else
            result.append(run);
    }
    if (result.size() == 1 && result.first().style == 0)
        result.clear();
    return result;
}

qsizetype covered(const QList<TerminalText::Run> &runs)
{
    qsizetype length = 0;
    for (const TerminalText::Run &run : runs)
        length += run.length;
    return length;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    const qsizetype step = data[0] % 17 + 1;
    const QString input = QString::fromUtf8(reinterpret_cast<const char *>(data + 1),
                                            static_cast<qsizetype>(size - 1));

    const Screen whole = feed(input, std::max<qsizetype>(1, input.size()));
    const Screen cut = feed(input, step);
    check(whole.text == cut.text);
    check(whole.line == cut.line);
    check(merged(whole.runs) == merged(cut.runs));
    check(merged(whole.lineRuns) == merged(cut.lineRuns));

    for (const Screen *screen : {&whole, &cut}) {
        check(screen->runs.isEmpty() || covered(screen->runs) == screen->text.size());
        check(screen->lineRuns.isEmpty() || covered(screen->lineRuns) == screen->line.size());
        check(screen->line.size() <= TerminalText::MaxLineLength + 1);
        for (QStringView line : QStringView(screen->text).split(u'\n'))
            check(line.size() <= TerminalText::MaxLineLength + 1);
        check(!screen->text.contains(QChar(0x1B)) && !screen->line.contains(QChar(0x1B)));
    }
    return 0;
}
