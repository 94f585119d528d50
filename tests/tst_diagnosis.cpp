#include "TestSupport.h"

#include "workflow/FailureDiagnosis.h"
#include "workflow/OutputTail.h"

#include <QDir>

// What a user is told about a failed stage, from what the tools really
// printed: data/diagnosis holds the output of git, cmake, make, gcc, cp and
// bash failing on Debian 12, each case in English, German, French and
// Spanish (data/diagnosis/capture.sh made them).

namespace {

// A capture: "tool:", "tag:", "stage:", "status:" lines, then the two
// streams after "[stderr]" and "[stdout]".
StageResult readCapture(const QString &name)
{
    const QByteArray text = TestSupport::readFile(QFINDTESTDATA("data/diagnosis/" + name + ".txt"));
    const qsizetype errors = text.indexOf("[stderr]\n") + 9;
    const qsizetype output = text.indexOf("[stdout]", errors);
    QHash<QByteArray, QByteArray> header;
    for (const QByteArray &line : text.left(errors).split('\n'))
        header.insert(line.left(line.indexOf(':')), line.mid(line.indexOf(':') + 1).trimmed());
    const auto lines = [](const QByteArray &stream) {
        OutputTail tail;
        tail.append(stream);
        return tail.lines();
    };
    return {.tag = header["tag"].toInt(),
            .stage = header["stage"].toInt(),
            .tool = QString::fromUtf8(header["tool"]),
            .status = header["status"].toInt(),
            .errorLines = lines(text.mid(errors, output - errors)),
            .outputLines = lines(text.mid(output + 9))};
}

const QStringList Languages{"en", "de", "fr", "es"};

// Where the capture was made and what the user is to be told about it.
struct Capture
{
    const char *name;
    FailureKind kind;
    FailureAction action;
    const char *subject;
    const char *evidence;
    const char *workspace = "/tmp/zcap/ws";
    const char *output = "/tmp/zcap/output";
};

using K = FailureKind;
using A = FailureAction;
const char *const Project = "/tmp/zcap/proj";
const char *const Mine = "/tmp/zcap/mine";

// Every capture but copy-denied, which copyIntoFolderThatCannotBeMade reads.
const Capture Captures[] = {
    {"clone-refused", K::Network, A::TryAgain, "", "127.0.0.1 port 9"},
    {"clone-refused-git", K::Network, A::TryAgain, "", "errno="},
    {"clone-no-host", K::Network, A::TryAgain, "", "Could not resolve host: github.invalid"},
    {"clone-timeout", K::Network, A::TryAgain, "", "Connection timed out"},
    {"clone-not-found-http", K::Access, A::None, "", "missing.git"},
    {"clone-not-found-path", K::Access, A::None, "", "nothing.git"},
    {"clone-private", K::Access, A::None, "", "could not read Username"},
    {"module-not-found", K::Access, A::None, "", "emu-lang.git"},
    {"clone-exists", K::WorkspaceNotEmpty, A::MoveAsideAndDownload, "/tmp/zcap/ws",
     "'/tmp/zcap/ws'"},
    {"clone-denied", K::Permission, A::ChooseWorkspace, "/tmp/zcap/rootonly/ZELMOR",
     "rootonly/ZELMOR", "/tmp/zcap/rootonly/ZELMOR"},
    {"clone-read-only", K::Permission, A::ChooseWorkspace, "/tmp/zcap/ro/ZELMOR", "ro/ZELMOR",
     "/tmp/zcap/ro/ZELMOR"},
    {"clone-full", K::DiskFull, A::TryAgain, "/tmp/zcap/small/ZELMOR", "copy-fd",
     "/tmp/zcap/small/ZELMOR"},
    {"copy-full", K::DiskFull, A::TryAgain, "/tmp/zcap/small", "/tmp/zcap/small/ZELMORSDL",
     "/tmp/zcap/ws", "/tmp/zcap/small"},
    {"git-missing", K::ToolMissing, A::InstallEssentials, "git", "git"},
    {"make-missing", K::ToolMissing, A::InstallEssentials, "make", "make"},
    {"cmake-module", K::PackageMissing, A::InstallEssentials, "OpenAL", "Could NOT find OpenAL",
     Project},
    {"cmake-config", K::PackageMissing, A::InstallEssentials, "SDL2_ttf", "\"SDL2_ttf\"", Project},
    {"cmake-pkgconfig", K::PackageMissing, A::InstallEssentials, "SDL2_mixer",
     "Package 'SDL2_mixer', required by", Project},
    {"make-compile-error", K::CompileError, A::None, "main.c:4",
     "/tmp/zcap/proj/main.c:4:20:", Project},
    {"make-missing-header", K::CompileError, A::None, "main.c:1", "SDL_ttf.h", Project},
    {"pull-local-changes", K::PullBlocked, A::MoveAsideAndDownload, "notes.txt", "", Mine},
    {"pull-conflict", K::PullBlocked, A::MoveAsideAndDownload, "notes.txt", "notes.txt", Mine},
    {"pull-divergent", K::PullBlocked, A::MoveAsideAndDownload, "", "", Mine},
    {"make-no-makefile", K::Other, A::None, "make", "make: ***", Project},
    {"submodules-no-upstream", K::Other, A::None, "git", "lang", Mine},
};

} // namespace

