#include "tools/ptxconvert/meshes/MeshModule.h"

#include "files/meshes/MeshReaders.h"

const ptxconvert::MeshModule* ptxmesh()
{
    static const ptxconvert::MeshModule module =
        ptxconvert::meshModuleOf([](const QString& path, const files::ReadOptions& options) {
            return files::meshes::meshReaders().read(path, options);
        });
    return &module;
}
