#pragma once

#include "host/OSGSystem/AttachmentContainer.h"

#include <array>
#include <string>
#include <vector>

namespace osg
{

/// What remains of the space when it is cut: the points with x * [0] + y * [1] + z * [2] + [3] >= 0. The first three
/// are a unit vector, the last one is in millimetres.
using HalfSpace = std::array<float, 4>;

/// What a saved view says beside what a camera can hold. It is told by tags, on the node of the bookmark in the space
/// of the model, and on the camera in its own, where it stays when the bookmark has become a viewpoint.
struct ViewFacts {
    float aspect = 0;                ///< width of the view's window by its height; 0: not known
    std::vector<HalfSpace> sections; ///< each cuts what the others have left
    /// What is drawn to tell of the parts is seen before all of them, as a view has it that does not remove what is
    /// hidden.
    bool areAnnotationsInFront = false;
};

/// The tags that say `facts`.
std::vector<std::string> tagsFor(const ViewFacts& facts);

/// What the tags of `container` say; a tag that cannot be read says nothing.
ViewFacts viewFactsOf(const AttachmentContainerPtr& container);

} // namespace osg
