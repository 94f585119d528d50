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

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <limits>

#include <unistd.h>

using namespace TestSupport;

// The settings store and the bundle's `defaults` tool: registered defaults,
// typed values shared between processes, and the file under pressure (other
// writers at the same moment, writers killed mid-write, files that are
// damaged, unreadable or far too large, numbers no int can hold).

namespace {

const QString ToolDomain = QStringLiteral("org.zelmor.tooltest");

QString defaultsTool() { return buildBundleDir() + "/Contents/Helpers/defaults"; }

struct Outcome
{
    int code = -1;
    QByteArray out, err;
};

// withoutOverride: as root, the program runs with the capabilities that
// override file modes dropped, as an ordinary user would.
Outcome runToEnd(const QString &program, const QStringList &arguments, bool withoutOverride = false)
{
    QProcess process;
    if (withoutOverride && ::geteuid() == 0)
        process.start("setpriv", QStringList{"--inh-caps=-all", "--bounding-set=-dac_override,-dac_read_search",
                                             "--", program} + arguments);
    else
        process.start(program, arguments);
    process.closeWriteChannel();
    Outcome outcome;
    if (!process.waitForFinished(60000))
        return outcome;
    outcome.code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    outcome.out = process.readAllStandardOutput();
    outcome.err = process.readAllStandardError();
    return outcome;
}

Outcome tool(const QStringList &arguments, bool withoutOverride = false)
{
    return runToEnd(defaultsTool(), arguments, withoutOverride);
}

// Leftovers a writer could leave beside the file: its temporary file and its lock.
QStringList strays(const QString &path)
{
    const QFileInfo info(path);
    QStringList found;
    for (const QString &name : info.absoluteDir().entryList(QDir::Files | QDir::Hidden))
        if (name.startsWith(info.fileName() + ".") && !name.contains(".unreadable-"))
            found << name;
    return found;
}

QStringList keptAside(const QString &path)
{
    return QFileInfo(path).absoluteDir().entryList({QFileInfo(path).fileName() + ".unreadable-*"});
}

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

    // A fresh domain per test, so tests never see each other's values.
    QString freshDomain() { return QStringLiteral("org.zelmor.test.%1").arg(++m_counter); }
    int m_counter = 0;

private slots:
    void init() { tool({"delete", ToolDomain}); }

    void registeredDefaultsInOrder()
    {
        SettingsStore store(freshDomain());
        store.registerApplicationDefaults("/Apps/ZELMOR Helper.app");
        using namespace SettingsKeys;
        // A fresh user reads every default, all of them strings, in this order.
        const QList<QPair<QString, QString>> expected{
            {QuitStatusbarApp, "0"}, {DefaultNameZELMOR, "1"}, {Log, "0"}, {Initialization, "1"},
            {FirstLaunch, "1"}, {Workspace, "/Developer/ZELMOR"}, {Output, "/Developer/ZELMOR/Output"},
            {AppLocation, "/Apps/ZELMOR Helper.app"}};
        QStringList keys;
        for (const auto &[key, value] : expected) {
            keys << key;
            QCOMPARE(store.objectForKey(key).typeId(), QMetaType::QString);
            QCOMPARE(store.stringValue(key), value);
        }
        QCOMPARE(store.registeredKeys(), keys);
        // Registered defaults are never written to disk.
        QCOMPARE(store.persisted().state(), DefaultsDomain::State::Missing);
    }

