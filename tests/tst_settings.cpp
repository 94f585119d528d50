#include "TestSupport.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>

#include <csignal>

using namespace TestSupport;

// The settings store: registered defaults, typed persistence shared with
// other processes, and what happens to a damaged file.
class TestSettings : public QObject
{
    Q_OBJECT

private:
    static QString defaultsTool() { return buildBundleDir() + "/Contents/Helpers/defaults"; }
    // A fresh domain per test, so tests never see each other's values.
    QString freshDomain()
    {
        return QStringLiteral("org.zelmor.test.%1").arg(++m_counter);
    }
    QByteArray tool(const QStringList &arguments, int *exitCode = nullptr)
    {
        return run(defaultsTool(), arguments, QString(), exitCode);
    }
    int m_counter = 0;

private slots:
    void registeredDefaultsInOrder()
    {
        SettingsStore store(freshDomain());
        store.registerApplicationDefaults("/Apps/ZELMOR Helper.app");
        using namespace SettingsKeys;
        QCOMPARE(store.registeredKeys(),
                 QStringList({QuitStatusbarApp, DefaultNameZELMOR, Log, Initialization, FirstLaunch,
                              Workspace, Output, AppLocation}));
        // A fresh user reads every default, all of them strings.
        const QList<QPair<QString, QString>> expected{
            {QuitStatusbarApp, "0"},         {DefaultNameZELMOR, "1"},
            {Log, "0"},                      {Initialization, "1"},
            {FirstLaunch, "1"},              {Workspace, "/Developer/ZELMOR"},
            {Output, "/Developer/ZELMOR/Output"}, {AppLocation, "/Apps/ZELMOR Helper.app"}};
        for (const auto &[key, value] : expected) {
            QCOMPARE(store.objectForKey(key).typeId(), QMetaType::QString);
            QCOMPARE(store.stringValue(key), value);
        }
        QCOMPARE(store.intValue(DefaultNameZELMOR), 1);
        QCOMPARE(store.intValue(Log), 0);
        // Registered defaults are never written to disk.
        QCOMPARE(store.persisted().state(), DefaultsDomain::State::Missing);
    }

