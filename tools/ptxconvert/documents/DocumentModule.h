#pragma once

#include "ptx/conversion/DocumentReading.h"

#include <cstddef>

namespace ptxconvert
{

/// The reader of product structures, in a library that the program loads when a host asks for one. Both have to come
/// from one build.
struct DocumentModule {
    const char* version;       ///< that of the program which it belongs to
    std::size_t bytesOfResult; ///< how the library sees the type that it shares with the program
    /// As ptx::conversion::DocumentReader.
    ptx::conversion::ReadDocument (*read)(const QString& document, const QStringList& words);
};

} // namespace ptxconvert

/// What the library exports.
extern "C" __attribute__((visibility("default"))) const ptxconvert::DocumentModule* ptxplmxml();