    // A stored value hides the default, even an empty one; paths come back
    // exactly as they were stored; strings compare exactly; nothing
    // non-finite reaches the file.
    void storedValueHidesDefault()
    {
        SettingsStore store(freshDomain());
        store.registerApplicationDefaults("/b");
        store.setObject(SettingsKeys::DefaultNameZELMOR, 0);
        QCOMPARE(store.intValue(SettingsKeys::DefaultNameZELMOR), 0);
        for (const QString path : {"", "~/x", " /a/ ", "/a//b/", "rel"}) {
            store.setObject(SettingsKeys::Workspace, path);
            QCOMPARE(store.stringValue(SettingsKeys::Workspace), path);
            QVERIFY(store.objectForKey(SettingsKeys::Workspace).isValid());
        }
        // Removing it brings the default back; removing it again is silent.
        store.removeObject(SettingsKeys::Workspace);
        store.removeObject(SettingsKeys::Workspace);
        QCOMPARE(store.stringValue(SettingsKeys::Workspace), QString("/Developer/ZELMOR"));
        // The number 1 reads as on for a check box but is not equal to "1",
        // which is what the quit switch asks for.
        const QString quit = SettingsKeys::QuitStatusbarApp;
        QVERIFY(!store.isEqualToString(quit, "1"));
        store.setObject(quit, 1);
        QCOMPARE(store.intValue(quit), 1);
        QVERIFY(!store.isEqualToString(quit, "1"));
        store.setObject(quit, QStringLiteral("1"));
        QVERIFY(store.isEqualToString(quit, "1"));
        store.setObject("k", std::nan(""));
        QCOMPARE(store.persisted().state(), DefaultsDomain::State::Valid);
        QCOMPARE(store.intValue("k"), 0);
    }

    // Whatever the value, reading it as an integer is defined: it saturates
    // at int's limits and NaN reads as 0.
    void intValueRules_data()
    {
        columns<QVariant, int>({"value", "expected"});
        const int max = std::numeric_limits<int>::max(), min = std::numeric_limits<int>::min();
        const double inf = std::numeric_limits<double>::infinity();
        QTest::newRow("number 1") << QVariant::fromValue<qlonglong>(1) << 1;
        QTest::newRow("string 1") << QVariant("1") << 1;
        QTest::newRow("leading blanks and sign") << QVariant("  \t-42abc") << -42;
        QTest::newRow("plus sign") << QVariant("+7") << 7;
        QTest::newRow("no digits") << QVariant("yes") << 0;
        QTest::newRow("digits after text") << QVariant("a1") << 0;
        QTest::newRow("empty") << QVariant("") << 0;
        QTest::newRow("sign alone") << QVariant("-") << 0;
        QTest::newRow("decimal") << QVariant("3.9") << 3;
        QTest::newRow("too large") << QVariant("99999999999") << max;
        QTest::newRow("too small") << QVariant("-99999999999") << min;
        QTest::newRow("missing") << QVariant() << 0;
        QTest::newRow("large number") << QVariant::fromValue<qlonglong>(1LL << 40) << max;
        QTest::newRow("NaN") << QVariant(std::nan("")) << 0;
        QTest::newRow("infinity") << QVariant(inf) << max;
        QTest::newRow("minus infinity") << QVariant(-inf) << min;
        QTest::newRow("float minus infinity") << QVariant(float(-inf)) << min;
    }
    void intValueRules()
    {
        QFETCH(QVariant, value);
        QTEST(intValueOf(value), "expected");
    }

