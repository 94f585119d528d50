#include "TestSupport.h"

#include "platform/Bundle.h"
#include "platform/Relaunch.h"

#include <QProcess>
#include <QTimer>

#include <cstdlib>

using namespace TestSupport;

namespace {

constexpr int CallerEndedByQuit = 42;

// Started with ZELMOR_RELAUNCH_PROBE_BUNDLE set, this program is the caller
// of a real relaunch: it asks for one, and must end by the application's own
// termination (then exiting with CallerEndedByQuit).
const bool probeCaller = [] {
    const QByteArray bundle = qgetenv("ZELMOR_RELAUNCH_PROBE_BUNDLE");
    if (bundle.isEmpty())
        return false;
    int argc = 1;
    char name[] = "relaunch-caller";
    char *argv[] = {name, nullptr};
    QCoreApplication app(argc, argv);
    Bundle::setMainBundlePath(QString::fromLocal8Bit(bundle));
    QTimer::singleShot(0, &app, [] { Relaunch::relaunchAfterDelay(2.0f); });
    const int rc = app.exec();
    std::exit(rc == 0 ? CallerEndedByQuit : rc);
}();

} // namespace

class TestRelaunch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(!probeCaller);
        QVERIFY(m_dir.isValid());
        m_bundle = m_dir.path() + "/with blanks/Relaunch Probe.app";
        m_marker = m_dir.path() + "/came back";
        makeScriptBundle(m_bundle, "org.zelmor.test.RelaunchProbe",
                          "echo back >> '" + m_marker.toUtf8() + "'\n");
    }

    // The shell line: "%f" of the delay, and the path in double quotes so
    // blanks survive.
    void commandText_data()
    {
        columns<float, QString, QString>({"delay", "bundle", "expected"});
#ifdef Q_OS_MACOS
        QTest::newRow("2.0") << 2.0f << "/Applications/B.app"
                             << R"(sleep 2.000000; open "/Applications/B.app")";
        QTest::newRow("0.5") << 0.5f << "/Applications/B.app"
                             << R"(sleep 0.500000; open "/Applications/B.app")";
        QTest::newRow("blanks") << 2.0f << m_bundle
                                << QString(R"(sleep 2.000000; open "%1")").arg(m_bundle);
#else
        const QString program = m_bundle + "/Contents/MacOS/probe";
        QTest::newRow("2.0, blanks") << 2.0f << m_bundle
                                     << QString(R"(sleep 2.000000; exec "%1")").arg(program);
        QTest::newRow("0.5") << 0.5f << m_bundle
                             << QString(R"(sleep 0.500000; exec "%1")").arg(program);
        // Not started from a bundle: the running program comes back.
        QTest::newRow("no bundle")
            << 2.0f << m_dir.path()
            << QString(R"(sleep 2.000000; exec "%1")").arg(QCoreApplication::applicationFilePath());
#endif
    }
    void commandText()
    {
        QFETCH(float, delay);
        QFETCH(QString, bundle);
        QTEST(Relaunch::command(delay, bundle), "expected");
    }

    // A caller in a bundle with blanks in its path asks for a relaunch: it
    // terminates at once, and its bundle's program starts after the delay.
    void realRelaunchComesBackAfterTheCallerEnded()
    {
        QFile::remove(m_marker);
        QProcess caller;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("ZELMOR_RELAUNCH_PROBE_BUNDLE", m_bundle);
        caller.setProcessEnvironment(env);
        // The detached shell inherits the caller's streams; forwarding them
        // keeps it from holding pipes this test would wait on.
        caller.setProcessChannelMode(QProcess::ForwardedChannels);
        caller.start(QCoreApplication::applicationFilePath(), {});
        QVERIFY(caller.waitForFinished(30000));
        QCOMPARE(caller.exitStatus(), QProcess::NormalExit);
        QCOMPARE(caller.exitCode(), CallerEndedByQuit);
        QVERIFY2(!QFile::exists(m_marker), "the program came back before the caller ended");
        // The shell creates the file before echo writes to it: wait for the line.
        QTRY_COMPARE_WITH_TIMEOUT(readFile(m_marker), QByteArray("back\n"), 30000);
    }

private:
    QTemporaryDir m_dir;
    QString m_bundle;
    QString m_marker;
};

ZELMOR_TEST_MAIN(TestRelaunch)
#include "tst_relaunch.moc"
