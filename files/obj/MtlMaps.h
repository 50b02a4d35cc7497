#pragma once

#include "host/OSGSystem/PhysicalSurface.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <string_view>

namespace files::obj
{

/// A statement of a material library that names a picture.
struct MtlMap {
    QString statement;      ///< its keyword, as the library has it
    QString file;           ///< as the library has it
    osg::Texture placement; ///< how the picture lies, without it
    float multiplier = 1;   ///< of bumps, `-bm`
    char channel = 0;       ///< of `-imfchan`: r, g, b, m (matte), l (luminance) or z; 0 where nothing is said
    QStringList leftOut;    ///< options that change the picture and have no counterpart
    std::uint64_t line = 0; ///< of the library
};

/// The map that `statement` is, without its keyword: options, and the name of a file, which may have blanks. Nothing
/// when an option misses its values or when there is no name.
std::optional<MtlMap> mapOf(std::string_view statement);

} // namespace files::obj
