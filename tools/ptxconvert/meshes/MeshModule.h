#pragma once

#include "files/SceneReader.h"

#include <QString>

#include <cstddef>

namespace ptxconvert
{

/// The readers of mesh files, in a library that the program loads when a host asks for a file of meshes. It finds the
/// scene in the program, so that both have to come from one build.
struct MeshModule {
    const char* version;        ///< that of the program which it belongs to
    std::size_t bytesOfOptions; ///< how the library sees the types that it shares with the program
    std::size_t bytesOfResult;  ///< as above
    files::ReadResult (*read)(const QString& path, const files::ReadOptions& options); ///< as SceneReaders::read
};

constexpr MeshModule meshModuleOf(files::ReadResult (*read)(const QString& path, const files::ReadOptions& options))
{
    return {ZN_VERSION, sizeof(files::ReadOptions), sizeof(files::ReadResult), read};
}

} // namespace ptxconvert

/// What the library exports.
extern "C" __attribute__((visibility("default"))) const ptxconvert::MeshModule* ptxmesh();
