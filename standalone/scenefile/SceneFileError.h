#pragma once

#include "standalone/scenefile/SceneFile.h"

#include <QCoreApplication>

#include <variant>

namespace osg::scenefile
{

/// Texts for people, in their language.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(SceneFile)
};

/// Either a value or what went wrong; the error has no file name yet.
template <class T>
using Result = std::variant<T, SceneFileError>;

inline SceneFileError makeError(SceneFileErrorCode code, const QString& message, std::uint64_t offset = 0)
{
    return {code, message, QString(), offset};
}

inline SceneFileError outOfMemory()
{
    return makeError(SceneFileErrorCode::OutOfMemory, Text::tr("There is not enough memory"));
}

/// Counts the objects of each class that are not read or written as they are.
class ClassWarnings
{
public:
    void add(const std::string& className, const std::string& usedInstead);
    /// In the order of the first object of each.
    const std::vector<SceneFileWarning>& all() const { return m_warnings; }

private:
    std::vector<SceneFileWarning> m_warnings;
};

} // namespace osg::scenefile
