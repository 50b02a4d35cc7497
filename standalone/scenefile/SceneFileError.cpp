#include "standalone/scenefile/SceneFileError.h"

#include <algorithm>

namespace osg
{

const char* sceneFileErrorName(SceneFileErrorCode code)
{
    switch (code) {
    case SceneFileErrorCode::NotFound:
        return "NotFound";
    case SceneFileErrorCode::NotRegular:
        return "NotRegular";
    case SceneFileErrorCode::NotASceneFile:
        return "NotASceneFile";
    case SceneFileErrorCode::UnsupportedVersion:
        return "UnsupportedVersion";
    case SceneFileErrorCode::Truncated:
        return "Truncated";
    case SceneFileErrorCode::DamagedHeader:
        return "DamagedHeader";
    case SceneFileErrorCode::DamagedTable:
        return "DamagedTable";
    case SceneFileErrorCode::WrongChecksum:
        return "WrongChecksum";
    case SceneFileErrorCode::DamagedGraph:
        return "DamagedGraph";
    case SceneFileErrorCode::DamagedMesh:
        return "DamagedMesh";
    case SceneFileErrorCode::LimitExceeded:
        return "LimitExceeded";
    case SceneFileErrorCode::OutOfMemory:
        return "OutOfMemory";
    case SceneFileErrorCode::ReadFailed:
        return "ReadFailed";
    case SceneFileErrorCode::NothingToWrite:
        return "NothingToWrite";
    case SceneFileErrorCode::InvalidMesh:
        return "InvalidMesh";
    case SceneFileErrorCode::CannotCreate:
        return "CannotCreate";
    case SceneFileErrorCode::WriteFailed:
        return "WriteFailed";
    }
    return "Unknown";
}

QString SceneFileError::toString() const
{
    const QString text = scenefile::Text::tr("%1: %2 (%3 at byte %4)");
    return text.arg(file, message, QString::fromLatin1(sceneFileErrorName(code)), QString::number(offset));
}

QString SceneFileWarning::message() const
{
    const QString name = QString::fromStdString(className);
    if (usedInstead.empty())
        return scenefile::Text::tr("%1 objects of the class %2 were left out").arg(count).arg(name);
    return scenefile::Text::tr("%1 objects of the class %2 were taken as %3")
        .arg(QString::number(count), name, QString::fromStdString(usedInstead));
}

namespace scenefile
{

void ClassWarnings::add(const std::string& className, const std::string& usedInstead)
{
    const auto same = [&](const SceneFileWarning& w) {
        return w.className == className && w.usedInstead == usedInstead;
    };
    auto place = std::find_if(m_warnings.begin(), m_warnings.end(), same);
    if (place == m_warnings.end())
        place = m_warnings.insert(place, {className, usedInstead, 0});
    ++place->count;
}

} // namespace scenefile

} // namespace osg
