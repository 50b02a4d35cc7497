#pragma once

#include "host/OSGSystem/FieldContainerPtr.h"
#include "host/OSGSystem/Node.h"

/// How the wrappers of a tree stand to each other.
enum class Wrapping {
    Beside, ///< all below one node, each without a name and with two parts
    Nested, ///< each the only child of the one before it, the last with two parts
    Paired, ///< each the only child of a node of its name, with two parts
};

/// A tree with so many nodes that wrap others and say nothing. All parts draw one triangle.
osg::RefPtr<osg::NodePtr> wrappedTree(Wrapping wrapping, unsigned wrappers);
