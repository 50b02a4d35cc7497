#include "bench/optimize/OptimizationRun.h"

#include "bench/optimize/GeneratedTree.h"
#include "importer/Importer.h"
#include "optimization/znPtxTreeOptimizationJob.h"
#include "standalone/startup/StandaloneSession.h"

#include <QEventLoop>

#include <ctime>

namespace
{

/// Of this thread on the processor: the steps are its work alone, whatever else the machine does.
double threadSeconds()
{
    timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + 1e-9 * double(now.tv_nsec);
}

/// Appends the steps of a job.
class Stopwatch
{
public:
    explicit Stopwatch(StepSeconds& steps) : m_steps(&steps) {}

    void operator()(const char* step)
    {
        const double now = threadSeconds();
        if (!m_steps->empty())
            m_steps->back().second = now - m_begin;
        if (step)
            m_steps->emplace_back(step, 0);
        m_begin = threadSeconds();
    }

private:
    StepSeconds* m_steps;
    double m_begin = 0;
};

} // namespace

StepSeconds optimizeGenerated(unsigned nodes, const RunSettings& settings)
{
    zn::StandaloneSession session;
    for (const auto& [name, value] : settings)
        if (session.settings().set(QString::fromLatin1(name), QString::fromLatin1(value)))
            return {};
    StepSeconds steps;
    znPtxTreeOptimizationJob job(QStringLiteral("generated.stp"), generateTree(nodes).get(), osg::NodePtr());
    job.setStepListener(Stopwatch(steps));
    job.run();
    return job.getState() == znCADFileTypes::JobSucceeded ? steps : StepSeconds();
}

StepSeconds optimizeImported(const QString& file, std::size_t& nodes)
{
    zn::StandaloneSession session;
    if (session.settings().set(QStringLiteral("converter.program"), QString::fromUtf8(ZN_PTXCONVERT)))
        return {};
    zn::Importer importer(session);
    QEventLoop loop;
    StepSeconds steps;
    QObject::connect(&importer, &zn::Importer::finished, &loop, [&](const zn::ImportResult& result) {
        for (const zn::TreeStep& step : result.steps)
            steps.emplace_back(step.name.toStdString(), step.seconds);
        nodes = result.steps.empty() ? 0 : result.steps.front().before.nodes;
        loop.quit();
    });
    importer.import({file, true});
    loop.exec();
    return steps;
}