Q_DECLARE_METATYPE(Capture)
Q_DECLARE_METATYPE(StageResult)
Q_DECLARE_METATYPE(Surroundings)

class DiagnosisTest : public QObject
{
    Q_OBJECT

private slots:
    void capturedFailures_data()
    {
        TestSupport::columns<Capture, QString>({"capture", "language"});
        for (const Capture &capture : Captures)
            for (const QString &language : Languages)
                QTest::addRow("%s.%s", capture.name, qPrintable(language)) << capture << language;
    }
    void capturedFailures()
    {
        QFETCH(Capture, capture);
        QFETCH(QString, language);
        const StageResult stage = readCapture(capture.name + QLatin1Char('.') + language);
        QVERIFY(stage.failed());
        const Diagnosis diagnosis = diagnoseFailure(stage, {.workspace = capture.workspace,
                                                            .output = capture.output,
                                                            .workspaceFreeBytes = 3 * 1024 * 1024,
                                                            .outputFreeBytes = 512 * 1024});
        QCOMPARE(diagnosis.kind, capture.kind);
        QCOMPARE(diagnosis.action, capture.action);
        QCOMPARE(diagnosis.subject, QString(capture.subject));
        QVERIFY2(diagnosis.evidence.contains(capture.evidence), qPrintable(diagnosis.evidence));
        // The line shown is one the tool printed.
        QVERIFY2((stage.errorLines + stage.outputLines).join('\n').contains(diagnosis.evidence),
                 qPrintable(diagnosis.evidence));
        // The sentence names the tool, package, file or folder; the disk's
        // free space instead of the disk.
        const QString named = capture.kind != K::DiskFull
                                  ? QString(capture.subject).section(':', 0, 0)
                              : QByteArray(capture.name).startsWith("copy") ? "512.0 kB"
                                                                            : "3.0 MB";
        QVERIFY2(!diagnosis.sentence.isEmpty() && diagnosis.sentence.contains(named),
                 qPrintable(diagnosis.sentence));
        QCOMPARE(failureActionTitle(capture.action).isEmpty(), capture.action == A::None);
    }

    // cp says "No such file or directory": the output folder could not be
    // made, which is the folder's fault only when its parent may not be written.
    void copyIntoFolderThatCannotBeMade()
    {
        for (const QString &language : Languages) {
            const StageResult stage = readCapture("copy-denied." + language);
            Surroundings surroundings{.workspace = "/tmp/zcap/ws",
                                      .output = "/tmp/zcap/rootonly/Output"};
            const Diagnosis unexplained = diagnoseFailure(stage, surroundings);
            QCOMPARE(unexplained.kind, K::Other);
            QCOMPARE(unexplained.sentence, "cp ended with status 1.");
            surroundings.outputWritable = false;
            const Diagnosis diagnosis = diagnoseFailure(stage, surroundings);
            QCOMPARE(diagnosis.kind, K::Permission);
            QCOMPARE(diagnosis.action, A::ChooseOutput);
            QCOMPARE(diagnosis.sentence, "You may not write to the output folder "
                                         "/tmp/zcap/rootonly/Output. Choose another folder.");
            QVERIFY2(diagnosis.evidence.contains("/tmp/zcap/rootonly/Output/assets/"),
                     qPrintable(language));
        }
    }

