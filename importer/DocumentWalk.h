#pragma once

#include "cad/xml/CADDocument.h"
#include "host/OSGSystem/Node.h"

#include <functional>

namespace importer
{

/// A part of a PLMXML document at one of its places in the tree that was made of the document.
struct DocumentPlace {
    osg::NodePtr node;                                       ///< of the part
    const HB::XML::CAD::CADPart* part = nullptr;             ///< of the document's model
    const HB::XML::CAD::CADInstance* instance = nullptr;     ///< null for a part at the root
    const HB::XML::CAD::CADOccurrence* occurrence = nullptr; ///< that speaks of this place; null without one
    osg::NodePtr material;   ///< the leaf group that the instance or its occurrence brought; null without one
    bool isOverride = false; ///< the group is the occurrence's
    unsigned level = 0;      ///< how many parts are around it
    /// The first children of the node, for its shapes; behind them stand those for instances, and in the end the file
    /// of a solid.
    unsigned ownChildren = 0;
};

/// Finds the places of `document` in `root`, the tree that the loader made of it, before the tree changes: goes the way
/// that the loader went. A place comes before those within it.
/// @return false when the tree is not that of the document; what was visited until then is
bool walkDocument(const HB::XML::CAD::CADDocument& document, const osg::NodePtr& root,
                  const std::function<void(const DocumentPlace&)>& visit);

} // namespace importer
