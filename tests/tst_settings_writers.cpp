#include "TestSupport.h"

#include "settings/SettingsFile.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <cmath>
#include <csignal>
#include <cstdio>
#include <limits>

#include <unistd.h>

using namespace TestSupport;

// The settings file under pressure: other processes writing at the same
// moment, writers killed mid-write, files this user may not read, files far
// too large, and stored numbers no int can hold.
class TestSettingsWriters : public QObject
{
    Q_OBJECT

    static QString defaultsTool() { return buildBundleDir() + "/Contents/Helpers/defaults"; }
    QString freshDomain() { return QStringLiteral("org.zelmor.test.writers.%1").arg(++m_counter); }
    int m_counter = 0;

    // Leftovers a writer could leave beside the file: its temporary file and
    // its lock.
    static QStringList strays(const QString &path)
    {
        const QFileInfo info(path);
        QStringList found;
        for (const QString &name : info.absoluteDir().entryList(QDir::Files | QDir::Hidden)) {
            if (name.startsWith(info.fileName() + ".") && !name.contains(".unreadable-"))
                found << name;
        }
        return found;
    }

    static QJsonObject validObject(const QString &path)
    {
        QJsonParseError error;
        const QJsonDocument doc = QJsonDocument::fromJson(readFile(path), &error);
        if (error.error != QJsonParseError::NoError || !doc.isObject())
            qWarning("%s is not a whole settings file", qPrintable(path));
        return doc.object();
    }

    // A program that runs without the permission to override file modes:
    // as root, the same program with those capabilities dropped.
    static QPair<QString, QStringList> withoutOverride(const QString &program,
                                                      const QStringList &arguments)
    {
        if (::geteuid() != 0)
            return {program, arguments};
        return {QStringLiteral("setpriv"),
                QStringList{"--inh-caps=-all", "--bounding-set=-dac_override,-dac_read_search",
                            "--", program}
                    + arguments};
    }

    struct Outcome
    {
        int code = -1;
        QByteArray out;
        QByteArray err;
    };
    static Outcome runToEnd(const QPair<QString, QStringList> &command)
    {
        QProcess process;
        process.start(command.first, command.second);
        process.closeWriteChannel();
        Outcome outcome;
        if (!process.waitForFinished(60000))
            return outcome;
        outcome.code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        outcome.out = process.readAllStandardOutput();
        outcome.err = process.readAllStandardError();
        return outcome;
    }

private slots:
    // The application's store and the `defaults` tool, as separate processes,
    // each write their own key at the same moment, round after round; a
    // large file makes each read-modify-write last long enough to overlap.
    void concurrentWritersLoseNothing()
    {
        const int rounds = 200;
        const QString domain = freshDomain();
        SettingsStore store(domain);
        store.setObject("pad", QString(300000, QLatin1Char('p')));
        const QString path = store.persisted().filePath();

        int lost = 0;
        for (int round = 1; round <= rounds; ++round) {
            QProcess application;
            QProcess tool;
            application.start(QCoreApplication::applicationFilePath(),
                              {"--set", domain, "app", QString::number(round)});
            tool.start(defaultsTool(), {"write", domain, "tool", "-int", QString::number(round)});
            QVERIFY(application.waitForFinished(180000));
            QVERIFY(tool.waitForFinished(180000));
            QCOMPARE(application.exitCode(), 0);
            QVERIFY2(tool.exitCode() == 0, tool.readAllStandardError().constData());
            const QVariantMap values = store.persisted().values();
            lost += int(values.value("app").toInt() != round);
            lost += int(values.value("tool").toInt() != round);
        }
        qInfo("%d rounds of two writers: %d updates lost", rounds, lost);
        QCOMPARE(lost, 0);
        QCOMPARE(strays(path), QStringList());
    }

