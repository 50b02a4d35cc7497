#include "tools/znimport/SelfCheck.h"

#include "importer/Importer.h"
#include "protocol/Options.h"
#include "protocol/Printable.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znKernel/ConverterCommand.h"
#include "standalone/znUtils/InstalledProgram.h"
#include "tools/znimport/ChosenSettings.h"
#include "tools/znimport/Ending.h"
#include "tools/znimport/Interrupt.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <array>
#include <cstdio>

namespace znimport
{

namespace
{

constexpr int allThere = 0;
constexpr int somethingMissing = 1;

constexpr std::size_t cubeTriangles = 12;

/// The sides of a cube of 10 mm as an STL text, two triangles each.
QByteArray cubeText()
{
    using Corner = std::array<int, 3>;
    QByteArray text = "solid cube\n";
    for (unsigned axis = 0; axis < 3; ++axis)
        for (const int height : {0, 10}) {
            const auto corner = [&](int u, int v) {
                Corner point{};
                point[axis] = height;
                point[(axis + 1) % 3] = height == 0 ? v : u;
                point[(axis + 2) % 3] = height == 0 ? u : v;
                return point;
            };
            for (const auto& triangle : {std::array{corner(0, 0), corner(10, 0), corner(10, 10)},
                                         std::array{corner(0, 0), corner(10, 10), corner(0, 10)}}) {
                text += "facet normal 0 0 0\nouter loop\n";
                for (const Corner& point : triangle)
                    text += "vertex " + QByteArray::number(point[0]) + ' ' + QByteArray::number(point[1]) + ' ' +
                            QByteArray::number(point[2]) + '\n';
                text += "endloop\nendfacet\n";
            }
        }
    return text + "endsolid cube\n";
}

class SelfCheck
{
public:
    explicit SelfCheck(zn::StandaloneSession& session) : m_session(session) {}

    int run()
    {
        say("znimport", QStringLiteral(ZN_VERSION) + QStringLiteral(", ") +
                            QDir::toNativeSeparators(QCoreApplication::applicationFilePath()));
        say("Qt", QString::fromUtf8(qVersion()));
        checkProgram("converter", zn::kernel::converterProgram(m_session.settings().converter.program));
        checkProgram("tessellation", tessellationProgram());
        checkSandbox();
        checkFolder();
        importCube();
        if (m_interrupt.requested()) {
            complain(QStringLiteral("interrupted"));
            return interrupted;
        }
        if (m_missing.isEmpty())
            std::puts("everything is there");
        for (const QString& sentence : m_missing)
            protocol::print(stdout, "missing: " + sentence.toStdString() + '\n');
        return m_missing.isEmpty() ? allThere : somethingMissing;
    }

private:
    static void say(const char* subject, const QString& text)
    {
        std::printf("%-13s %s\n", subject, protocol::printable(text.toStdString()).c_str());
    }

    QString tessellationProgram() const
    {
        const QString setting = m_session.settings().tessellation.program;
        return setting.isEmpty() ? zn::installedProgram(QStringLiteral("ptxtessellate")) : setting;
    }

    void checkProgram(const char* subject, const QString& program)
    {
        const QFileInfo info(program);
        if (info.isFile() && info.isExecutable())
            return say(subject, program);
        say(subject, QStringLiteral("not found"));
        m_missing << QStringLiteral("the program '%1': install it beside znimport or on the PATH, or name it with "
                                    "--set %2.program=PATH")
                         .arg(program, QString::fromUtf8(subject));
    }

    /// What the converter says of this machine, and what is asked of it.
    void checkSandbox()
    {
        QProcess converter;
        converter.start(zn::kernel::converterProgram(m_session.settings().converter.program),
                        {QLatin1String(protocol::option::Version)});
        converter.waitForFinished();
        const QString mark = QStringLiteral("sandbox: ");
        QString found = QStringLiteral("the converter does not tell");
        for (const QString& line : QString::fromUtf8(converter.readAllStandardOutput()).split(QLatin1Char('\n')))
            if (line.startsWith(mark))
                found = line.mid(mark.size());
        say("sandbox", m_session.settings().convert.sandbox.text() + QStringLiteral("; this machine can: ") + found);
    }

    void checkFolder()
    {
        const QTemporaryDir folder;
        if (folder.isValid())
            return say("temporary", QDir::tempPath());
        say("temporary", QStringLiteral("not writable"));
        m_missing << QStringLiteral("a writable temporary folder in place of '%1': %2")
                         .arg(QDir::tempPath(), folder.errorString());
    }

    void importCube()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("cube.stl")));
        const QByteArray text = cubeText();
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush())
            return cubeFailed(file.errorString());
        const zn::ImportResult result = import(file.fileName());
        if (!m_interrupt.requested())
            judge(result);
    }

    zn::ImportResult import(const QString& file)
    {
        zn::ImportResult ended;
        zn::Importer importer(m_session);
        QObject::connect(&importer, &zn::Importer::finished, &importer, [&ended](const zn::ImportResult& result) {
            ended = result;
            QCoreApplication::quit();
        });
        QObject::connect(&m_interrupt, &Interrupt::stopRequested, &importer, &zn::Importer::cancel);
        importer.import({file});
        QCoreApplication::exec();
        return ended;
    }

    void judge(const zn::ImportResult& result)
    {
        const std::size_t triangles = zn::countScene(result.node ? result.node.get() : osg::NodePtr()).triangles;
        if (result.state != znCADFileTypes::JobSucceeded)
            return cubeFailed(result.error);
        if (triangles != cubeTriangles)
            return cubeFailed(QStringLiteral("%1 triangles came in in place of %2").arg(triangles).arg(cubeTriangles));
        say("cube", QStringLiteral("imported, %1 triangles").arg(triangles));
    }

    void cubeFailed(const QString& reason)
    {
        say("cube", QStringLiteral("not imported"));
        m_missing << QStringLiteral("a converter that works: ") + reason;
    }

    zn::StandaloneSession& m_session;
    Interrupt m_interrupt;
    QStringList m_missing;
};

} // namespace

int selfCheck(const CommandLine& commandLine)
{
    zn::StandaloneSession session;
    if (const auto error = applySettings(commandLine, session.settings())) {
        complain(*error);
        return wrongUse;
    }
    return SelfCheck(session).run();
}

} // namespace znimport
