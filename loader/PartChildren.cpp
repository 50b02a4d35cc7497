#include "loader/PartChildren.h"

#include "converter/znPtxConverterJob.h"
#include "host/znJobProcessing/znManagedJobQueue.h"
#include "host/znJobProcessing/znOsbLoaderJob.h"
#include "host/znUtils/znFile.h"
#include "import/Platform.h"

#include <QCoreApplication>

namespace parts
{

PartChildren::PartChildren(znManagedJobQueue* queue, UnloadedParts& parts, Arrival arrival, Events events)
    : m_queue(queue), m_parts(parts), m_arrival(std::move(arrival)), m_events(std::move(events))
{
    for (const auto& [path, nodes] : parts)
        m_waiting.insert(m_waiting.end(), nodes.begin(), nodes.end());
}

void PartChildren::convert(const std::string& path, const QString& outputDir)
{
    auto* converter = new znPtxConverterJob(QString::fromStdString(path), outputDir, m_queue);
    converter->setIsAssemblyFile(false);
    m_events.converterCreated(converter);
    QObject::connect(
        converter, &znAbstractJob::finished, &m_listener,
        [this, path, converter](znCADFileTypes::JobState state) { converterFinished(path, converter, state); },
        Qt::DirectConnection);
    m_queue->addJob(converter);
}

void PartChildren::converterFinished(const std::string& path, znPtxConverterJob* converter,
                                     znCADFileTypes::JobState state)
{
    const QString output = converter->getOutputFile();
    const bool isWanted = !m_wantsResults || m_wantsResults();
    if (state == znCADFileTypes::JobSucceeded && isWanted && znFile::exists(output.toStdString(), false, false))
        startLoad(path, output, converter->getInputFile());
    else
        m_parts.erase(path);
    m_events.importFinished(QString::fromStdString(path));
}

void PartChildren::startLoad(const std::string& path, const QString& file, const QString& partFile)
{
    auto* load = new znOsbLoaderJob(file);
    m_events.loaderCreated(load, partFile);
    QObject::connect(
        load, &znAbstractJob::finished, &m_listener, [this, path, load] { loadFinished(path, load); },
        Qt::DirectConnection);
    load->run();
}

void PartChildren::loadFinished(const std::string& path, znOsbLoaderJob* load)
{
    if (const osg::NodePtr loaded = load->getLoadedNode()) {
        for (const osg::NodePtr& target : m_parts[path])
            m_arrival(target, loaded);
        ++m_arrived;
    }
    m_events.loaderFinished(load);
    m_parts.erase(path);
    load->deleteLater();
}

void PartChildren::wait(const bool& waiting)
{
    while (waiting) {
        QCoreApplication::processEvents();
        Sleep(50);
    }
}

} // namespace parts