    // A stored value hides the default, even an empty one; paths come back
    // exactly as they were stored; strings compare exactly.
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
        // The number 1 reads as on for a check box but is not equal to "1",
        // which is what the quit switch asks for.
        const QString quit = SettingsKeys::QuitStatusbarApp;
        QVERIFY(!store.isEqualToString(quit, "1"));
        store.setObject(quit, 1);
        QCOMPARE(store.intValue(quit), 1);
        QVERIFY(!store.isEqualToString(quit, "1"));
        store.setObject(quit, QStringLiteral("1"));
        QVERIFY(store.isEqualToString(quit, "1"));
    }

    void intValueRules_data()
    {
        TestSupport::columns<QVariant, int>({"value", "expected"});
        QTest::newRow("number 1") << QVariant::fromValue<qlonglong>(1) << 1;
        QTest::newRow("number 0") << QVariant::fromValue<qlonglong>(0) << 0;
        QTest::newRow("string 1") << QVariant("1") << 1;
        QTest::newRow("leading blanks and sign") << QVariant("  \t-42abc") << -42;
        QTest::newRow("plus sign") << QVariant("+7") << 7;
        QTest::newRow("no digits") << QVariant("yes") << 0;
        QTest::newRow("digits after text") << QVariant("a1") << 0;
        QTest::newRow("empty") << QVariant("") << 0;
        QTest::newRow("sign alone") << QVariant("-") << 0;
        QTest::newRow("decimal") << QVariant("3.9") << 3;
        QTest::newRow("too large") << QVariant("99999999999") << 2147483647;
        QTest::newRow("too small") << QVariant("-99999999999") << int(-2147483647 - 1);
        QTest::newRow("missing") << QVariant() << 0;
        QTest::newRow("large number") << QVariant::fromValue<qlonglong>(1LL << 40) << 2147483647;
    }
    void intValueRules()
    {
        QFETCH(QVariant, value);
        QTEST(intValueOf(value), "expected");
    }

    // Types survive the trip to another process and back: the store has no
    // cache, so the other process's writes are what this one reads.
    void typesAcrossProcesses()
    {
        const QString domain = freshDomain();
        SettingsStore store(domain);
        store.setObject("n", 1);
        store.setObject("s", QStringLiteral("1"));
        QCOMPARE(tool({"read", domain, "n"}), QByteArray("1\n"));
        QCOMPARE(tool({"read", domain, "s"}), QByteArray("\"1\"\n"));
        QCOMPARE(tool({"read-type", domain, "n"}), QByteArray("Type is integer\n"));
        QCOMPARE(tool({"read-type", domain, "s"}), QByteArray("Type is string\n"));

        tool({"write", domain, "n", "-string", "1"});
        tool({"write", domain, "s", "-int", "1"});
        QCOMPARE(store.objectForKey("n").typeId(), QMetaType::QString);
        QCOMPARE(store.objectForKey("s").typeId(), QMetaType::LongLong);
        QCOMPARE(store.objectForKey("s").toLongLong(), 1);
    }

    void removalFromOutsideSeenAtNextRead()
    {
        const QString domain = freshDomain();
        SettingsStore store(domain);
        store.registerApplicationDefaults("/b");
        store.setObject(SettingsKeys::Workspace, QStringLiteral("/mine"));
        store.setObject(SettingsKeys::Log, 1);
        QCOMPARE(store.stringValue(SettingsKeys::Workspace), QString("/mine"));

        tool({"delete", domain, SettingsKeys::Workspace});
        QCOMPARE(store.stringValue(SettingsKeys::Workspace), QString("/Developer/ZELMOR"));
        QCOMPARE(store.intValue(SettingsKeys::Log), 1);

        // "Reset All" removes the whole domain through the same command.
        tool({"delete", domain});
        QCOMPARE(store.intValue(SettingsKeys::Log), 0);
        QCOMPARE(store.persisted().state(), DefaultsDomain::State::Missing);
    }

    void unreadableFileIsKeptAside()
    {
        const QString domain = freshDomain();
        SettingsStore store(domain);
        store.registerApplicationDefaults("/b");
        const QString path = store.persisted().filePath();
        const QByteArray damaged = "{ \"Workspace\": \"/half";
        writeFile(path, damaged);

        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression("settings file .*" + QRegularExpression::escape(path)
                                                + " cannot be read"));
        QCOMPARE(store.stringValue(SettingsKeys::Workspace), QString("/Developer/ZELMOR"));
        // Reading again does not repeat the warning (a failing test would
        // report an unexpected message).
        QCOMPARE(store.intValue(SettingsKeys::FirstLaunch), 1);
        QCOMPARE(readFile(path), damaged);

        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("kept the unreadable settings file"));
        store.setObject(SettingsKeys::Log, 1);
        QCOMPARE(store.intValue(SettingsKeys::Log), 1);
        const QStringList aside = QDir(QFileInfo(path).absolutePath())
                                      .entryList({QFileInfo(path).fileName() + ".unreadable-*"});
        QCOMPARE(aside.size(), 1);
        QCOMPARE(readFile(QFileInfo(path).absolutePath() + "/" + aside.first()), damaged);
    }

    // A writer killed at any moment leaves the old file or the new one.
    void killedWriterNeverTearsTheFile()
    {
        const QString domain = freshDomain();
        SettingsStore store(domain);
        store.setObject("big", QString(100000, QLatin1Char('a')));
        const QString path = store.persisted().filePath();
        const QString loop = QStringLiteral("i=0; while true; do i=$((i+1)); \"%1\" write %2 big -string "
                                            "\"$(head -c 100000 /dev/zero | tr '\\0' b)$i\" || exit 1; done")
                                 .arg(defaultsTool(), domain);
        const auto parses = [&] {
            QJsonParseError error;
            const QJsonDocument doc = QJsonDocument::fromJson(readFile(path), &error);
            return error.error == QJsonParseError::NoError && doc.object().value("big").isString();
        };
        for (int round = 0; round < 12; ++round) {
            QProcess writer;
            writer.start("/bin/bash", {"-c", loop});
            QVERIFY(writer.waitForStarted());
            // Read while it writes, and kill it once it has replaced the file
            // a few times: the kill lands somewhere inside a later write.
            // Bounded: a writer that stopped writing fails the test below.
            QByteArray previous = readFile(path);
            int changes = 0;
            for (int reads = 0; changes < 1 + round % 4 && reads < 2000000; ++reads) {
                QVERIFY(parses());
                const QByteArray current = readFile(path);
                changes += current != previous;
                previous = current;
            }
            QCOMPARE(changes, 1 + round % 4);
            ::kill(static_cast<pid_t>(writer.processId()), SIGKILL);
            // The tool itself runs as bash's child; kill it mid-write too.
            QProcess::execute("/usr/bin/pkill", {"-KILL", "-f", "write " + domain + " big"});
            writer.waitForFinished();
            QVERIFY(parses());
        }
        // Only whole files were ever in place; leftovers of killed writers are
        // temporary files, never the settings file itself.
        QCOMPARE(store.persisted().state(), DefaultsDomain::State::Valid);
    }
};

ZELMOR_TEST_MAIN(TestSettings)
#include "tst_settings.moc"
