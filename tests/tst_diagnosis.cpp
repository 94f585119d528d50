#include "TestSupport.h"

#include "workflow/FailureDiagnosis.h"
#include "workflow/OutputTail.h"

#include <QDirIterator>
#include <QRegularExpression>

// What a user is told about a failed stage, from what the tools really
// printed: data/diagnosis holds the output of git, cmake, make, gcc, cp and
// bash failing on Debian 12, each case in English, German, French and
// Spanish (data/diagnosis/capture.sh made them).

Q_DECLARE_METATYPE(FailureKind)
Q_DECLARE_METATYPE(FailureAction)
Q_DECLARE_METATYPE(StageResult)
Q_DECLARE_METATYPE(Surroundings)

namespace {

// A capture: "tool:", "tag:", "stage:", "status:" lines, then the two
// streams after "[stderr]" and "[stdout]".
StageResult readCapture(const QString &path)
{
    StageResult result;
    OutputTail errors;
    OutputTail output;
    OutputTail *stream = nullptr;
    const QByteArray text = TestSupport::readFile(path);
    for (const QByteArray &line : text.split('\n')) {
        if (line == "[stderr]") {
            stream = &errors;
        } else if (line == "[stdout]") {
            stream = &output;
        } else if (stream) {
            stream->append(line + '\n');
        } else {
            const QByteArray value = line.mid(line.indexOf(':') + 1).trimmed();
            if (line.startsWith("tool:"))
                result.tool = QString::fromUtf8(value);
            else if (line.startsWith("tag:"))
                result.tag = value.toInt();
            else if (line.startsWith("stage:"))
                result.stage = value.toInt();
            else if (line.startsWith("status:"))
                result.status = value.toInt();
        }
    }
    result.errorLines = errors.lines();
    result.outputLines = output.lines();
    return result;
}

const QString Base = QStringLiteral("/tmp/zcap");
const QStringList Languages{"en", "de", "fr", "es"};

} // namespace

