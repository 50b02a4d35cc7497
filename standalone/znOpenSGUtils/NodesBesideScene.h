#pragma once

#include "host/OSGSystem/Node.h"

namespace zn::nodes
{

/// Nodes that the host keeps itself, beside the tree of the scene. Null until they are made.
struct NodesBesideScene {
    osg::RefPtr<osg::NodePtr> materialPool;
    osg::RefPtr<osg::NodePtr> environmentSwitch; ///< what stands around the scene
};

/// Those of the living session.
NodesBesideScene& nodesBesideScene();

/// The node whose core is the scene's pool of materials. Null when there is none and `create` is false.
osg::NodePtr poolOfScene(bool create);

/// The first node at or below `root` whose core is a pool of materials; null when there is none.
osg::NodePtr materialPoolBelow(const osg::NodePtr& root);

} // namespace zn::nodes
