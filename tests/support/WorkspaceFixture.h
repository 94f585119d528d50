#pragma once

#include "BuildConfig.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

// A miniature emulator source tree with its upstream repositories, all inside
// one temporary folder:
//
//   <root>/zelmor.git, zelmor.work   the main repository: a CMake project that
//                                    builds ZELMORSDL and copies <src>/assets
//                                    into the build folder at configure time,
//                                    android/assets, SDL/, and two submodules
//   <root>/emu-lang.git, emu-tools.git  the modules; their URLs name them
//                                    "lang" and "tools" by the module rule
//   <root>/workspace                 the user's checkout (after checkoutMain())
//   <root>/output                    the output folder setting
class WorkspaceFixture
{
public:
    WorkspaceFixture() : m_dir(QDir::tempPath() + QStringLiteral("/zelmor-fixture-XXXXXX"))
    {
        const QString root = m_dir.path();
        m_langBare = TestSupport::makeBareRepository(
            root, QStringLiteral("emu-lang"),
            {{"en.txt", "Perform\n"}, {"de/strings.txt", "Ausfuehren\n"}});
        m_toolsBare = TestSupport::makeBareRepository(root, QStringLiteral("emu-tools"),
                                                      {{"tool.txt", "tool\n"}});
        m_mainBare = TestSupport::makeBareRepository(
            root, QStringLiteral("zelmor"),
            {{"CMakeLists.txt", cmakeLists()},
             {"main.c", "#include <stdio.h>\nint main(void)\n{\n    puts(\"ZELMORSDL ready\");\n"
                        "    return 0;\n}\n"},
             {"android/assets/config.ini", "[video]\n"},
             {"android/assets/fonts/font.txt", "glyphs\n"},
             {"SDL/README.txt", "desktop front end\n"}});
        const QString work = workFolder(QStringLiteral("main"));
        TestSupport::git(work, {"submodule", "add", "-q", m_langBare, "lang"});
        TestSupport::git(work, {"submodule", "add", "-q", m_toolsBare, "tools"});
        TestSupport::git(work, {"commit", "-q", "-m", "modules"});
        TestSupport::git(work, {"push", "-q", m_mainBare, "master"});
    }

    bool isValid() const { return m_dir.isValid(); }
    QString root() const { return m_dir.path(); }
    QString workspace() const { return root() + QStringLiteral("/workspace"); }
    QString output() const { return root() + QStringLiteral("/output"); }
    QString langURL() const { return m_langBare; }
    QString toolsURL() const { return m_toolsBare; }

    // Removes the workspace and every copy of it kept under a date suffix.
    void clearWorkspaces() const
    {
        const QDir folder(root());
        for (const QString &old : folder.entryList({QStringLiteral("workspace*")}, QDir::Dirs))
            QDir(folder.filePath(old)).removeRecursively();
    }

    // The emulator's address served by url (the main repository's unless
    // told), through the test user's git configuration, as a user could set
    // it; more is added to that configuration.
    void serveSources(const QString &url = QString(), const QByteArray &more = QByteArray()) const
    {
        TestSupport::writeFile(TestSupport::homeDir() + QStringLiteral("/.gitconfig"),
                               QStringLiteral("[url \"%1\"]\n\tinsteadOf = %2\n")
                                       .arg(url.isEmpty() ? m_mainBare : url,
                                            QStringLiteral(ZELMOR_SOURCE_REPOSITORY_URL))
                                       .toUtf8()
                                   + more);
    }

    // Clones the main repository into the workspace, leaving the empty module
    // placeholders that git creates.
    void checkoutMain() const { TestSupport::git(root(), {"clone", "-q", m_mainBare, workspace()}); }

    // Clones a module into the workspace under folder, the way the module
    // operation does (a checkout of its own with a tracking branch).
    void cloneModule(const QString &url, const QString &folder) const
    {
        QDir(workspace() + QLatin1Char('/') + folder).removeRecursively();
        TestSupport::git(workspace(), {"clone", "-q", url, folder});
    }

    // Commits file to "main", "lang" or "tools" upstream.
    void pushCommit(const QString &repository, const QString &file, const QByteArray &content) const
    {
        const QString work = workFolder(repository);
        TestSupport::writeFile(work + QLatin1Char('/') + file, content);
        TestSupport::git(work, {"add", "-A"});
        TestSupport::git(work, {"commit", "-q", "-m", "update " + file});
        const QString bare = repository == QLatin1String("main")   ? m_mainBare
                             : repository == QLatin1String("lang") ? m_langBare
                                                                   : m_toolsBare;
        TestSupport::git(work, {"push", "-q", bare, "master"});
    }

private:
    static QByteArray cmakeLists()
    {
        return "cmake_minimum_required(VERSION 3.13)\n"
               "project(ZELMORSDL C)\n"
               "add_executable(ZELMORSDL main.c)\n"
               "if(EXISTS \"${CMAKE_SOURCE_DIR}/assets\")\n"
               "  file(COPY \"${CMAKE_SOURCE_DIR}/assets\" DESTINATION \"${CMAKE_BINARY_DIR}\")\n"
               "endif()\n";
    }

    QString workFolder(const QString &repository) const
    {
        const QString name = repository == QLatin1String("main") ? QStringLiteral("zelmor")
                                                                  : "emu-" + repository;
        return root() + QLatin1Char('/') + name + QStringLiteral(".work");
    }

    QTemporaryDir m_dir;
    QString m_mainBare;
    QString m_langBare;
    QString m_toolsBare;
};
