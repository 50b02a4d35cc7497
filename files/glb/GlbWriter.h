#pragma once

#include "files/Expected.h"
#include "files/glb/gathering/GatherOptions.h"
#include "files/glb/levels/LevelOptions.h"
#include "files/glb/packing/PackOptions.h"
#include "host/OSGSystem/Node.h"

#include <QString>

#include <cstdint>
#include <vector>

/// Writes trees as binary glTF 2.0 files.
///
/// The file is in metres and Y up, as glTF asks, unless the options say otherwise: one matrix at its top node turns
/// millimetres and Z up into that, and no vertex changes; the frame of a glTF file that was read, which did the
/// opposite, becomes the scene. A file of another unit or axis tells it in `asset.extras` as
/// `metresPerUnit` and `upAxis`. A geometry core becomes one mesh however many nodes share it, and arrays that
/// geometries share are written once. A node draws the geometries below it that have no name or facts of their own. A
/// mesh is named after its geometry, else after the product; a node that would bear the name of the node above it after
/// its material too ("bolt · steel"). Materials become metallic-roughness ones, with
/// their textures; each image is in the file once. Display colours become linear ones, normals unit vectors. Lines and
/// points become primitives of their own modes.
///
/// Variants that the root carries (`osg::VariantAttachment`) become `KHR_materials_variants`, one variant a set;
/// `asset.extras.variantSets` tells groups and viewpoints, and `extras.variants` of a node the sets that show
/// (true) or hide it. Cameras become cameras, each in a node below its own.
///
/// Inactive nodes are left out with what hangs below them, but those that a variant shows or hides, which are marked by
/// `KHR_node_visibility` and written as `WriteOptions::hidden` says. A reference whose content is not loaded becomes an
/// empty node with the path in `extras.externalReference`. A shearing transform becomes two nodes, because glTF knows
/// only rotation and scale. Face ranges, B-rep data, tags and other attachments are not written.
///
/// Attributes become `extras`: those of products stand once, in the list `extras.products` of the file, and
/// `extras.product` of a node is the index of its product; those of an occurrence are `extras.attributes` of its node,
/// those of a material of the material. `extras.step` of a node is its step in `osg::OccurrenceIds` where that is not
/// its name, or "-" without one.
namespace files::glb
{

/// The axis of a file that points up.
enum class UpAxis {
    Y, ///< as glTF asks
    Z  ///< as CAD data has it
};

/// What becomes of nodes that are hidden at present and shown in a variant. Viewers that do not know
/// `KHR_node_visibility` draw all that they find.
enum class Hidden {
    Shrink,  ///< to a millionth of their size; `extras.shown` tells the transform that they have when they are shown
    Keep,    ///< nothing: they stay as they are
    LeaveOut ///< they are not written, which a warning tells
};

/// What becomes of the pictures on materials.
enum class Textures {
    Embed,    ///< they are in the file
    External, ///< they stand beside it, in files whose names begin with the name of the file
    None      ///< they are left out
};

/// How to write.
struct WriteOptions {
    /// The length unit of the file. glTF asks for metres; whoever reads a file of another unit has to know it.
    double millimetresPerUnit = 1000;
    /// The axis that points up in the file. glTF asks for Y.
    UpAxis upAxis = UpAxis::Y;
    /// Makes one node of those that stand alone below another and say nothing there: no place, no attributes, no other
    /// name. Off, each node of the tree is one of the file.
    bool fold = true;
    /// Tells the variants that the root carries. Off, the file is what the scene shows now, which every viewer shows.
    bool variants = true;
    /// Darkens the vertex colours of meshes with `osg::Mesh::occlusion` by it, or gives them such colours.
    bool occlusionAsColors = false;
    Hidden hidden = Hidden::Shrink; ///< what viewers without `KHR_node_visibility` would draw
    /// Writes vertices in the unit of the file, and transforms without scale: lengths that a transform scales, by its
    /// first axis, are scaled in the vertices below it. A mesh that is seen in several sizes is written in each.
    bool scaleIntoVertices = false;
    /// Adds the edges of triangles (`osg::featureEdges`) to each mesh, as dark lines over the same vertices.
    /// `extras.edges` of such a primitive lists them, each as how many segments it has and the two faces between which
    /// it is, -1 for none; `extras.faces` of the triangles tells how many of them each face has, unless they are
    /// reordered.
    bool edges = false;
    Textures textures = Textures::Embed; ///< where the pictures of materials are
    /// Pixels: pictures with a longer side are made smaller; 0 for none. KTX2 and DDS pictures stay as they are.
    int mostTextureSide = 0;
    PackOptions packing;     ///< what makes the file smaller
    GatherOptions gathering; ///< what makes it quicker to draw
    LevelOptions levels;     ///< what makes triangles fewer
};

/// Numbers of a level of detail of a complete file, with the finest meshes for the first one.
struct WrittenLevel {
    QString path;                ///< of the file that has it
    std::uint64_t triangles = 0; ///< of all meshes, a shared one counted once
    /// How far surfaces are from what they were before `LevelOptions::simplify`, in millimetres of the scene. Measured
    /// in both directions from points on the triangles that are about as close as vertices are.
    double error = 0;
};

/// Numbers of a complete file.
struct Written {
    std::uint64_t bytes = 0;  ///< the size of the file
    std::uint64_t nodes = 0;  ///< nodes in the file
    std::uint64_t meshes = 0; ///< meshes in the file, a shared one counted once
    double error = 0;         ///< how far a vertex may have been moved by packing, in millimetres of the scene
    /// What `WriteOptions::levels` came to, the finest level first; empty when they are off.
    std::vector<WrittenLevel> levels;
    std::uint64_t trianglesBefore = 0; ///< of all meshes before `LevelOptions::simplify`; 0 when `levels` is empty
    /// How many levels of meshes there are not: they would not have had a tenth fewer triangles than the one before.
    std::uint64_t levelsLeftOut = 0;
};

/// Writes `root` and what hangs below it to `path`. What stood there before is replaced at one stroke when the new file
/// is complete; on failure it stays as it was and nothing new is left in the folder. The same goes for the files of
/// levels beside it, all of which come or none. Throws nothing. The warnings tell
/// what is not in the file as it is in the tree.
files::Result<Written> write(const osg::NodePtr& root, const QString& path, const WriteOptions& options = {});

} // namespace files::glb
