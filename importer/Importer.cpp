#include "importer/Importer.h"

#include "geometry/NormalRepair.h"
#include "importer/AssetTableRun.h"
#include "importer/BoxMapping.h"
#include "importer/EmptyImport.h"
#include "importer/IdleSettings.h"
#include "importer/ImportRoad.h"
#include "importer/LeftRoads.h"
#include "importer/RunningImport.h"
#include "importer/TreeFold.h"
#include "standalone/reading/ReaderProcess.h"
#include "standalone/startup/StandaloneSession.h"

#include <new>
#include <utility>

using importer::ImportRoad;

namespace zn
{

namespace
{

/// Who receives the log of a session: the importer that was made last.
struct LogReceiver {
    Importer* importer = nullptr;
};

} // namespace

Importer::Importer(zn::StandaloneSession& session, QObject* parent) : QObject(parent), m_session(session)
{
    qRegisterMetaType<ImportResult>();
    qRegisterMetaType<PartCounts>();
    m_session.state<LogReceiver>().importer = this;
    m_session.setLogSink([this](const char* line) { receiveLog(QString::fromUtf8(line)); });
}

Importer::~Importer()
{
    if (m_session.state<LogReceiver>().importer == this) {
        m_session.state<LogReceiver>().importer = nullptr;
        m_session.setLogSink({});
    }
    if (!m_hasBegun)
        return;
    m_road->disconnect(this);
    m_session.state<importer::LeftRoads>().take(m_session, std::move(m_road));
}

void Importer::import(const ImportRequest& request)
{
    if (m_road) {
        qWarning("zn::Importer: an import is running already");
        return;
    }
    m_countsNormals = request.recordsSteps;
    m_road = ImportRoad::forRequest(request);
    connect(m_road.get(), &ImportRoad::progressChanged, this, &Importer::progressChanged);
    connect(m_road.get(), &ImportRoad::partsChanged, this, &Importer::partsChanged);
    connect(m_road.get(), &ImportRoad::ended, this, &Importer::roadEnded);
    const auto& left = m_session.state<importer::LeftRoads>();
    if (left.isEmpty())
        begin(request.file);
    else
        connect(&left, &importer::LeftRoads::emptied, m_road.get(), [this, file = request.file] { begin(file); });
}

void Importer::begin(const QString& file)
{
    m_hasBegun = true;
    importer::beginImport(m_session, file);
    m_road->start();
}

void Importer::cancel()
{
    if (!m_road)
        return;
    if (m_hasBegun)
        reading::setCancelled(m_session, true);
    m_road->cancel();
    const bool waited = m_session.state<importer::LeftRoads>().disconnect(m_road.get());
    if (waited)
        QMetaObject::invokeMethod(m_road.get(), &ImportRoad::ended, Qt::QueuedConnection);
}

void Importer::receiveLog(const QString& line)
{
    if (m_hasBegun)
        m_road->addMessage(line);
    Q_EMIT message(line);
}

void Importer::roadEnded()
{
    ImportResult result = m_road->takeResult();
    const importer::Source source = m_road->source();
    m_road.release()->deleteLater();
    if (std::exchange(m_hasBegun, false))
        importer::endImport(m_session);
    importer::judgeEmptiness(result, source);
    importer::applyAssetTable(m_session, result);
    if (result.node) {
        tellIdleSettings(result, source);
        lookAtNormals(result);
        mapBoxes(result);
    }
    if (result.node && m_session.settings().scene.fold)
        result.folded = importer::foldTree(m_session, result.node);
    if (result.state == znCADFileTypes::JobFailed && result.error.isEmpty() && !result.messages.isEmpty())
        result.error = result.messages.last();
    Q_EMIT finished(result);
}

void Importer::tellIdleSettings(ImportResult& result, importer::Source source) const
{
    const QStringList names = importer::idleSettings(source, m_session.settings().optimize);
    if (!names.isEmpty())
        result.messages << tr("%1: these settings have no effect on files of its kind: %2")
                               .arg(result.file, names.join(QStringLiteral(", ")));
}

void Importer::lookAtNormals(ImportResult& result) const
{
    const bool repairs = m_session.settings().mesh.repairNormals;
    if (!repairs && !m_countsNormals)
        return;
    try {
        result.wrongNormals = repairs ? geometry::repairNormals(result.node) : geometry::wrongNormals(result.node);
        result.repairedNormals = repairs;
    } catch (const std::bad_alloc&) {
        result.messages << tr("%1: there is not enough memory to look at its normals").arg(result.file);
    }
}

void Importer::mapBoxes(ImportResult& result) const
{
    try {
        importer::mapBoxes(result.node, m_session.settings().mesh.uv);
    } catch (const std::bad_alloc&) {
        result.messages << tr("%1: there is not enough memory for texture coordinates").arg(result.file);
    }
}

} // namespace zn