    // damaged: a number JSON cannot hold makes the file damaged, which is said.
    void storedNumbersReadAsInt_data()
    {
        columns<QByteArray, int, bool>({"file", "expected", "damaged"});
        const int max = std::numeric_limits<int>::max(), min = std::numeric_limits<int>::min();
        QTest::newRow("huge") << QByteArray("1e308") << max << false;
        QTest::newRow("huge negative") << QByteArray("-1e308") << min << false;
        QTest::newRow("beyond double") << QByteArray("1e999") << 0 << true;
        QTest::newRow("beyond long long") << QByteArray("92233720368547758070") << max << false;
        QTest::newRow("long long max") << QByteArray("9223372036854775807") << max << false;
        QTest::newRow("fraction") << QByteArray("-2.75") << -2 << false;
        QTest::newRow("true") << QByteArray("true") << 1 << false;
        QTest::newRow("array") << QByteArray("[1]") << 0 << false;
        QTest::newRow("digits in a string") << QByteArray("\"  99999999999999999999\"") << max << false;
    }
    void storedNumbersReadAsInt()
    {
        QFETCH(QByteArray, file);
        QFETCH(bool, damaged);
        SettingsStore store(freshDomain());
        writeFile(store.persisted().filePath(), "{ \"k\": " + file + " }");
        if (damaged)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("cannot be read"));
        QTEST(store.intValue("k"), "expected");
    }

    // The tool as a user runs it from a shell.
    void toolWritesReadsDeletes()
    {
        const QString d = ToolDomain;
        QCOMPARE(tool({"write", d, "Workspace", "-string", "/a b/c"}).code, 0);
        QCOMPARE(tool({"write", d, "log", "-int", "1"}).code, 0);
        QCOMPARE(tool({"write", d, "plain", "text \"quoted\""}).code, 0);
        QCOMPARE(tool({"read", d, "plain"}).out, QByteArray("\"text \\\"quoted\\\"\"\n"));
        QCOMPARE(tool({"read", d}).out, QByteArray("{\n    Workspace = \"/a b/c\";\n    log = 1;\n"
                                                   "    plain = \"text \\\"quoted\\\"\";\n}\n"));
        QCOMPARE(tool({"delete", d, "log"}).code, 0);
        QCOMPARE(tool({"read", d, "log"}).code, 1);
        QCOMPARE(tool({"delete", d}).code, 0);
        QCOMPARE(tool({"read", d}).code, 1);
    }

    // domainExists: the "missing key" rows fail for the right reason.
    void toolErrors_data()
    {
        columns<QStringList, int, QString, bool>({"arguments", "code", "message", "domainExists"});
        const QString d = ToolDomain, noDomain = "Domain org.zelmor.tooltest does not exist";
        const QString noKey = "(org.zelmor.tooltest, nokey) does not exist";
        QTest::newRow("no arguments") << QStringList{} << 2 << "usage: defaults" << false;
        QTest::newRow("unknown command") << QStringList{"frob", d} << 2 << "usage: defaults" << false;
        QTest::newRow("read missing domain") << QStringList{"read", d} << 1 << noDomain << false;
        QTest::newRow("delete missing domain") << QStringList{"delete", d} << 1 << noDomain << false;
        QTest::newRow("read missing key") << QStringList{"read", d, "nokey"} << 1 << noKey << true;
        QTest::newRow("delete missing key") << QStringList{"delete", d, "nokey"} << 1 << noKey << true;
        QTest::newRow("int not a number") << QStringList{"write", d, "k", "-int", "x1"} << 2 << "is not an integer" << false;
        QTest::newRow("write without value") << QStringList{"write", d, "k"} << 2 << "usage" << false;
        QTest::newRow("unknown type") << QStringList{"write", d, "k", "-float", "1"} << 2 << "usage" << false;
        QTest::newRow("domain with slash") << QStringList{"read", "../etc"} << 2 << "is not a domain name" << false;
        QTest::newRow("read too many") << QStringList{"read", d, "a", "b"} << 2 << "usage" << false;
    }
    void toolErrors()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        QFETCH(bool, domainExists);
        if (domainExists)
            tool({"write", ToolDomain, "present", "-int", "3"});
        const Outcome r = tool(arguments);
        QTEST(r.code, "code");
        QVERIFY2(r.err.contains(message.toUtf8()) && r.out.isEmpty(), r.err.constData());
    }

    // Types survive the trip to another process and back: the store has no
    // cache, so the other process's writes and removals are what this one reads.
    void typesAndRemovalsAcrossProcesses()
    {
        const QString domain = freshDomain();
        SettingsStore store(domain);
        store.registerApplicationDefaults("/b");
        store.setObject("n", 1);
        store.setObject("s", QStringLiteral("1"));
        QCOMPARE(tool({"read", domain, "n"}).out, QByteArray("1\n"));
        QCOMPARE(tool({"read", domain, "s"}).out, QByteArray("\"1\"\n"));
        QCOMPARE(tool({"read-type", domain, "n"}).out, QByteArray("Type is integer\n"));
        QCOMPARE(tool({"read-type", domain, "s"}).out, QByteArray("Type is string\n"));
        tool({"write", domain, "n", "-string", "1"});
        tool({"write", domain, "s", "-int", "1"});
        QCOMPARE(store.objectForKey("n").typeId(), QMetaType::QString);
        QCOMPARE(store.objectForKey("s").typeId(), QMetaType::LongLong);
        QCOMPARE(store.objectForKey("s").toLongLong(), 1);

        store.setObject(SettingsKeys::Workspace, QStringLiteral("/mine"));
        store.setObject(SettingsKeys::Log, 1);
        tool({"delete", domain, SettingsKeys::Workspace});
        QCOMPARE(store.stringValue(SettingsKeys::Workspace), QString("/Developer/ZELMOR"));
        QCOMPARE(store.intValue(SettingsKeys::Log), 1);
        // "Reset All" removes the whole domain through the same command.
        tool({"delete", domain});
        QCOMPARE(store.intValue(SettingsKeys::Log), 0);
        QCOMPARE(store.persisted().state(), DefaultsDomain::State::Missing);
    }

    // A damaged file is reported, by the store once, and left as it is until
    // the next write, which keeps it aside and starts afresh.
    void damagedFileIsKeptAside()
    {
        SettingsStore store(ToolDomain);
        store.registerApplicationDefaults("/b");
        const QString path = store.persisted().filePath(), folder = QFileInfo(path).absolutePath();
        const QByteArray damaged = "{ \"Workspace\": \"/half";
        writeFile(path, damaged);
        const Outcome read = tool({"read", ToolDomain});
        QVERIFY(read.code == 1 && read.err.contains("cannot be read"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("settings file .*" + QRegularExpression::escape(path)
                                                              + " cannot be read"));
        QCOMPARE(store.stringValue(SettingsKeys::Workspace), QString("/Developer/ZELMOR"));
        // Reading again does not repeat the warning (a failing test would
        // report an unexpected message).
        QCOMPARE(store.intValue(SettingsKeys::FirstLaunch), 1);
        QCOMPARE(readFile(path), damaged);

        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("kept the unreadable settings file"));
        store.setObject(SettingsKeys::Log, 1);
        QCOMPARE(store.intValue(SettingsKeys::Log), 1);
        QCOMPARE(keptAside(path).size(), 1);
        QCOMPARE(readFile(folder + "/" + keptAside(path).first()), damaged);

        // The tool does the same, and no damaged file is lost, even when
        // several are kept within one second.
        QList<QByteArray> contents{damaged}, kept;
        for (const QByteArray &other : {QByteArray("not json"), QByteArray("{ third")}) {
            writeFile(path, other);
            contents << other;
            QCOMPARE(tool({"write", ToolDomain, "k", "-int", "2"}).code, 0);
        }
        QCOMPARE(tool({"read", ToolDomain, "k"}).out, QByteArray("2\n"));
        for (const QString &name : keptAside(path))
            kept << readFile(folder + "/" + name);
        std::sort(contents.begin(), contents.end());
        std::sort(kept.begin(), kept.end());
        QCOMPARE(kept, contents);
    }

    // The application's store and the tool, as separate processes, each write
    // their own key at the same moment, round after round; a large file makes
    // each read-modify-write last long enough to overlap.
    void concurrentWritersLoseNothing()
    {
        const int rounds = 200;
        const QString domain = freshDomain();
        SettingsStore store(domain);
        store.setObject("pad", QString(300000, QLatin1Char('p')));
        int lost = 0;
        for (int round = 1; round <= rounds; ++round) {
            QProcess application, defaults;
            application.start(QCoreApplication::applicationFilePath(), {"--set", domain, "app", QString::number(round)});
            defaults.start(defaultsTool(), {"write", domain, "tool", "-int", QString::number(round)});
            QVERIFY(application.waitForFinished(180000) && defaults.waitForFinished(180000));
            QCOMPARE(application.exitCode(), 0);
            QVERIFY2(defaults.exitCode() == 0, defaults.readAllStandardError().constData());
            const QVariantMap values = store.persisted().values();
            lost += int(values.value("app").toInt() != round) + int(values.value("tool").toInt() != round);
        }
        qInfo("%d rounds of two writers: %d updates lost", rounds, lost);
        QCOMPARE(lost, 0);
        QCOMPARE(strays(store.persisted().filePath()), QStringList());
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
                seen += int(current != previous);
                previous = current;
            }
            QCOMPARE(seen, changes);
            for (int extra = random->bounded(200); extra > 0; --extra)
                readFile(path);
            ::kill(static_cast<pid_t>(writer.processId()), SIGKILL);
            QVERIFY(writer.waitForFinished(10000));

            QJsonParseError error;
            const QJsonObject object = QJsonDocument::fromJson(readFile(path), &error).object();
            QCOMPARE(error.error, QJsonParseError::NoError);
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

        const Outcome session = runToEnd(QCoreApplication::applicationFilePath(), {"--session", domain}, true);
        QCOMPARE(session.code, 0);
        // Defaults answer, before and after a write that is refused.
        QCOMPARE(session.out, QByteArray("/Developer/ZELMOR\n/Developer/ZELMOR\n0\n"));
        const QList<QByteArray> lines = session.err.trimmed().split('\n');
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines.first().contains("cannot be opened") && lines.first().contains(QFile::encodeName(path)),
                 session.err.constData());
        const Outcome read = tool({"read", domain}, true);
        QVERIFY2(read.code == 1 && read.err.contains("cannot be opened"), read.err.constData());
        const Outcome write = tool({"write", domain, "log", "-int", "1"}, true);
        QVERIFY2(write.code == 1 && write.err.contains("left as it is"), write.err.constData());

        // The user bits of QFileInfo say what this (root) process may do; the
        // owner bits are the file's own mode.
        QCOMPARE(QFileInfo(path).permissions() & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser),
                 QFile::Permissions());
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
        QCOMPARE(readFile(path), content);
        QCOMPARE(strays(path), QStringList());
        QVERIFY(keptAside(path).isEmpty());
    }

    // A file above the size limit is neither read nor overwritten.
    void oversizeFileRefused()
    {
        const QString domain = freshDomain();
        SettingsStore store(domain);
        store.registerApplicationDefaults("/b");
        const QString path = store.persisted().filePath();
        const QByteArray content =
            "{ \"Workspace\": \"/mine\", \"pad\": \"" + QByteArray(SettingsFile::MaxBytes, 'x') + "\" }";
        writeFile(path, content);
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression("settings file .* is larger than 1048576 bytes.*left as it is"));
        QCOMPARE(store.stringValue(SettingsKeys::Workspace), QString("/Developer/ZELMOR"));
        store.setObject(SettingsKeys::Log, 1);
        QCOMPARE(store.intValue(SettingsKeys::Log), 0);
        QCOMPARE(store.persisted().state(), DefaultsDomain::State::TooLarge);
        QCOMPARE(tool({"write", domain, "log", "-int", "1"}).code, 1);
        QCOMPARE(readFile(path), content);
        QCOMPARE(strays(path), QStringList());
    }
};

// Child programs the tests start: one write of the application's store, a
// writer that never stops, and a short session of the store.
int childMain(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    SettingsStore store(arguments.value(2));
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

int main(int argc, char *argv[])
{
    if (argc >= 3 && QByteArrayList{"--writer", "--session", "--set"}.contains(QByteArray(argv[1])))
        return childMain(argc, argv);
    TestSupport::isolateUser();
    QApplication app(argc, argv);
    TestSettings tc;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&tc, argc, argv);
}

#include "tst_settings.moc"
