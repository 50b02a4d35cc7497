#pragma once

#include "host/OSGSystem/Math.h"
#include "host/OSGSystem/Pointers.h"
#include "render/SnapshotView.h"

#include <QImage>
#include <QString>

#include <atomic>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace render
{

/// The backdrop: a soft gradient between two display colours.
struct Backdrop {
    osg::Color3f top = {0.975f, 0.980f, 0.985f};    ///< at the upper edge
    osg::Color3f bottom = {0.800f, 0.820f, 0.840f}; ///< at the lower edge
    bool contactShadow = true; ///< the shadow of the model on a ground below it; the iso view has it
};

/// What a picture may cost at most.
struct SnapshotLimits {
    int maxSide = 16384;               ///< pixels
    std::size_t maxPixels = 100000000; ///< pixels
    std::size_t maxParts = 20000000;   ///< drawn geometries, each use of a shared one counted
};

/// How a picture is made. The same scene and the same options give the same picture, whatever the number of threads.
struct SnapshotOptions {
    int width = 1280;      ///< pixels
    int height = 800;      ///< pixels
    View view = View::Iso; ///< where the eye is, if `eye` does not say otherwise
    /// Looks from here in place of `view`. Nothing is fitted then, and there is no ground.
    std::optional<Eye> eye;
    Backdrop backdrop;       ///< what stands behind the scene
    float margin = 0.06f;    ///< what stays free along each border, as part of the shorter side; from 0, below 0.5
    int samples = 3;         ///< anti-aliasing: `samples` x `samples` rays a pixel, 1 to 16
    int ambientSamples = 18; ///< rays a pixel that look for what darkens it; 0 for none, at most 4096
    /// What is below nodes with this tag is seen before the rest, also where it is behind; nothing is without it.
    std::string inFront;
    bool featureLines = true; ///< thin dark lines at silhouettes, creases and borders of faces
    int threads = 0;          ///< 0 for one a core
    SnapshotLimits limits;    ///< a picture beyond them is refused

    /// Called on the calling thread with the part that is done, from 0 to 1, never falling.
    std::function<void(double)> progress;
    /// Looked at between small pieces of work (a row of a tile, a step of the ray tracer's build); may be null.
    const std::atomic<bool>* cancel = nullptr;
};

/// Why there is no picture.
enum class SnapshotFault {
    None,          ///< there is a picture
    BadOptions,    ///< an option is out of its range, or a limit is exceeded
    NothingToDraw, ///< no active geometry with a visible point
    Cancelled,     ///< the caller asked for it
    OutOfMemory,   ///< memory ran out
    RayTracer,     ///< the ray tracer reported an error; the message has its text
    NotWritten,    ///< the picture could not be written to its file
};

/// What went wrong, as a value.
struct SnapshotError {
    SnapshotFault fault = SnapshotFault::None; ///< what kind of fault it is
    QString message;                           ///< the cause, for the user
    QString file;                              ///< the file concerned, empty when there is none

    /// Whether something went wrong.
    explicit operator bool() const { return fault != SnapshotFault::None; }
};

/// A picture, or the reason why there is none.
struct SnapshotResult {
    QImage image;        ///< `QImage::Format_RGB32`; null on an error
    SnapshotError error; ///< false after a success
    /// Geometries that could not be placed, because their transform has values that are not finite.
    std::size_t leftOut = 0;
};

/// Draws what is active in the tree at `root`, fitted into the picture or seen from an eye: ray casting on the CPU, no
/// display needed.
///
/// The standard views are parallel projections, the iso view has a mild perspective. Surfaces have their material's
/// diffuse colour or their vertex colours, are lit from both sides and darkened where they are hidden from the sky, as
/// the mesh tells (`osg::Mesh::occlusion`) or else as rays find; lines and points are thin flat strokes, darkened or
/// lightened where they would not stand out from the backdrop. Triangles with positions that are not finite or with
/// indices out of range are left out. Vertex arrays are read in place. The tree must not change meanwhile.
SnapshotResult renderSnapshot(const osg::NodePtr& root, const SnapshotOptions& options);

/// As `renderSnapshot`, into a PNG file. It is written under another name in the same folder and renamed when complete,
/// so that a half-written picture is never seen and a former one survives an error.
SnapshotError writeSnapshot(const osg::NodePtr& root, const QString& path, const SnapshotOptions& options);

} // namespace render
