#pragma once

#include "scene/Mesh.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace zn::tessellation
{

/// What meshes surfaces, and for how long.
struct TessellationProgram {
    QString path;              ///< of the program; empty for the one that is installed
    double secondsLimit = 600; ///< for one run of it; 0 for no limit
    QStringList options = {};  ///< further ones
};

/// What a mesh shall be like; lengths in millimetres.
struct TessellationWish {
    double chordDeviation = 0.1;
    double normalTolerance = 15; ///< degrees
    double maxChordLength = 0;   ///< 0 for any
    double stitchTolerance = 0;  ///< 0 for no stitching
};

/// One surface and what became of it.
struct TessellationTask {
    osg::Buffer<std::byte> brep;
    std::shared_ptr<const osg::Mesh> mesh; ///< null when there is none
    QString reason;                        ///< why there is none
};

/// Meshes the surfaces of `tasks` in a child process, all in one run. When it dies, those that were at work are tried
/// again one at a time and the others in another run, so that a damaged surface costs no other its mesh. Files lie in
/// a folder of its own below `folder` and are gone when it returns.
void runTessellation(std::vector<TessellationTask>& tasks, const TessellationWish& wish,
                     const TessellationProgram& program, const QString& folder);

} // namespace zn::tessellation
