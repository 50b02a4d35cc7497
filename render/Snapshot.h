#pragma once

#include "host/OSGSystem/Math.h"
#include "host/OSGSystem/Pointers.h"
#include "render/SnapshotLook.h"
#include "render/SnapshotView.h"

#include <QImage>
#include <QString>
#include <QStringList>

#include <atomic>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace render
{

/// The backdrop: a soft gradient between two display colours, a picture, or nothing.
struct Backdrop {
    osg::Color3f top = {0.975f, 0.980f, 0.985f};    ///< at the upper edge
    osg::Color3f bottom = {0.800f, 0.820f, 0.840f}; ///< at the lower edge
    bool contactShadow = true;  ///< the shadow of the model on a ground below it; the iso view has it
    QImage picture = {};        ///< in place of the colours unless it is null: scaled to cover, the middle kept
    bool isTransparent = false; ///< nothing stands behind the scene, and the picture says how much of it is covered
};

/// What a picture may cost at most.
struct SnapshotLimits {
    int maxSide = 16384;                                     ///< pixels
    std::size_t maxPixels = 100000000;                       ///< pixels
    std::size_t maxParts = 20000000;                         ///< drawn geometries, each use of a shared one counted
    std::size_t maxTexturePixels = std::size_t(1) << 28;     ///< of all textures together; what is beyond is left out
    std::size_t maxEnvironmentPixels = std::size_t(1) << 26; ///< of the environment
};

/// How a picture is made. The same scene and the same options give the same picture, whatever the number of threads.
struct SnapshotOptions {
    int width = 1280;      ///< pixels
    int height = 800;      ///< pixels
    View view = View::Iso; ///< where the eye is, if `eye` does not say otherwise
    /// Looks from here in place of `view`. Nothing is fitted then, and there is no ground.
    std::optional<Eye> eye;
    Backdrop backdrop;                       ///< what stands behind the scene
    SnapshotLook look = SnapshotLook::Plain; ///< how surfaces are drawn
    /// A Radiance picture (.hdr) of the light all around, for the studio look; its upper border is up (+Z), its middle
    /// +X and a quarter to the right of it -Y. Empty for the light of a studio without colours.
    QString environmentFile;
    float margin = 0.06f;    ///< what stays free along each border, as part of the shorter side; from 0, below 0.5
    int samples = 3;         ///< anti-aliasing: `samples` x `samples` rays a pixel, 1 to 16
    int ambientSamples = 18; ///< rays a pixel that look for what darkens it; 0 for none, at most 4096
    /// What is below nodes with this tag is seen before the rest, also where it is behind; nothing is without it.
    std::string inFront;
    bool featureLines = true; ///< thin dark lines at silhouettes, creases and borders of faces; the plain look has them
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
    Environment,   ///< the file of the environment cannot be read; the message says why
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
    QImage image; ///< `QImage::Format_RGB32`, with a transparent backdrop `QImage::Format_ARGB32`; null on an error
    SnapshotError error; ///< false after a success
    /// Geometries that could not be placed, because their transform has values that are not finite.
    std::size_t leftOut = 0;
    /// What the picture lacks, for the user: geometries that were left out, textures that could not be decoded.
    QStringList warnings;
};

/// Draws what is active in the tree at `root`, fitted into the picture or seen from an eye: ray casting on the CPU, no
/// display needed.
///
/// The standard views are parallel projections, the iso view has a mild perspective. In the plain look surfaces have
/// their material's diffuse colour or their vertex colours, are lit from both sides and darkened where they are hidden
/// from the sky, as the mesh tells (`osg::Mesh::occlusion`) or else as rays find; lines and points are thin flat
/// strokes, darkened or lightened where they would not stand out from the backdrop. Triangles with positions that are
/// not finite or with indices out of range are left out. Vertex arrays are read in place. The tree must not change
/// meanwhile.
///
/// In the studio look surfaces are as `osg::PhysicalSurface` and its textures say, times the vertex colours, in the
/// light of an environment, and nothing but that light is drawn of it; sheen is left out, and what is transmitted goes
/// straight on. There is no tone mapping: light of 1 is white.
SnapshotResult renderSnapshot(const osg::NodePtr& root, const SnapshotOptions& options);

/// As `renderSnapshot`, into a PNG file. It is written under another name in the same folder and renamed when complete,
/// so that a half-written picture is never seen and a former one survives an error.
/// @param warnings gets those of the picture; may be null
SnapshotError writeSnapshot(const osg::NodePtr& root, const QString& path, const SnapshotOptions& options,
                            QStringList* warnings = nullptr);

/// What is wrong with a file as `SnapshotOptions::environmentFile`, which it reads as a whole; nothing when it will do.
std::optional<QString> environmentComplaint(const QString& file);

} // namespace render
