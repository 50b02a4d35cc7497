#include "bench/plmxmlimport/PlmxmlRun.h"

#include "converter/znPtxConverterJob.h"
#include "host/znJobProcessing/znOsbLoaderJob.h"
#include "importer/SceneText.h"
#include "plmxml/znPLMXMLLoaderJob.h"
#include "standalone/startup/StandaloneSession.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>

#include <algorithm>

namespace
{

/// Takes the times between the signals of one loader job.
class StopWatch
{
public:
    StopWatch(PlmxmlRun& run, znPLMXMLLoaderJob& job) : m_run(run)
    {
        QObject::connect(&job, &znAbstractJob::started, &m_context, [this] { m_clock.start(); });
        QObject::connect(&job, &znPLMXMLLoaderJob::foundChildFile, &m_context, [this] {
            if (m_run.document == 0)
                m_run.document = seconds();
        });
        QObject::connect(&job, &znPLMXMLLoaderJob::childPtxConverterJobCreated, &m_context,
                         [this](znPtxConverterJob* child) { follow(*child); });
        QObject::connect(&job, &znPLMXMLLoaderJob::childOsbLoaderJobCreated, &m_context,
                         [this](znOsbLoaderJob* load) { follow(*load); });
        QObject::connect(&job, &znPLMXMLLoaderJob::childOsbLoaderJobFinished, &m_context,
                         [this] { m_run.merging += seconds() - m_loaded; });
        QObject::connect(&job, &znAbstractJob::finished, &m_context, [this] { end(); });
    }

private:
    double seconds() const { return double(m_clock.nsecsElapsed()) / 1e9; }

    void follow(znPtxConverterJob& child)
    {
        QObject::connect(&child, &znAbstractJob::started, &m_context, [this] { m_run.converters -= seconds(); });
        QObject::connect(&child, &znAbstractJob::finished, &m_context, [this, &child] {
            m_run.converters += seconds();
            // The output is the last thing that the converter writes.
            const QDateTime written = QFileInfo(child.getOutputFile()).lastModified();
            m_run.waiting += std::max<double>(0, double(written.msecsTo(QDateTime::currentDateTime()))) / 1000;
        });
    }

    /// Connected before the loader job's own handler, which merges.
    void follow(znOsbLoaderJob& load)
    {
        const double begin = seconds();
        QObject::connect(&load, &znAbstractJob::finished, &m_context, [this, begin] {
            m_loaded = seconds();
            m_run.loading += m_loaded - begin;
        });
    }

    void end()
    {
        m_run.total = seconds();
        m_run.conversion = m_run.total - m_run.document - m_run.loading - m_run.merging;
    }

    PlmxmlRun& m_run;
    QElapsedTimer m_clock;
    double m_loaded = 0;
    QObject m_context;
};

} // namespace

PlmxmlRun runDocument(const QString& file, int processes)
{
    PlmxmlRun run;
    zn::StandaloneSession session;
    session.settings().set(QStringLiteral("converter.program"), QString::fromUtf8(ZN_PTXCONVERT));
    session.settings().set(QStringLiteral("processes.most"), QString::number(processes));
    znPLMXMLLoaderJob job(file.toStdString(), nullptr);
    const StopWatch watch(run, job);
    QEventLoop loop;
    QObject::connect(&job, &znAbstractJob::finished, &loop, &QEventLoop::quit);
    job.run();
    loop.exec();
    const osg::RefPtr<osg::NodePtr> tree(job.getLoadedNode());
    run.succeeded = job.getState() == znCADFileTypes::JobSucceeded;
    const zn::SceneCounts counts = zn::countScene(tree);
    run.geometries = counts.geometries;
    run.placedGeometries = counts.placedGeometries;
    run.placedTriangles = counts.placedTriangles;
    return run;
}
