#include "TestSupport.h"

#include "BuildConfig.h"
#include "platform/Bundle.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>

using namespace TestSupport;

namespace {

const QString InstalledBundle = "/usr/lib/zelmor-helper/ZELMOR Helper.app";

// Runs a tool to its end and returns what it printed, both streams.
QByteArray tool(const QString &program, const QStringList &arguments, int *exitCode)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    // No limit of its own: CTest's timeout for this test is the one that counts.
    if (!process.waitForFinished(-1))
        return "did not finish";
    *exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return process.readAll();
}

} // namespace

// The Debian package made in this build tree, unpacked into a folder of its
// own: what it declares and installs, whether the desktop accepts its files,
// and whether the bundle, started through the launcher, finds what it ships.
class TestPackage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        int exitCode = -1;
        const QString config = QFileInfo(buildBundleDir()).absolutePath() + "/CPackConfig.cmake";
        const QByteArray output =
            tool(ZELMOR_CPACK_COMMAND, {"--config", config, "-B", m_out.path()}, &exitCode);
        QVERIFY2(exitCode == 0, output.constData());
        const QString architecture = run("dpkg", {"--print-architecture"}).trimmed();
        m_deb = QString("zelmor-helper_%1_%2.deb").arg(ZELMOR_VERSION, architecture);
        QCOMPARE(QDir(m_out.path()).entryList({"zelmor-helper_*.deb"}), QStringList(m_deb));
        m_deb = m_out.path() + "/" + m_deb;
        m_root = m_out.path() + "/root";
        run("dpkg-deb", {"-x", m_deb, m_root});
    }

    // Libraries come from dpkg-shlibdeps; the display plugins are loaded at
    // run time, so the package names them itself. The desktop's validators
    // accept the entries and the metainfo without a warning.
    void metadataIsValid()
    {
        const QString fields =
            QString::fromUtf8(run("dpkg-deb", {"-f", m_deb, "Depends", "Recommends"}));
        for (const char *wanted : {"libqt6widgets6", "libqt6dbus6", "qt6-qpa-plugins",
                                   "Recommends: git, cmake, make, g++, libsdl2-dev, packagekit"})
            QVERIFY2(fields.contains(wanted), qPrintable(fields));
        const QString entry = m_root + "/usr/share/applications/org.zelmor.ZELMORHelper";
        const QString metainfo =
            m_root + "/usr/share/metainfo/org.zelmor.ZELMORHelper.metainfo.xml";
        for (QStringList command : {QStringList{"desktop-file-validate", entry + ".desktop"},
                                    {"desktop-file-validate", entry + "StatusbarApp.desktop"},
                                    {"appstreamcli", "validate", "--no-net", metainfo}}) {
            int exitCode = -1;
            const QString program = command.takeFirst();
            const QByteArray output = tool(program, command, &exitCode);
            QVERIFY2(exitCode == 0 && !output.contains("warning") && !output.contains("error"),
                     output.constData());
        }
        // The validator cannot look behind a screenshot's URL: the picture is
        // this repository's own, at a size software centres take.
        const QRegularExpression image("<image>https://raw\\.githubusercontent\\.com/"
                                       "[^/]+/zelmor-helper/[^/]+/([^<]+)</image>");
        auto images = image.globalMatch(QString::fromUtf8(readFile(metainfo)));
        QVERIFY(images.hasNext());
        while (images.hasNext()) {
            const QString file = images.next().captured(1);
            const QImage picture(QFINDTESTDATA("../" + file));
            QVERIFY2(picture.width() >= 620 && picture.height() >= 350, qPrintable(file));
        }
        // The menu entry and the software centre's texts (release notes
        // aside) speak every language the application does.
        const QString desktop = QString::fromUtf8(readFile(entry + ".desktop"));
        const QString about = QString::fromUtf8(readFile(metainfo)).section("<releases>", 0, 0);
        const QString texts = "<(summary|p|li|caption)%1>";
        const int english = int(about.count(QRegularExpression(texts.arg(""))));
        const QStringList languages = QDir(QFINDTESTDATA("../resources/translations"))
                                          .entryList({"zelmorhelper_??.ts"})
                                          .replaceInStrings(QRegularExpression("^.*_|\\.ts$"), "");
        QVERIFY(languages.contains("de") && languages.contains("fr"));
        for (const QString &language : languages) {
            if (language == "en")
                continue;
            for (const QString key : {"GenericName", "Comment", "Keywords"})
                QVERIFY2(desktop.contains(QString("\n%1[%2]=").arg(key, language)),
                         qPrintable(key + " " + language));
            const QString translated = texts.arg(" xml:lang=\"" + language + "\"");
            QCOMPARE(int(about.count(QRegularExpression(translated))), english);
        }
    }

    // What the other checks here do not already reach, then the launcher: a
    // link into the bundle (so the program knows its bundle) that answers as
    // the application does, and the autostart entry naming the companion
    // where the package puts it.
    void installsItsFiles()
    {
        QStringList files{InstalledBundle + "/Contents/Info.plist",
                          "/usr/share/man/man1/zelmor-helper.1.gz"};
        for (const QString icon :
             {"org.zelmor.ZELMORHelper", "org.zelmor.ZELMORHelperStatusbarApp"}) {
            files << "/usr/share/icons/hicolor/scalable/apps/" + icon + ".svg";
            for (const int size : {16, 22, 24, 32, 48, 64, 128, 256})
                files << QString("/usr/share/icons/hicolor/%1x%1/apps/%2.png").arg(size).arg(icon);
        }
        for (const QString &file : std::as_const(files))
            QVERIFY2(QFileInfo(m_root + file).isFile(), qPrintable(file));
        QCOMPARE(QFileInfo(m_root + "/usr/bin/zelmor-helper").symLinkTarget(),
                 m_root + InstalledBundle + "/Contents/MacOS/ZELMORHelper");
        int exitCode = -1;
        QCOMPARE(tool(m_root + "/usr/bin/zelmor-helper", {"--version"}, &exitCode),
                 QByteArray("ZELMOR Helper " ZELMOR_VERSION "\n"));
        QCOMPARE(exitCode, 0);
        const QString companion = InstalledBundle + "/Contents/Library/LoginItems/"
                                                    "ZELMORHelperStatusbarApp.app/Contents/MacOS/"
                                                    "ZELMORHelperStatusbarApp";
        QVERIFY(QFileInfo(m_root + companion).isExecutable());
        QVERIFY(
            readFile(m_root + "/usr/share/applications/org.zelmor.ZELMORHelperStatusbarApp.desktop")
                .contains("\nExec=\"" + companion.toUtf8() + "\" -runMode autoLaunched\n"));
    }

    // The unpacked bundle, reached through the launcher: the application
    // records its own bundle at start and starts the companion found there
    // (which says offscreen that it has no tray); the paths to the installer
    // and the `defaults` tool come out of the same bundle.
    void unpackedBundleFindsWhatItShips()
    {
        const QString bundle = m_root + InstalledBundle;
        SettingsStore::standard().setObject(SettingsKeys::FirstLaunch, 0);
        QProcess app;
        app.setProcessChannelMode(QProcess::MergedChannels);
        app.start(m_root + "/usr/bin/zelmor-helper", {});
        QTRY_COMPARE_WITH_TIMEOUT(SettingsStore::standard().stringValue(SettingsKeys::AppLocation),
                                  bundle, 20000);
        QByteArray output;
        QTRY_VERIFY_WITH_TIMEOUT(
            (output += app.readAll()).contains("ZELMORHelperStatusbarApp: No system tray"), 20000);
        app.terminate();
        QVERIFY(app.waitForFinished(10000));

        Bundle::setMainBundlePath(bundle);
        const QString installer = Bundle::executablePath(Bundle::installerAppPath());
        QVERIFY(installer.startsWith(bundle) && QFileInfo(installer).isExecutable());
        const QString defaults = bundle + "/Contents/Helpers/defaults";
        run(defaults, {"write", "org.zelmor.test.package", "Workspace", "-string", "/tmp/w"});
        QVERIFY(run(defaults, {"read", "org.zelmor.test.package", "Workspace"}).contains("/tmp/w"));
    }

private:
    QTemporaryDir m_out;
    QString m_deb;
    QString m_root;
};

ZELMOR_TEST_MAIN(TestPackage)
#include "tst_package.moc"
