#include "importer/znImporter.h"

#include "importer/ImportRoad.h"
#include "standalone/startup/znStandaloneSession.h"
#include "standalone/znKernel/LoadedGeometries.h"

#include <utility>

znImporter::znImporter(znStandaloneSession& session, QObject* parent) : QObject(parent), m_session(session)
{
    qRegisterMetaType<znImportResult>();
    qRegisterMetaType<znPartCounts>();
    m_session.setLogSink([this](const char* line) { receiveLog(QString::fromUtf8(line)); });
}

znImporter::~znImporter()
{
    m_session.setLogSink({});
}

void znImporter::import(const QString& file)
{
    if (m_road) {
        qWarning("znImporter: an import is running already");
        return;
    }
    m_result = znImportResult();
    m_result.file = file;
    m_result.recordsSteps = m_recordsSteps;
    m_road = ImportRoad::forFile(file);
    connect(m_road.get(), &ImportRoad::progressChanged, this, &znImporter::progressChanged);
    connect(m_road.get(), &ImportRoad::partsChanged, this, &znImporter::partsChanged);
    connect(m_road.get(), &ImportRoad::ended, this, &znImporter::roadEnded);
    m_road->start(m_result);
}

void znImporter::cancel()
{
    if (!m_road)
        return;
    m_result.cancelled = true;
    m_road->cancel();
}

void znImporter::receiveLog(const QString& line)
{
    if (m_road)
        m_result.messages.append(line);
    Q_EMIT message(line);
}

void znImporter::roadEnded()
{
    m_road.release()->deleteLater();
    m_session.state<zn::LoadedGeometries>().entries.clear();
    if (m_result.state == znCADFileTypes::JobFailed && m_result.error.isEmpty() && !m_result.messages.isEmpty())
        m_result.error = m_result.messages.last();
    const znImportResult result = std::exchange(m_result, znImportResult());
    Q_EMIT finished(result);
}