    // A writer killed at a random moment leaves the old file or the new one,
    // never a mix; its lock does not block the next writer, and the next
    // write removes whatever temporary file it left.
    void killedWriterLeavesWholeFile()
    {
        const QString domain = freshDomain();
        SettingsStore store(domain);
        const QString pad(300000, QLatin1Char('p'));
        store.setObject("pad", pad);
        const QString path = store.persisted().filePath();
        auto *random = QRandomGenerator::global();

        for (int round = 0; round < 20; ++round) {
            // What a writer killed between writing and renaming leaves.
            writeFile(path + ".Zq3xK" + QString::number(round % 10), "{ half");
            QProcess writer;
            writer.start(QCoreApplication::applicationFilePath(), {"--writer", domain});
            QVERIFY(writer.waitForStarted());
            const int changes = 1 + random->bounded(4);
            QByteArray previous = readFile(path);
            int seen = 0;
            QElapsedTimer bound;
            bound.start();
            while (seen < changes && bound.elapsed() < 60000) {
                const QByteArray current = readFile(path);
                if (current != previous) {
                    ++seen;
                    previous = current;
                }
            }
            QCOMPARE(seen, changes);
            for (int extra = random->bounded(200); extra > 0; --extra)
                readFile(path);
            ::kill(static_cast<pid_t>(writer.processId()), SIGKILL);
            QVERIFY(writer.waitForFinished(10000));

            const QJsonObject object = validObject(path);
            QCOMPARE(object.value("pad").toString(), pad);
            QVERIFY(object.value("counter").isDouble());

            store.setObject("after", round);
            QCOMPARE(store.persisted().value("after").toInt(), round);
            QCOMPARE(strays(path), QStringList());
        }
    }

    // A file this user may not read is reported once and left exactly as it
    // is, by the application and by the tool; it is never set aside.
    void unreadableForLackOfPermission()
    {
        const QString domain = freshDomain();
        const QString path = DefaultsDomain::filePathForDomain(domain);
        const QByteArray content = "{ \"Workspace\": \"/mine\" }";
        writeFile(path, content);
        QVERIFY(QFile::setPermissions(path, {}));

        const Outcome session = runToEnd(withoutOverride(QCoreApplication::applicationFilePath(),
                                                         {"--session", domain}));
        QCOMPARE(session.code, 0);
        // Defaults answer, before and after a write that is refused.
        QCOMPARE(session.out, QByteArray("/Developer/ZELMOR\n/Developer/ZELMOR\n0\n"));
        const QList<QByteArray> lines = session.err.trimmed().split('\n');
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines.first().contains("cannot be opened"), session.err.constData());
        QVERIFY(lines.first().contains(QFile::encodeName(path)));

        const Outcome read = runToEnd(withoutOverride(defaultsTool(), {"read", domain}));
        QCOMPARE(read.code, 1);
        QVERIFY2(read.err.contains("cannot be opened"), read.err.constData());
        const Outcome write =
            runToEnd(withoutOverride(defaultsTool(), {"write", domain, "log", "-int", "1"}));
        QCOMPARE(write.code, 1);
        QVERIFY2(write.err.contains("left as it is"), write.err.constData());

