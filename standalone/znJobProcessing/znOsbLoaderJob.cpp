#include "host/znJobProcessing/znOsbLoaderJob.h"

#include "host/znUtils/znLog.h"
#include "standalone/loading/SceneExtras.h"
#include "standalone/scenefile/SceneFile.h"
#include "standalone/session/Session.h"

znOsbLoaderJob::znOsbLoaderJob(const QString& file) : znAbstractProcessingJob(nullptr), m_file(file) {}

znOsbLoaderJob::~znOsbLoaderJob() = default;

void znOsbLoaderJob::process()
{
    if (!m_holdFinish)
        Q_EMIT started();
    const osg::SceneFileReadResult result = osg::readSceneFile(m_file);
    m_loadedNode = result.root;
    m_held = result.root;
    m_errorText = result.error ? result.error->toString() : QString();
    m_state = result ? znCADFileTypes::JobSucceeded : znCADFileTypes::JobFailed;
    if (result.error)
        znLog::error(m_errorText.toUtf8().constData());
    for (const osg::SceneFileWarning& warning : result.warnings)
        znLog::error((m_file + QStringLiteral(": ") + warning.message()).toUtf8().constData());
    if (zn::Session* session = zn::Session::current())
        for (const QString& complaint : zn::takeExtras(*session, result.root))
            znLog::error((m_file + QStringLiteral(": ") + complaint).toUtf8().constData());
    if (!m_holdFinish)
        Q_EMIT processingFinished();
}
