#include "TestSupport.h"

#include "BuildConfig.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>

namespace {
// A static, not a leaked pointer: its destructor removes the whole user when
// the program returns from main(), failed tests included.
QTemporaryDir &userDir()
{
    static QTemporaryDir dir(QDir::tempPath() + "/zelmor-test-XXXXXX");
    return dir;
}
} // namespace

namespace TestSupport {

void isolateUser()
{
    const QString root = userDir().path();
    QDir().mkpath(root + "/home/.config");
    // Temporary files and local sockets (the companion channel, the one
    // instance) live here too, so tests never meet a real companion, a
    // running ZELMOR Helper or each other.
    QDir().mkpath(root + "/tmp");
    qputenv("TMPDIR", QFile::encodeName(root + "/tmp"));
    QDir().mkpath(root + "/run");
    QFile::setPermissions(root + "/run", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(root + "/run"));
    qputenv("HOME", QFile::encodeName(root + "/home"));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(root + "/home/.config"));
    qputenv("GIT_CONFIG_NOSYSTEM", "1");
    qputenv("GIT_AUTHOR_NAME", "ZELMOR Test");
    qputenv("GIT_AUTHOR_EMAIL", "test@zelmor.invalid");
    qputenv("GIT_COMMITTER_NAME", "ZELMOR Test");
    qputenv("GIT_COMMITTER_EMAIL", "test@zelmor.invalid");
    qputenv("GIT_TERMINAL_PROMPT", "0");
    // The tests expect the English texts, of the bundle's programs and of
    // git alike, whatever language the machine's user reads.
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("LANGUAGE", "en");
    // Local fixtures are cloned with file:// URLs, which newer git refuses for
    // submodules unless allowed.
    qputenv("GIT_ALLOW_PROTOCOL", "file:https:http:ssh:git");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

QString homeDir()
{
    return QString::fromLocal8Bit(qgetenv("HOME"));
}

QByteArray run(const QString &program, const QStringList &arguments, const QString &folder,
               int *exitCode)
{
    QProcess process;
    if (!folder.isEmpty())
        process.setWorkingDirectory(folder);
    process.start(program, arguments);
    process.closeWriteChannel();
    if (!process.waitForFinished(120000)) {
        qWarning("%s did not finish", qPrintable(program));
        return {};
    }
    const QByteArray err = process.readAllStandardError();
    if (exitCode) {
        *exitCode = process.exitCode();
    } else if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        qWarning("%s %s failed: %s", qPrintable(program), qPrintable(arguments.join(' ')),
                 err.constData());
    }
    return process.readAllStandardOutput();
}

QByteArray git(const QString &folder, const QStringList &arguments, int *exitCode)
{
    return run(QStringLiteral("git"), arguments, folder, exitCode);
}

void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qWarning("cannot write %s", qPrintable(path));
    file.write(content);
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

QString makeBareRepository(const QString &parentFolder, const QString &name,
                           const QMap<QString, QByteArray> &files)
{
    const QString work = parentFolder + "/" + name + ".work";
    const QString bare = parentFolder + "/" + name + ".git";
    QDir().mkpath(work);
    git(work, {"init", "-q", "-b", "master"});
    for (auto it = files.begin(); it != files.end(); ++it)
        writeFile(work + "/" + it.key(), it.value());
    git(work, {"add", "-A"});
    git(work, {"commit", "-q", "-m", "initial"});
    git(parentFolder, {"clone", "-q", "--bare", work, bare});
    return bare;
}

void writeScript(const QString &path, const QByteArray &script, const QByteArray &shell)
{
    writeFile(path, "#!" + shell + '\n' + script);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

FakeTools::FakeTools() : m_path(qgetenv("PATH"))
{
    qputenv("PATH", QFile::encodeName(m_bin.path()) + ':' + m_path);
}

FakeTools::~FakeTools()
{
    qputenv("PATH", m_path);
}

void FakeTools::add(const QString &name, const QByteArray &script) const
{
    writeScript(m_bin.path() + '/' + name, script, "/bin/bash");
}

void makeScriptBundle(const QString &bundle, const QString &identifier, const QByteArray &script)
{
    writeFile(bundle + "/Contents/Info.plist",
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n"
              "\t<key>CFBundleIdentifier</key>\n\t<string>"
                  + identifier.toUtf8()
                  + "</string>\n\t<key>CFBundleExecutable</key>\n\t<string>probe</string>\n"
                    "</dict>\n</plist>\n");
    writeScript(bundle + "/Contents/MacOS/probe", script);
}

QString buildBundleDir()
{
    return QStringLiteral(ZELMOR_BUILD_BUNDLE_DIR);
}

quint32 randomSeed()
{
    bool given = false;
    const quint32 requested = qEnvironmentVariable("ZELMOR_TEST_SEED").toUInt(&given);
    const quint32 seed = given ? requested : QRandomGenerator::global()->generate();
    qInfo("ZELMOR_TEST_SEED=%u repeats this run", seed); // the test function names itself
    return seed;
}

} // namespace TestSupport