class DiagnosisTest : public QObject
{
    Q_OBJECT

private slots:
    void capturedFailures_data()
    {
        TestSupport::columns<QString, QString, QString, FailureKind, FailureAction, QString,
                             QString>(
            {"capture", "workspace", "output", "kind", "action", "subject", "evidence"});
        const QString ws = Base + "/ws";
        const QString out = Base + "/output";
        const struct Row
        {
            const char *capture;
            QString workspace;
            QString output;
            FailureKind kind;
            FailureAction action;
            QString subject;
            const char *evidence;
        } rows[] = {
            {"clone-refused", ws, out, FailureKind::Network, FailureAction::TryAgain, "",
             "127.0.0.1 port 9"},
            {"clone-refused-git", ws, out, FailureKind::Network, FailureAction::TryAgain, "",
             "errno="},
            {"clone-no-host", ws, out, FailureKind::Network, FailureAction::TryAgain, "",
             "Could not resolve host: github.invalid"},
            {"clone-timeout", ws, out, FailureKind::Network, FailureAction::TryAgain, "",
             "Connection timed out"},
            {"clone-not-found-http", ws, out, FailureKind::Access, FailureAction::None, "",
             "missing.git"},
            {"clone-not-found-path", ws, out, FailureKind::Access, FailureAction::None, "",
             "nothing.git"},
            {"clone-private", ws, out, FailureKind::Access, FailureAction::None, "",
             "could not read Username"},
            {"module-not-found", ws, out, FailureKind::Access, FailureAction::None, "",
             "emu-lang.git"},
            {"clone-exists", ws, out, FailureKind::WorkspaceNotEmpty,
             FailureAction::MoveAsideAndDownload, ws, "'/tmp/zcap/ws'"},
            {"clone-denied", Base + "/rootonly/ZELMOR", out, FailureKind::Permission,
             FailureAction::ChooseWorkspace, Base + "/rootonly/ZELMOR", "rootonly/ZELMOR"},
            {"clone-read-only", Base + "/ro/ZELMOR", out, FailureKind::Permission,
             FailureAction::ChooseWorkspace, Base + "/ro/ZELMOR", "ro/ZELMOR"},
            {"clone-full", Base + "/small/ZELMOR", out, FailureKind::DiskFull,
             FailureAction::TryAgain, Base + "/small/ZELMOR", "copy-fd"},
            {"copy-full", ws, Base + "/small", FailureKind::DiskFull, FailureAction::TryAgain,
             Base + "/small", "/tmp/zcap/small/ZELMORSDL"},
            {"git-missing", ws, out, FailureKind::ToolMissing, FailureAction::InstallEssentials,
             "git", "git"},
            {"make-missing", ws, out, FailureKind::ToolMissing, FailureAction::InstallEssentials,
             "make", "make"},
            {"cmake-module", Base + "/proj", out, FailureKind::PackageMissing,
             FailureAction::InstallEssentials, "OpenAL", "Could NOT find OpenAL"},
            {"cmake-config", Base + "/proj", out, FailureKind::PackageMissing,
             FailureAction::InstallEssentials, "SDL2_ttf", "\"SDL2_ttf\""},
            {"cmake-pkgconfig", Base + "/proj", out, FailureKind::PackageMissing,
             FailureAction::InstallEssentials, "SDL2_mixer", "Package 'SDL2_mixer', required by"},
            {"make-compile-error", Base + "/proj", out, FailureKind::CompileError,
             FailureAction::None, "main.c:4", "/tmp/zcap/proj/main.c:4:20:"},
            {"make-missing-header", Base + "/proj", out, FailureKind::CompileError,
             FailureAction::None, "main.c:1", "SDL_ttf.h"},
            {"pull-local-changes", Base + "/mine", out, FailureKind::PullBlocked,
             FailureAction::MoveAsideAndDownload, "notes.txt", ""},
            {"pull-conflict", Base + "/mine", out, FailureKind::PullBlocked,
             FailureAction::MoveAsideAndDownload, "notes.txt", "notes.txt"},
            {"pull-divergent", Base + "/mine", out, FailureKind::PullBlocked,
             FailureAction::MoveAsideAndDownload, "", ""},
            {"make-no-makefile", Base + "/proj", out, FailureKind::Other, FailureAction::None,
             "make", "make: ***"},
            {"submodules-no-upstream", Base + "/mine", out, FailureKind::Other, FailureAction::None,
             "git", "lang"},
        };
        for (const Row &row : rows) {
            for (const QString &language : Languages) {
                QTest::addRow("%s.%s", row.capture, qPrintable(language))
                    << QString(row.capture + QLatin1Char('.') + language) << row.workspace
                    << row.output << row.kind << row.action << row.subject << QString(row.evidence);
            }
        }
    }
    void capturedFailures()
    {
        QFETCH(QString, capture);
        QFETCH(QString, workspace);
        QFETCH(QString, output);
        QFETCH(FailureKind, kind);
        QFETCH(FailureAction, action);
        QFETCH(QString, subject);
        QFETCH(QString, evidence);

        const QString path = QFINDTESTDATA("data/diagnosis/" + capture + ".txt");
        QVERIFY2(!path.isEmpty(), qPrintable(capture));
        const StageResult stage = readCapture(path);
        QVERIFY(stage.failed());
        Surroundings surroundings;
        surroundings.workspace = workspace;
        surroundings.output = output;
        surroundings.workspaceFreeBytes = 3 * 1024 * 1024;
        surroundings.outputFreeBytes = 512 * 1024;

        const Diagnosis diagnosis = diagnoseFailure(stage, surroundings);
        QCOMPARE(diagnosis.kind, kind);
        QCOMPARE(diagnosis.action, action);
        QCOMPARE(diagnosis.subject, subject);
        QVERIFY2(diagnosis.evidence.contains(evidence),
                 qPrintable(diagnosis.evidence + " lacks " + evidence));
        // The line shown is one the tool printed.
        if (!diagnosis.evidence.isEmpty()) {
            const QString all = (stage.errorLines + stage.outputLines).join('\n');
            QVERIFY2(all.contains(diagnosis.evidence), qPrintable(diagnosis.evidence));
        }
        QVERIFY(!diagnosis.sentence.isEmpty());
        // The sentence names the tool, package, file or folder; the disk's
        // free space instead of the disk.
        const QString named = kind == FailureKind::DiskFull
                                  ? QString(capture.startsWith("copy") ? "512.0 kB" : "3.0 MB")
                                  : subject.section(':', 0, 0);
        QVERIFY2(diagnosis.sentence.contains(named), qPrintable(diagnosis.sentence));
        QCOMPARE(failureActionTitle(action).isEmpty(), action == FailureAction::None);
    }

