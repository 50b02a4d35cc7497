#pragma once

#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Cast.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "loader/znPtxLoaderJob.h"
#include "tests/converter/ConverterTest.h"

#include <QFileInfo>

/// Loads of converted assemblies whose part files are converted by the scripted child.
class LoaderTest : public ConverterTest
{
protected:
    using Root = osg::RefPtr<osg::NodePtr>;

    LoaderTest()
    {
        set("processes.most", QStringLiteral("2"));
        EXPECT_TRUE(QDir().mkpath(path(QStringLiteral("made"))));
    }

    /// The assembly goes before the session does.
    void TearDown() override
    {
        m_assembly = osg::NodePtr();
        ConverterTest::TearDown();
    }

    /// A node that stands for the file at `source`, moved by `x`; an empty path is a path all the same.
    static osg::NodePtr makeReference(const char* name, const QString& source, float x = 0)
    {
        const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
        const osg::FileReferencePtr file = osg::FileReferenceBase::create();
        file->setPath(source.toStdString());
        core->setSourceFile(file);
        osg::Matrix matrix;
        matrix[12] = x;
        core->setMatrix(matrix);
        const osg::NodePtr node = osg::makeNodeFor(core);
        osg::setName(node, name);
        return node;
    }

    QString writeScene(const QString& name, const osg::NodePtr& root) const
    {
        EXPECT_TRUE(osg::scenefile::writeSceneFile(root, path(name)));
        return path(name);
    }

    /// A part file whose conversion does what `script` says and then gives a tree with these nodes below its root.
    QString writePart(const QString& name, const std::vector<const char*>& nodes, const QByteArray& script = {}) const
    {
        const Root root(makeReference("part root", path(name)));
        for (const char* node : nodes)
            addGroup(root.get(), node);
        writeScene(QStringLiteral("made/") + name, root.get());
        return write(name, script + "\n" + line("output-from", QStringLiteral("made/") + name));
    }

    /// The assembly that a test loads; references are added to it before.
    osg::NodePtr assembly() const { return m_assembly.get(); }
    osg::NodePtr refer(const char* name, const QString& source, float x = 0) const
    {
        const osg::NodePtr node = makeReference(name, source, x);
        assembly()->addChild(node);
        return node;
    }

    QString originalFile() const { return path(QStringLiteral("engine.stp")); }

    /// The job that loads the assembly as it is now.
    std::unique_ptr<znPtxLoaderJob> makeLoader()
    {
        return std::make_unique<znPtxLoaderJob>(writeScene(QStringLiteral("out put/engine.osb"), assembly()),
                                                originalFile());
    }

    static osg::ExtReferencePtr referenceOf(const osg::NodePtr& node)
    {
        return osg::fcCast<osg::ExtReference>(node->getCore());
    }

    /// The names of the nodes below the child `index` of the loaded root.
    static std::vector<std::string> namesBelow(znPtxLoaderJob& job, unsigned index)
    {
        return childNames(job.getLoadedNode()->getChild(index));
    }

private:
    Root m_assembly{makeReference("engine", originalFile())};
};

/// The signals of a loader job as lines, in the order in which they come.
class LoaderLog
{
public:
    explicit LoaderLog(znPtxLoaderJob& job) : m_job(job)
    {
        m_log.watch(job);
        connect(&znPtxLoaderJob::startingChildPtxImport, [this](const QString& file) { note("starting", file); });
        connect(&znPtxLoaderJob::childPtxConverterJobCreated,
                [this](znPtxConverterJob* child) { note("converter for", child->getInputFile()); });
        connect(&znPtxLoaderJob::childOsbLoaderJobCreated,
                [this](znOsbLoaderJob* load, const QString& file) { note(load ? "load of" : "no load of", file); });
        connect(&znPtxLoaderJob::childOsbLoaderJobFinished, [this](znOsbLoaderJob* load) {
            lines() << (load->getLoadedNode() ? QStringLiteral("loaded") : QStringLiteral("not loaded"));
        });
        connect(&znPtxLoaderJob::childPtxImportFinished, [this](const QString& file) { note("end of", file); });
        connect(&znPtxLoaderJob::childrenConversionFinished, [this](double taken) {
            seconds = taken;
            lines() << QStringLiteral("all ended");
        });
        connect(&znPtxLoaderJob::processingFinished, [this] { lines() << QStringLiteral("processed"); });
    }

    /// Runs the job to its end, which comes before `run` returns.
    QStringList run()
    {
        m_job.run();
        return lines();
    }

    QStringList& lines() { return m_log.lines; }
    qsizetype count(const QString& start) const
    {
        return std::count_if(m_log.lines.begin(), m_log.lines.end(),
                             [&](const QString& line) { return line.startsWith(start); });
    }

    double seconds = -1;

private:
    template <class Signal, class Slot>
    void connect(Signal signal, Slot slot)
    {
        QObject::connect(&m_job, signal, &m_context, slot);
    }
    void note(const char* what, const QString& file)
    {
        lines() << QString::fromUtf8(what) + QLatin1Char(' ') + QFileInfo(file).fileName();
    }

    znPtxLoaderJob& m_job;
    SignalLog m_log;
    QObject m_context;
};
