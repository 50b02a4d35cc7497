#pragma once

#include "host/OSGSystem/Math.h"
#include "ptx/model/Appearance.h"
#include "ptx/model/View.h"
#include "scene/Mesh.h"

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// What a reader makes of a file, whatever its format: products that contain each other, and the meshes of their
/// bodies. Texts are UTF-8, lengths millimetres. A product that is used many times is held once.
namespace ptx::model
{

/// The part of a body that has one appearance and is shown by the same views.
struct Piece {
    int appearance = NoAppearance; ///< none: that of the product or occurrence
    std::shared_ptr<const osg::Mesh> mesh;
    int views = AlwaysShown; ///< number of the set of views that show it
};

/// What the exact surfaces of a body measure; 0 where it was not asked for or there is nothing to measure.
struct ExactMeasures {
    double area = 0;   ///< in mm2
    double volume = 0; ///< in mm3
};

/// The geometry of a product.
struct Body {
    std::vector<Piece> pieces;
    ExactMeasures measures = {};
};

/// What is drawn beside a product to tell of it: a dimension, a tolerance, a note. It is not part of its shape.
struct Callout {
    std::string name;                    ///< may be empty
    std::vector<std::string> tags;       ///< as files/scenefile/ConvertedTree.h words them
    std::vector<Piece> pieces;           ///< each with an appearance of its own, which nothing around it overrides
    std::vector<std::size_t> views = {}; ///< numbers of the views that show it, rising
};

inline constexpr std::size_t NotCopied = static_cast<std::size_t>(-1);

/// A product at its place.
struct Occurrence {
    std::size_t product = 0;
    std::string name; ///< may be empty
    osg::Matrix placement;
    int appearance = NoAppearance; ///< overrides whatever hangs below
    bool isVisible = true;
    std::vector<std::string> tags; ///< as files/scenefile/ConvertedTree.h words them
    /// Occurrences of one number head copies of one tree, that of a part file: each root of such a file has its own.
    std::size_t copied = NotCopied;
};

inline constexpr std::size_t NoBody = static_cast<std::size_t>(-1);

/// A part, an assembly, or both.
struct Product {
    std::string name; ///< may be empty
    std::vector<Occurrence> children;
    std::size_t body = NoBody;
    int appearance = NoAppearance; ///< of what has none of its own
    std::vector<std::string> tags;
    std::vector<std::string> externalNames; ///< names of the file that holds its geometry, as written, best first
    std::vector<Callout> callouts = {};     ///< hidden at first, but for those of the view at opening
};

/// An appearance for one occurrence deep in the tree: it holds where the product of each step contains the next.
struct PathOverride {
    std::vector<std::pair<std::size_t, std::size_t>> path; ///< product and the number of its child, outermost first
    int appearance = NoAppearance;
};

/// A product that stays in a file of its own.
struct Reference {
    std::size_t product = 0;
    std::string file;    ///< absolute path; empty for a file that must not be followed
    std::string written; ///< as the CAD file names it
};

struct Model {
    AppearanceTable appearances;
    std::vector<Product> products;
    std::vector<Occurrence> roots;
    std::vector<Body> bodies;
    std::vector<PathOverride> overrides;
    std::vector<Reference> references;
    std::vector<std::string> tags; ///< of the file as a whole
    std::size_t copiedTrees = 0;   ///< how many numbers `Occurrence::copied` has taken
    std::vector<View> views;
    std::vector<std::vector<std::size_t>> viewSets; ///< numbers of views, rising
};

} // namespace ptx::model