    // A new capture fails here until it has its row.
    void everyCaptureHasARow()
    {
        QCOMPARE(QDir(QFINDTESTDATA("data/diagnosis")).entryList({"*.en.txt"}).size(),
                 qsizetype(std::size(Captures)) + 1);
    }

    void sentences_data()
    {
        TestSupport::columns<StageResult, Surroundings, QString>(
            {"stage", "surroundings", "sentence"});
        const Surroundings plain{.workspace = "/home/ada/Developer/ZELMOR",
                                 .output = "/home/ada/Developer/ZELMOR/Output"};
        Surroundings full = plain;
        full.workspaceFreeBytes = 1536 * 1024;
        Surroundings readOnly = plain;
        readOnly.workspaceWritable = false;

        const StageResult notStarted{3, 0, "cmake", true, false, 0, {}, {}};
        const StageResult noSpace{
            1, 0, "git", false, false, 128, {"fatal: write error: No space left on device"}, {}};
        StageResult killed{3, 1, "make", false, true, 9, {}, {"[ 40%] Building C object x.o"}};
        const StageResult status{2, 0, "git", false, false, 1, {"error: something new"}, {}};
        QTest::newRow("signal") << killed << plain << "make was ended by signal 9.";
        QTest::newRow("status") << status << plain << "git ended with status 1.";
        QTest::newRow("silent") << StageResult{3, 2, "cp", false, false, 1, {}, {}} << plain
                                << "cp ended with status 1.";
        QTest::newRow("not started, folder")
            << notStarted << readOnly
            << "You may not write to the workspace folder "
               "/home/ada/Developer/ZELMOR. Choose another folder.";
        QTest::newRow("not started") << notStarted << plain << "cmake could not be started.";
        QTest::newRow("exit 127") << StageResult{2, 1, "git", false, false, 127, {}, {}} << plain
                                  << "git is not installed. Install Essentials installs it.";
        QTest::newRow("disk full") << noSpace << full
                                   << "The disk is full: it has 1.5 MB free. Free some space, then "
                                      "try again.";
        QTest::newRow("disk full, size unknown")
            << noSpace << plain << "The disk is full. Free some space, then try again.";
    }
    void sentences()
    {
        QFETCH(StageResult, stage);
        QFETCH(Surroundings, surroundings);
        QFETCH(QString, sentence);
        QCOMPARE(diagnoseFailure(stage, surroundings).sentence, sentence);
    }

    // The record keeps the end of what a child said, in bounded memory, line
    // by line, whatever the chunks were.
    void outputTail()
    {
        OutputTail progress;
        progress.append("Receiving objects:  10% (1/10)\rReceiving objects: 100% (10/10), "
                        "done.\r\n\n  \nResolving");
        progress.append(" deltas: 100% (4/4), done.\n");
        QCOMPARE(progress.lines(), (QStringList{"Receiving objects:  10% (1/10)",
                                                "Receiving objects: 100% (10/10), done.",
                                                "Resolving deltas: 100% (4/4), done."}));
        OutputTail tail(64);
        for (int i = 0; i < 1000; ++i)
            tail.append("line " + QByteArray::number(i) + '\n');
        tail.append("fatal: the ");
        tail.append("end\n");
        const QStringList lines = tail.lines();
        QCOMPARE(lines.constLast(), "fatal: the end");
        QCOMPARE(lines.constFirst().left(5), "line ");
        QVERIFY(lines.join('\n').size() <= 64);
        QCOMPARE(tail.lines(2), (QStringList{"line 999", "fatal: the end"}));
        // One line longer than the bound keeps its end.
        OutputTail one(8);
        one.append("abcdefghijkl");
        QCOMPARE(one.lines(), QStringList{"efghijkl"});
    }
};

ZELMOR_TEST_MAIN(DiagnosisTest)
#include "tst_diagnosis.moc"