    void copyIntoFolderThatCannotBeMade_data()
    {
        QTest::addColumn<QString>("language");
        for (const QString &language : Languages)
            QTest::newRow(qPrintable(language)) << language;
    }
    // cp says "No such file or directory": the output folder could not be
    // made because its parent may not be written.
    void copyIntoFolderThatCannotBeMade()
    {
        QFETCH(QString, language);
        const StageResult stage =
            readCapture(QFINDTESTDATA("data/diagnosis/copy-denied." + language + ".txt"));
        Surroundings surroundings;
        surroundings.workspace = Base + "/ws";
        surroundings.output = Base + "/rootonly/Output";
        const Diagnosis unexplained = diagnoseFailure(stage, surroundings);
        QCOMPARE(unexplained.kind, FailureKind::Other);
        QCOMPARE(unexplained.sentence, "cp ended with status 1.");
        surroundings.outputWritable = false;
        const Diagnosis diagnosis = diagnoseFailure(stage, surroundings);
        QCOMPARE(diagnosis.kind, FailureKind::Permission);
        QCOMPARE(diagnosis.action, FailureAction::ChooseOutput);
        QCOMPARE(diagnosis.sentence, "You may not write to the output folder "
                                     "/tmp/zcap/rootonly/Output. Choose another folder.");
        QVERIFY(diagnosis.evidence.contains("/tmp/zcap/rootonly/Output/assets/"));
    }

    // The 25 rows of capturedFailures and copy-denied are every capture there
    // is: a new capture fails here until it has its row.
    void everyCaptureHasARow()
    {
        QDirIterator it(QFINDTESTDATA("data/diagnosis"), {"*.en.txt"});
        int captures = 0;
        while (it.hasNext()) {
            it.next();
            ++captures;
        }
        QCOMPARE(captures, 26);
    }

    void sentences_data()
    {
        TestSupport::columns<StageResult, Surroundings, QString>(
            {"stage", "surroundings", "sentence"});
        Surroundings plain;
        plain.workspace = "/home/ada/Developer/ZELMOR";
        plain.output = "/home/ada/Developer/ZELMOR/Output";
        Surroundings full = plain;
        full.workspaceFreeBytes = 1536 * 1024;
        Surroundings readOnly = plain;
        readOnly.workspaceWritable = false;
        Surroundings noCmake = plain;
        noCmake.programFound = false;

        StageResult killed{3, 1, "make", false, true, 9, {}, {"[ 40%] Building C object x.o"}};
        StageResult status{2, 0, "git", false, false, 1, {"error: something new"}, {}};
        StageResult silent{3, 2, "cp", false, false, 1, {}, {}};
        StageResult notStarted{3, 0, "cmake", true, false, 0, {}, {}};
        StageResult exit127{2, 1, "git", false, false, 127, {}, {}};
        StageResult noSpace{
            1, 0, "git", false, false, 128, {"fatal: write error: No space left on device"}, {}};

        QTest::newRow("signal") << killed << plain << "make was ended by signal 9.";
        QTest::newRow("status") << status << plain << "git ended with status 1.";
        QTest::newRow("silent") << silent << plain << "cp ended with status 1.";
        QTest::newRow("not started, not installed")
            << notStarted << noCmake << "cmake is not installed. Install Essentials installs it.";
        QTest::newRow("not started, folder")
            << notStarted << readOnly
            << "You may not write to the workspace folder "
               "/home/ada/Developer/ZELMOR. Choose another folder.";
        QTest::newRow("not started") << notStarted << plain << "cmake could not be started.";
        QTest::newRow("exit 127") << exit127 << plain
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