        // The user bits of QFileInfo say what this (root) process may do; the
        // owner bits are the file's own mode.
        QCOMPARE(QFileInfo(path).permissions()
                     & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser),
                 QFile::Permissions());
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
        QCOMPARE(readFile(path), content);
        QCOMPARE(strays(path), QStringList());
        QVERIFY(QDir(QFileInfo(path).absolutePath())
                    .entryList({QFileInfo(path).fileName() + ".unreadable-*"})
                    .isEmpty());
    }

    // A file above the size limit is neither read nor overwritten.
    void oversizeFileRefused()
    {
        const QString domain = freshDomain();
        SettingsStore store(domain);
        store.registerApplicationDefaults("/b");
        const QString path = store.persisted().filePath();
        const QByteArray content =
            "{ \"Workspace\": \"/mine\", \"pad\": \""
            + QByteArray(SettingsFile::MaxBytes, 'x') + "\" }";
        writeFile(path, content);

        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("settings file .* is larger than "
                                                              "1048576 bytes.*left as it is"));
        QCOMPARE(store.stringValue(SettingsKeys::Workspace), QString("/Developer/ZELMOR"));
        store.setObject(SettingsKeys::Log, 1);
        QCOMPARE(store.intValue(SettingsKeys::Log), 0);
        QCOMPARE(store.persisted().state(), DefaultsDomain::State::TooLarge);

        int code = 0;
        run(defaultsTool(), {"write", domain, "log", "-int", "1"}, {}, &code);
        QCOMPARE(code, 1);
        QCOMPARE(readFile(path), content);
        QCOMPARE(strays(path), QStringList());
    }

    // Whatever number is stored, reading it as an integer is defined: it
    // saturates at int's limits and NaN reads as 0.
    void storedNumbersReadAsInt_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("expected");
        QTest::addColumn<bool>("damaged");
        const int intMax = std::numeric_limits<int>::max();
        QTest::newRow("huge") << QByteArray("1e308") << intMax << false;
        QTest::newRow("huge negative")
            << QByteArray("-1e308") << std::numeric_limits<int>::min() << false;
        QTest::newRow("beyond double") << QByteArray("1e999") << 0 << true;
        QTest::newRow("beyond long long")
            << QByteArray("92233720368547758070") << intMax << false;
        QTest::newRow("long long max")
            << QByteArray("9223372036854775807") << intMax << false;
        QTest::newRow("fraction") << QByteArray("-2.75") << -2 << false;
        QTest::newRow("true") << QByteArray("true") << 1 << false;
        QTest::newRow("array") << QByteArray("[1]") << 0 << false;
        QTest::newRow("digits in a string")
            << QByteArray("\"  99999999999999999999\"") << intMax << false;
    }
    void storedNumbersReadAsInt()
    {
        QFETCH(QByteArray, file);
        const QString domain = freshDomain();
        SettingsStore store(domain);
        writeFile(store.persisted().filePath(), "{ \"k\": " + file + " }");
        // A number JSON cannot hold makes the file damaged, which is said.
        QFETCH(bool, damaged);
        if (damaged)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("cannot be read"));
        QTEST(store.intValue("k"), "expected");
    }
    void nonFiniteValues()
    {
        const double inf = std::numeric_limits<double>::infinity();
        QCOMPARE(intValueOf(QVariant(std::nan(""))), 0);
        QCOMPARE(intValueOf(QVariant(inf)), std::numeric_limits<int>::max());
        QCOMPARE(intValueOf(QVariant(-inf)), std::numeric_limits<int>::min());
        QCOMPARE(intValueOf(QVariant(float(-inf))), std::numeric_limits<int>::min());
        // Nothing non-finite reaches the file either.
        SettingsStore store(freshDomain());
        store.setObject("k", std::nan(""));
        QCOMPARE(store.persisted().state(), DefaultsDomain::State::Valid);
        QCOMPARE(store.intValue("k"), 0);
    }
};

namespace {

// Child programs the tests start: one write of the application's store, a
// writer that never stops, and a short session of the store.
int childMain(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    const QString domain = arguments.value(2);
    SettingsStore store(domain);
    if (arguments.at(1) == "--set") {
        store.setObject(arguments.value(3), arguments.value(4).toLongLong());
        return 0;
    }
    if (arguments.at(1) == "--writer") {
        for (qlonglong counter = 0;; ++counter)
            store.setObject("counter", counter);
    }
    store.registerApplicationDefaults("/b");
    std::printf("%s\n", qPrintable(store.stringValue(SettingsKeys::Workspace)));
    store.setObject(SettingsKeys::Workspace, "/elsewhere");
    store.setObject(SettingsKeys::Log, 1);
    std::printf("%s\n%d\n", qPrintable(store.stringValue(SettingsKeys::Workspace)),
                store.intValue(SettingsKeys::Log));
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc >= 3 && (qstrcmp(argv[1], "--writer") == 0 || qstrcmp(argv[1], "--session") == 0
                      || qstrcmp(argv[1], "--set") == 0))
        return childMain(argc, argv);
    TestSupport::isolateUser();
    QApplication app(argc, argv);
    TestSettingsWriters tc;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&tc, argc, argv);
}

#include "tst_settings_writers.moc"
