#pragma once

#include "files/Expected.h"

#include <QCoreApplication>

#include <cstdint>

namespace osg::scenefile
{

/// Texts for people, in their language.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(SceneFile)
};

/// The place of a byte.
inline QString bytePlace(std::uint64_t offset)
{
    return Text::tr("byte %1").arg(offset);
}

/// An error that has no file name yet.
inline files::Error makeError(files::ErrorCode code, const QString& message, std::uint64_t offset = 0)
{
    return {{message, {}, bytePlace(offset)}, code};
}

inline files::Error outOfMemory()
{
    return makeError(files::ErrorCode::OutOfMemory, Text::tr("There is not enough memory"));
}

} // namespace osg::scenefile
