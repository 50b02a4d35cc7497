#include "host/znJobProcessing/znOsbLoaderJob.h"

#include "files/scenefile/SceneFile.h"
#include "host/znUtils/znLog.h"
#include "standalone/loading/ReferenceCheck.h"
#include "standalone/loading/SceneExtras.h"
#include "standalone/loading/SceneFilePolicy.h"
#include "standalone/session/Session.h"

znOsbLoaderJob::znOsbLoaderJob(const QString& file) : znAbstractProcessingJob(nullptr), m_file(file) {}

znOsbLoaderJob::~znOsbLoaderJob() = default;

void znOsbLoaderJob::process()
{
    if (!m_holdFinish)
        Q_EMIT started();
    const files::Result<osg::NodePtr> result =
        osg::scenefile::readSceneFile(m_file, zn::loading::sceneFileOptions(zn::Session::current(), m_file));
    const osg::NodePtr root = result ? result.value() : osg::NodePtr();
    m_loadedNode = root;
    m_held = root;
    m_errorText = result ? QString() : result.error().toStringWithCode();
    m_state = result ? znCADFileTypes::JobSucceeded : znCADFileTypes::JobFailed;
    if (!result)
        znLog::error(m_errorText.toUtf8().constData());
    for (const files::Note& warning : result.warnings)
        znLog::error(warning.toString().toUtf8().constData());
    zn::Session* const session = zn::Session::current();
    if (session) {
        zn::loading::dropRefusedReferences(*session, root);
        for (const QString& complaint : zn::takeExtras(*session, root))
            znLog::error((m_file + QStringLiteral(": ") + complaint).toUtf8().constData());
    }
    if (!m_holdFinish)
        Q_EMIT processingFinished();
}
