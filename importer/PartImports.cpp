#include "importer/PartImports.h"

#include "converter/znPtxConverterJob.h"
#include "host/znJobProcessing/znOsbLoaderJob.h"
#include "importer/FailureReason.h"
#include "loader/znPtxLoaderJob.h"
#include "plmxml/znPLMXMLLoaderJob.h"

#include <QFile>

namespace importer
{

PartImports::PartImports(znPtxLoaderJob& job) : QObject(&job)
{
    followConversions(job);
    connect(&job, &znPtxLoaderJob::childPtxConverterJobCreated, this, [this] { ++m_counts.total; });
}

PartImports::PartImports(znPLMXMLLoaderJob& job) : QObject(&job)
{
    followNested(job);
}

void PartImports::followNested(znPLMXMLLoaderJob& job)
{
    followConversions(job);
    connect(&job, &znPLMXMLLoaderJob::foundChildFile, this, [this] { ++m_counts.total; });
    connect(&job, &znPLMXMLLoaderJob::loadingChildFileFinished, this, &PartImports::directPartEnded);
}

QString PartImports::text() const
{
    return tr("%1 of %2 parts done, %3 running, %4 failed")
        .arg(m_counts.done)
        .arg(m_counts.total)
        .arg(m_counts.running)
        .arg(m_counts.failed);
}

/// The jobs have the same signals, and no base that declares them.
template <class Job>
void PartImports::followConversions(Job& job)
{
    connect(&job, &Job::childPtxConverterJobCreated, this, &PartImports::follow);
    connect(&job, &Job::childPtxImportFinished, this, &PartImports::partEnded);
    connect(&job, &Job::childOsbLoaderJobCreated, this, [this](znOsbLoaderJob* load, const QString& partFile) {
        connect(load, &znAbstractJob::finished, this, [this, load, partFile] { loadEnded(*load, partFile); });
    });
}

void PartImports::follow(znPtxConverterJob* conversion)
{
    connect(conversion, &znAbstractJob::starting, this, [this, conversion] {
        m_running.insert(conversion->getInputFile());
        m_counts.running = static_cast<unsigned>(m_running.size());
        Q_EMIT changed();
    });
    connect(conversion, &znAbstractJob::finished, this, [this, conversion] { conversionEnded(*conversion); });
}

void PartImports::conversionEnded(const znPtxConverterJob& conversion)
{
    const QString file = conversion.getInputFile();
    m_outputs.insert(file, conversion.getOutputFile());
    m_reasons.insert(file, failureReason(conversion));
}

void PartImports::loadEnded(znOsbLoaderJob& load, const QString& partFile)
{
    if (load.getLoadedNode())
        m_reasons.remove(partFile);
    else
        m_reasons.insert(partFile, load.getErrorText());
}

void PartImports::partEnded(const QString& partFile)
{
    m_running.remove(partFile);
    m_counts.running = static_cast<unsigned>(m_running.size());
    const QString reason = m_reasons.take(partFile);
    ++(reason.isEmpty() ? m_counts.done : m_counts.failed);
    if (!reason.isEmpty())
        m_missing.push_back({partFile, reason, {}});
    if (const QString output = m_outputs.take(partFile); !output.isEmpty())
        QFile::remove(output);
    Q_EMIT changed();
}

/// What is wrong with one that did not come in stands in the host's log alone.
void PartImports::directPartEnded(const QString&, znCADFileTypes::JobState state)
{
    ++(state == znCADFileTypes::JobSucceeded ? m_counts.done : m_counts.failed);
    Q_EMIT changed();
}

} // namespace importer
