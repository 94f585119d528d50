#include "TestSupport.h"

#include "settings/SettingsFile.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QProcess>
#include <QRandomGenerator>

#include <climits>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <unistd.h>

using namespace SettingsKeys;
using namespace TestSupport;

namespace {

const QString ToolDomain = QStringLiteral("org.zelmor.tooltest");

QString defaultsTool() { return buildBundleDir() + "/Contents/Helpers/defaults"; }

struct Outcome
{
    int code = -1;
    QByteArray out, err;
};

// As root, without the capabilities that override file modes, as an ordinary
// user would run it.
Outcome tool(const QStringList &arguments, const QString &program = defaultsTool())
{
    QProcess process;
    const QStringList asUser{"--inh-caps=-all", "--bounding-set=-dac_override,-dac_read_search"};
    if (::geteuid() == 0)
        process.start("setpriv", asUser + QStringList{"--", program} + arguments);
    else
        process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

// What lies beside a settings file: a writer's temporary file or lock, or a
// damaged file kept aside.
QStringList besides(const QString &path)
{
    const QFileInfo info(path);
    return info.absoluteDir().entryList({info.fileName() + ".*"}, QDir::Files | QDir::Hidden);
}

QVariant stored(const QByteArray &json)
{
    QVariantMap values;
    SettingsFile::decode("{ \"k\": " + json + " }", &values);
    return values.value("k");
}

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void init() { tool({"delete", ToolDomain}); }

    // A fresh user reads every default, all of them strings, in this order;
    // none is written to disk. A stored value hides its default. The tool, as a
    // user runs it from a shell, works beside the store: neither caches, so
    // each reads what the other wrote or removed, types included.
    void storeAndToolShareValues()
    {
        const QString d = ToolDomain;
        SettingsStore store(d);
        store.registerApplicationDefaults("/Apps/ZELMOR Helper.app");
        QStringList shown;
        for (const QString &key : store.registeredKeys()) {
            QCOMPARE(store.objectForKey(key).typeId(), QMetaType::QString);
            shown << key + "=" + store.stringValue(key);
        }
        QCOMPARE(shown, QStringList({QuitStatusbarApp + "=0", DefaultNameZELMOR + "=1", Log + "=0",
                                     Initialization + "=1", FirstLaunch + "=1",
                                     Workspace + "=/Developer/ZELMOR",
                                     Output + "=/Developer/ZELMOR/Output",
                                     AppLocation + "=/Apps/ZELMOR Helper.app"}));
        QCOMPARE(store.persisted().state(), DefaultsDomain::State::Missing);

        store.setObject(Workspace, QString());
        QCOMPARE(store.stringValue(Workspace), QString());
        // Removing it brings the default back; removing it again is silent.
        store.removeObject(Workspace);
        store.removeObject(Workspace);
        QCOMPARE(store.stringValue(Workspace), QString("/Developer/ZELMOR"));
        // The quit switch asks for the text "1"; the number 1 is not equal to it.
        store.setObject(QuitStatusbarApp, 1);
        QVERIFY(!store.isEqualToString(QuitStatusbarApp, "1"));
        store.setObject(QuitStatusbarApp, QStringLiteral("1"));
        QVERIFY(store.isEqualToString(QuitStatusbarApp, "1"));
        // Nothing non-finite reaches the file.
        store.setObject("k", std::nan(""));
        store.setObject(Workspace, QStringLiteral("/a b/c"));
        QCOMPARE(tool({"write", d, "log", "-int", "1"}).code, 0);
        QCOMPARE(tool({"write", d, "plain", "text \"quoted\""}).code, 0);
        QCOMPARE(tool({"write", d, "s", "-string", "1"}).code, 0);
        QCOMPARE(tool({"read", d}).out,
                 QByteArray("{\n    \"Quit Statusbar App Main App quits\" = \"1\";\n"
                            "    Workspace = \"/a b/c\";\n    k = 0;\n    log = 1;\n"
                            "    plain = \"text \\\"quoted\\\"\";\n    s = \"1\";\n}\n"));
        QCOMPARE(tool({"read-type", d, "k"}).out, QByteArray("Type is integer\n"));
        QCOMPARE(tool({"read-type", d, "s"}).out, QByteArray("Type is string\n"));
        QCOMPARE(store.objectForKey(Log).typeId(), QMetaType::LongLong);
        QCOMPARE(tool({"delete", d, Workspace}).code, 0);
        QCOMPARE(tool({"read", d, Workspace}).code, 1);
        QCOMPARE(store.stringValue(Workspace), QString("/Developer/ZELMOR"));
        // "Reset All" removes the whole domain through the same command.
        QCOMPARE(tool({"delete", d}).code, 0);
        QCOMPARE(store.intValue(Log), 0);
        QCOMPARE(store.persisted().state(), DefaultsDomain::State::Missing);
    }

    // Whatever the value, in memory or in the file, reading it as an integer
    // is defined: it saturates at int's limits and NaN reads as 0. How text
    // reads is tested with the text functions; a string here shows it is
    // read that way.
    void intValueRules_data()
    {
        columns<QVariant, int>({"value", "expected"});
        QTest::newRow("blanks, sign, text") << QVariant("  \t-42abc") << -42;
        QTest::newRow("large number") << QVariant::fromValue<qlonglong>(1LL << 40) << INT_MAX;
        QTest::newRow("NaN") << QVariant(std::nan("")) << 0;
        QTest::newRow("stored huge") << stored("1e308") << INT_MAX;
        QTest::newRow("stored true") << stored("true") << 1;
        QTest::newRow("stored array") << stored("[1]") << 0;
    }
    void intValueRules()
    {
        QFETCH(QVariant, value);
        QTEST(intValueOf(value), "expected");
    }

    void toolErrors_data()
    {
        columns<QStringList, int, QByteArray>({"arguments", "code", "message"});
        const QString d = ToolDomain;
        const QByteArray usage = "usage: defaults read DOMAIN [KEY]\n";
        QTest::newRow("no arguments") << QStringList{} << 2 << usage;
        QTest::newRow("unknown command") << QStringList{"frob", d} << 2 << usage;
        QTest::newRow("unknown type") << QStringList{"write", d, "k", "-float", "1"} << 2 << usage;
        QTest::newRow("missing domain") << QStringList{"read", "org.zelmor.absent"} << 1
                                        << QByteArray("Domain org.zelmor.absent does not exist\n");
        QTest::newRow("missing key") << QStringList{"delete", d, "nokey"} << 1
                                     << QByteArray("The domain/default pair of (" + d.toUtf8()
                                                   + ", nokey) does not exist\n");
        QTest::newRow("not an integer") << QStringList{"write", d, "k", "-int", "x1"} << 2
                                        << QByteArray("defaults: \"x1\" is not an integer\n");
        QTest::newRow("not a domain") << QStringList{"read", "../etc"} << 2
                                      << QByteArray("defaults: \"../etc\" is not a domain name\n");
    }
    void toolErrors()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, message);
        tool({"write", ToolDomain, "present", "-int", "3"});
        const Outcome r = tool(arguments);
        QTEST(r.code, "code");
        QVERIFY2(r.err.startsWith(message) && r.out.isEmpty(), r.err.constData());
    }

    // A file the store cannot use is reported once and never lost. A damaged
    // one is kept aside by every next write, even several within one second;
    // one too large or not readable is left exactly as it is, writes refused.
    void unusableFileIsNeverLost_data()
    {
        columns<QByteArray, QByteArray, QByteArray>({"content", "problem", "session"});
        const QByteArray mine = "{ \"Workspace\": \"/mine\" }";
        const QByteArray refused = "/Developer/ZELMOR\n/Developer/ZELMOR\n0\n";
        QTest::newRow("damaged") << mine.chopped(3) << QByteArray("cannot be read")
                                 << QByteArray("/Developer/ZELMOR\n/elsewhere\n1\n");
        QTest::newRow("too large") << mine + QByteArray(SettingsFile::MaxBytes, ' ')
                                   << QByteArray("is larger than 1048576 bytes") << refused;
        QTest::newRow("not readable") << mine << QByteArray("cannot be opened") << refused;
    }
    void unusableFileIsNeverLost()
    {
        QFETCH(QByteArray, content);
        QFETCH(QByteArray, problem);
        const QByteArray kind = QTest::currentDataTag();
        const QString domain = QString(kind), path = DefaultsDomain::filePathForDomain(domain);
        writeFile(path, content);
        if (kind == "not readable")
            QVERIFY(QFile::setPermissions(path, {}));
        const Outcome read = tool({"read", domain});
        QVERIFY2(read.code == 1 && read.err.contains(problem), read.err.constData());
        // The store answers with the defaults, before and after a write.
        const Outcome session =
            tool({"--session", domain}, QCoreApplication::applicationFilePath());
        QTEST(session.out, "session");
        QVERIFY2(session.err.count("Helper: settings file") == 1 && session.err.contains(problem),
                 session.err.constData());
        for (int i = 0; i < 2; ++i) {
            writeFile(path, content);
            QCOMPARE(tool({"write", domain, "k", "-int", "2"}).code, int(kind != "damaged"));
        }
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
        for (const QString &name : besides(path))
            QCOMPARE(readFile(QFileInfo(path).absolutePath() + "/" + name), content);
        QCOMPARE(besides(path).size(), kind == "damaged" ? 3 : 0);
        if (kind == "damaged")
            QCOMPARE(tool({"read", domain, "k"}).out, QByteArray("2\n"));
        else
            QCOMPARE(readFile(path), content);
    }

    // The store and the tool, as separate processes, write their own key at the
    // same moment; a large file makes each read-modify-write overlap. A writer
    // killed at a random moment leaves the old file or the new one, never a mix;
    // its lock does not block the next writer, which removes its temporary file.
    // The moments are random; the seed is printed, and ZELMOR_TEST_SEED=<seed>
    // runs the same moments again.
    void writersLoseNothing()
    {
        QRandomGenerator random(randomSeed());
        const QString domain = "org.zelmor.writers";
        SettingsStore store(domain);
        const QString pad(300000, QLatin1Char('p')), path = store.persisted().filePath();
        store.setObject("pad", pad);
        for (int round = 1; round <= 200; ++round) {
            const QString n = QString::number(round);
            QProcess application, defaults;
            application.start(QCoreApplication::applicationFilePath(), {"--set", domain, "app", n});
            defaults.start(defaultsTool(), {"write", domain, "tool", "-int", n});
            QVERIFY(application.waitForFinished(180000) && defaults.waitForFinished(180000));
            QCOMPARE(QList({store.intValue("app"), store.intValue("tool")}),
                     QList({round, round}));
        }
        for (int round = 0; round < 20; ++round) {
            QProcess writer;
            // Each writer counts from a start of its own, so the file never
            // comes back to what it held before this one began.
            writer.start(QCoreApplication::applicationFilePath(),
                         {"--writer", domain, QString::number(round * 1000000000LL)});
            const QByteArray before = readFile(path);
            QTRY_VERIFY_WITH_TIMEOUT(readFile(path) != before, 60000);
            // A random while later, somewhere within one of its writes.
            for (int extra = random.bounded(200); extra > 0; --extra)
                readFile(path);
            ::kill(static_cast<pid_t>(writer.processId()), SIGKILL);
            QVERIFY(writer.waitForFinished(10000));
            // What a writer killed between writing and renaming leaves, if
            // this one did not.
            writeFile(path + ".Zq3xK" + QString::number(round % 10), "{ half");
            QCOMPARE(store.persisted().value("pad").toString(), pad);
            store.setObject("after", round);
            QCOMPARE(store.persisted().value("after").toInt(), round);
            QCOMPARE(besides(path), QStringList());
        }
    }
};

// Child programs the tests start: one write, a writer that never stops, a session.
int childMain(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    SettingsStore store(arguments.value(2));
    if (arguments.at(1) == "--set") {
        store.setObject(arguments.value(3), arguments.value(4).toLongLong());
        return 0;
    }
    if (arguments.at(1) == "--writer")
        for (qlonglong counter = arguments.value(3).toLongLong();; ++counter)
            store.setObject("counter", counter);
    store.registerApplicationDefaults("/b");
    std::printf("%s\n", qPrintable(store.stringValue(Workspace)));
    store.setObject(Workspace, "/elsewhere");
    store.setObject(Log, 1);
    std::printf("%s\n%d\n", qPrintable(store.stringValue(Workspace)), store.intValue(Log));
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
