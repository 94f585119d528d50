// libFuzzer target for the failure diagnosis: whatever a failed tool left in
// its last lines, the diagnosis must not crash, must say something, and may
// only name as its evidence a line the tool really wrote. Built and run by
// bench/fuzz.sh.

#include "FuzzCheck.h"
#include "workflow/FailureDiagnosis.h"
#include "workflow/OutputTail.h"

#include <QString>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 4)
        return 0;
    // The first bytes choose the operation, stage, tool and how it ended;
    // the rest is what it wrote, split between its two streams.
    const uint8_t pick = data[0];
    const QByteArray text(reinterpret_cast<const char *>(data + 4), qsizetype(size - 4));
    const qsizetype cut = text.size() * data[3] / 256;

    OutputTail errors;
    OutputTail output;
    errors.append(text.left(cut));
    output.append(text.mid(cut));

    StageResult stage;
    stage.tag = 1 + pick % 4;
    stage.stage = (pick >> 2) % 3;
    static const char *const tools[] = {"git", "cmake", "make", "cp", "bash", ""};
    stage.tool = QString::fromLatin1(tools[data[1] % 6]);
    stage.notStarted = (pick & 0x40) != 0;
    stage.signalled = (pick & 0x80) != 0;
    stage.status = 1 + data[2];
    stage.errorLines = errors.lines();
    stage.outputLines = output.lines();

    Surroundings surroundings;
    surroundings.workspace = QStringLiteral("/home/u/ZELMOR");
    surroundings.output = QStringLiteral("/home/u/ZELMOR/Output");
    surroundings.workspaceWritable = (data[1] & 0x10) == 0;
    surroundings.outputWritable = (data[1] & 0x20) == 0;
    surroundings.workspaceFreeBytes = (data[1] & 0x40) ? 0 : -1;
    surroundings.programFound = (data[1] & 0x80) == 0;

    const Diagnosis diagnosis = diagnoseFailure(stage, surroundings);
    check(!diagnosis.sentence.isEmpty());
    // The evidence is quoted from the tool, never made up.
    if (!diagnosis.evidence.isEmpty()) {
        bool quoted = false;
        for (const QStringList *lines : {&stage.errorLines, &stage.outputLines})
            for (const QString &line : *lines)
                quoted = quoted || line.contains(diagnosis.evidence.trimmed());
        check(quoted || stage.notStarted || stage.signalled
              || diagnosis.kind == FailureKind::Other);
    }
    return 0;
}
