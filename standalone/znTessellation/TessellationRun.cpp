#include "standalone/znTessellation/TessellationRun.h"

#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "protocol/ExitCode.h"
#include "protocol/FileNames.h"
#include "protocol/Options.h"
#include "scene/GeometryWalk.h"
#include "scene/SceneEdits.h"
#include "standalone/znJobProcessing/ChildProcess.h"
#include "standalone/znKernel/ConverterCommand.h"
#include "standalone/znUtils/InstalledProgram.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

namespace zn::tessellation
{

namespace
{

namespace option = protocol::tessellationoption;
using protocol::ExitCode;

/// Numbers of tasks.
using Batch = std::vector<std::size_t>;

/// How long after its limit the program is left to end by itself, in seconds.
constexpr double graceSeconds = 30;

QString programPath(const QString& setting)
{
    return setting.isEmpty() ? installedProgram(QStringLiteral("ptxtessellate")) : setting;
}

/// As the C locale writes it, exactly.
QString numberText(double value)
{
    return QString::number(value, 'g', 17);
}

/// What the option that changes a setting takes.
QString assignment(const char* setting, double value)
{
    return QLatin1String(setting) + QLatin1Char('=') + numberText(value);
}

class TessellationRun
{
    Q_DECLARE_TR_FUNCTIONS(TessellationRun)

public:
    TessellationRun(std::vector<TessellationTask>& tasks, const TessellationWish& wish,
                    const TessellationProgram& program, const QString& folder)
        : m_tasks(tasks), m_wish(wish), m_program(program), m_folder(folder + QStringLiteral("/tessellation-XXXXXX"))
    {
    }

    void run()
    {
        Batch all;
        for (std::size_t i = 0; i < m_tasks.size(); ++i)
            all.push_back(i);
        m_waiting.push_back(std::move(all));
        while (!m_waiting.empty()) {
            const Batch batch = std::move(m_waiting.back());
            m_waiting.pop_back();
            if (!batch.empty())
                runBatch(batch);
        }
    }

private:
    void runBatch(const Batch& batch)
    {
        if (!writeInput(batch))
            return;
        QFile::remove(output());
        QFile::remove(marks());
        const QString failure = launch();
        if (failure.isEmpty())
            takeOutput(batch);
        else if (batch.size() == 1)
            m_tasks[batch.front()].reason = failure;
        else
            splitOff(batch, failure);
    }

    bool writeInput(const Batch& batch)
    {
        const osg::RefPtr<osg::NodePtr> root(osg::makeNodeFor(osg::Group::create()));
        for (const std::size_t number : batch) {
            auto mesh = std::make_shared<osg::Mesh>();
            mesh->brep = m_tasks[number].brep;
            const osg::GeometryPtr geometry = osg::Geometry::create();
            osg::exchangeMesh(geometry, std::move(mesh));
            osg::addChild(root, osg::makeNodeFor(geometry));
        }
        const auto result = osg::scenefile::writeSceneFile(root, input(), {.lasting = files::OutputFile::Lasting::No});
        if (!result)
            failAll(batch, result.error().message);
        return bool(result);
    }

    /// @return why it failed, empty when it did not
    QString launch() const
    {
        znJobs::ChildProcess child(nullptr);
        child.launch(
            zn::kernel::joinCommand(QStringList(programPath(m_program.path)) + m_program.options + arguments()));
        if (!child.waitForStarted(-1))
            return tr("%1 cannot be started").arg(child.program());
        const bool hasLimit = m_program.secondsLimit > 0;
        const bool hasEnded =
            child.waitForFinished(hasLimit ? int((m_program.secondsLimit + graceSeconds) * 1000) : -1);
        if (!hasEnded)
            return tr("meshing took too long");
        const int code = znJobs::readExitCode(child).value_or(-1);
        return code == ExitCode::Success ? QString() : reasonOf(code);
    }

    static QString reasonOf(int code)
    {
        if (code > protocol::SignalBase)
            return tr("meshing crashed (signal %1)").arg(code - protocol::SignalBase);
        if (code == ExitCode::MemoryLimit)
            return tr("meshing needed too much memory");
        if (code == ExitCode::TimeLimit || code == ExitCode::StallLimit)
            return tr("meshing took too long");
        return tr("meshing failed (code %1)").arg(code);
    }

    QStringList arguments() const
    {
        return {QLatin1String(option::Deviation),
                numberText(m_wish.chordDeviation),
                QLatin1String(option::Angle),
                numberText(m_wish.normalTolerance),
                QLatin1String(option::MaxEdgeLength),
                numberText(m_wish.maxChordLength),
                QLatin1String(option::Stitch),
                numberText(m_wish.stitchTolerance),
                QLatin1String(protocol::option::Set),
                assignment(protocol::setting::TimeLimit, m_program.secondsLimit),
                QLatin1String(protocol::option::Set),
                assignment(protocol::setting::TimeLimitPerMegabyte, 0),
                input(),
                output()};
    }

    void takeOutput(const Batch& batch)
    {
        const files::Result<osg::NodePtr> result = osg::scenefile::readSceneFile(output());
        if (!result)
            return failAll(batch, result.error().message);
        const osg::RefPtr<osg::NodePtr> root(result.value());
        if (root->getNChildren() != batch.size())
            return failAll(batch, tr("meshing gave a wrong number of meshes"));
        for (std::size_t i = 0; i < batch.size(); ++i) {
            TessellationTask& task = m_tasks[batch[i]];
            const osg::NodePtr node = root->getChild(static_cast<unsigned>(i));
            const osg::GeometryPtr geometry = osg::geometryOf(node);
            if (geometry && !osg::GeometryAccess::mesh(*geometry).triangles.empty())
                task.mesh = osg::GeometryAccess::sharedMesh(*geometry);
            else
                task.reason = QString::fromUtf8(osg::getName(node));
        }
    }

    /// Tries what was at work when the program died apart from the rest.
    void splitOff(const Batch& batch, const QString& failure)
    {
        QFile file(marks());
        const QByteArray state = file.open(QIODevice::ReadOnly) ? file.read(qint64(batch.size())) : QByteArray();
        Batch rest;
        const std::size_t before = m_waiting.size();
        for (std::size_t i = 0; i < batch.size(); ++i)
            if (int(i) < state.size() && state[int(i)] == protocol::partmark::Started)
                m_waiting.push_back({batch[i]});
            else
                rest.push_back(batch[i]);
        if (m_waiting.size() == before)
            return failAll(batch, failure);
        m_waiting.push_back(std::move(rest));
    }

    void failAll(const Batch& batch, const QString& reason)
    {
        for (const std::size_t number : batch)
            m_tasks[number].reason = reason;
    }

    QString fileOf(const QString& name) const
    {
        return m_folder.filePath(name + QLatin1String(protocol::SceneFileSuffix));
    }
    QString input() const { return fileOf(QStringLiteral("surfaces")); }
    QString output() const { return fileOf(QStringLiteral("meshes")); }
    QString marks() const { return output() + QLatin1String(protocol::PartMarksSuffix); }

    std::vector<TessellationTask>& m_tasks;
    const TessellationWish& m_wish;
    const TessellationProgram& m_program;
    QTemporaryDir m_folder;
    std::vector<Batch> m_waiting;
};

} // namespace

void runTessellation(std::vector<TessellationTask>& tasks, const TessellationWish& wish,
                     const TessellationProgram& program, const QString& folder)
{
    TessellationRun(tasks, wish, program, folder).run();
}

} // namespace zn::tessellation
