#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"
#include "host/znOpenSGUtils/znNodePtr.h"

#include <string>
#include <vector>

/// What the host knows of single nodes. A null node has no property.
class ZN_HOST_EXPORT znNodeUtils
{
public:
    /// The node itself is locked against changes.
    static bool getLock(const osg::NodePtr& node);
    /// An ancestor of the node is locked; the node's own lock does not count.
    static bool hasLockedParent(const osg::NodePtr& node);
    /// The node is the root of an asset that is not open for editing.
    static bool isUneditedAssetRoot(const osg::NodePtr& node);

    /// The tags of `node` in their order.
    static std::vector<std::string> getTags(const osg::NodePtr& node);
    /// Whether one of the tags of `node` is this text, to the letter.
    static bool hasTag(const osg::NodePtr& node, const std::string& tag);
    /// Takes every tag with this text away. A node without it is not touched.
    static void removeTag(const osg::NodePtr& node, const std::string& tag);
    /// Takes every tag away whose text is among `tags`. A node without any of them is not touched.
    static void removeTags(const osg::NodePtr& node, const std::vector<std::string>& tags);
    /// Appends the nodes with this tag at and below `root`, a parent before its children.
    static void getNodesWithTag(const osg::NodePtr& root, const std::string& tag, std::vector<znNodePtr>& nodes);

    /// The material that the core of `node` holds: that of a material group, or of what is drawn. Null when it holds
    /// none; what a group above gives is not looked at.
    static osg::MaterialPtr getMaterial(const osg::NodePtr& node);
    /// Gives `material` to the core of `node`, within the bracket of its field. Nodes that share the core get it too.
    /// @param below to what hangs below `node` as well
    /// @param asCopy each core gets a copy of its own
    /// @return whether a core was changed; a core that cannot hold a material is not
    static bool setMaterial(const osg::NodePtr& node, const osg::MaterialPtr& material, bool below, bool asCopy);

    /// The name as a UTF-8 text, empty for a node without one. Valid until the name changes.
    static const char* getName(const osg::NodePtr& node);
    /// Names `node` with a UTF-8 text; null or an empty one takes the name away. With `keep` a name that is there
    /// stays.
    /// @param formerName receives the name that the node had before, empty if none; may be null
    static void setName(const osg::NodePtr& node, const char* name, bool keep, std::string* formerName);

    /// Says on `node` which file the tree below it comes from, and of which format. Null leaves what is there as it is.
    static void setFileInfo(const osg::NodePtr& node, const char* fileName, const char* format);

    /// Takes the vertex colours away from all geometries at and below `root`, so that materials alone give the colour.
    static void removeVertexColors(const osg::NodePtr& root);
    /// Makes the arrays of all geometries at and below `root` fit together, and tells the user of each geometry that
    /// did not: triangles, lines and points that name a vertex which is not there are taken away, face ranges follow;
    /// values of vertices that are too many are cut off, arrays that are too short are dropped. Sound geometries are
    /// not touched.
    static void verifyIndexMap(const osg::NodePtr& root);
    /// Keeps with each vertex at and below `root` how much of the sky over its surface it sees past all active geometry
    /// of the tree. A geometry that is used in several places gets the mean of them, so that it stays shared. Values
    /// that are there are replaced. A failure of the ray tracer is told to the user and leaves everything as it was.
    static void addAmbientOcclusionData(const osg::NodePtr& root);

    /// Makes the transform of `node` one that the host's tools move, with the same matrix, name and attachments. Nodes
    /// that shared the old core share the new one once each has been converted. References, cameras and transforms that
    /// are of that kind already are left alone.
    /// @return whether the core was exchanged
    static bool convertTransformToTransform3D(const osg::NodePtr& node);

    /// Takes the node out of its tree and out of the host's own hands; it is gone unless somebody holds it.
    static void destroy(const osg::NodePtr& node);
};
