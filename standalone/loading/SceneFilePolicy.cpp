#include "standalone/loading/SceneFilePolicy.h"

#include "files/SceneReader.h"
#include "standalone/session/Session.h"

#include <QFileInfo>

#include <algorithm>

namespace zn::loading
{

bool isMapped(Session* session, const QString& file)
{
    using Files = FileSettings::MappedFiles;
    if (!session)
        return false;
    const Files which = session->settings().files.map;
    const QString folder = QFileInfo(session->temporaryFolder()).canonicalFilePath() + QLatin1Char('/');
    return which == Files::All || (which == Files::Own && QFileInfo(file).canonicalFilePath().startsWith(folder));
}

osg::scenefile::SceneFileReadOptions sceneFileOptions(bool isMapped, std::uint64_t memory)
{
    constexpr std::uint64_t memoryOfContainer = 256;
    osg::scenefile::SceneFileReadOptions options;
    options.copyIntoMemory = !isMapped;
    options.maxContainers = std::min(options.maxContainers, memory / memoryOfContainer);
    options.maxTextBytes = std::min(options.maxTextBytes, memory);
    if (!isMapped)
        options.maxFileBytes = std::min(options.maxFileBytes, memory);
    return options;
}

osg::scenefile::SceneFileReadOptions sceneFileOptions(Session* session, const QString& file)
{
    const std::uint64_t memory =
        session ? std::uint64_t(session->settings().read.memory.value()) << 20 : files::ReadLimits().maxMemory;
    return sceneFileOptions(isMapped(session, file), memory);
}

} // namespace zn::loading
