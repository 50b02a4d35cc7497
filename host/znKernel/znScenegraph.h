#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/OSGSystem/Node.h"
#include "host/znOpenSGUtils/znNodePtr.h"

#include <vector>

/// The scene of the host.
class ZN_HOST_EXPORT znScenegraph
{
public:
    /// True while nothing hangs below the root.
    static bool isEmpty();
    /// The node at the top of the scene; never null, and the same as long as the session lives.
    static osg::NodePtr getRoot();
    /// Null when nothing is selected.
    static osg::NodePtr getSelectedNode();
    /// The materials of the scene; never null.
    static osg::MaterialPoolPtr getMaterialPool();

    /// Reads the file that the `osg::ExtReference` core of `reference` names (its source file, otherwise its smart
    /// file) and hangs what it holds below `reference`, whose core then has the state 2. The root of the file's tree
    /// goes when it only groups or names the file; its children take its place. When the file cannot be read, nothing
    /// changes.
    /// @param loaded becomes `reference` on success
    /// @param contents on success, each node that now hangs below `reference` and came from the file is appended
    /// @param replace what hangs below `reference` goes first
    /// @param merge reserved for hosts that merge a load into what is there; the open host never does
    /// @param select `reference` becomes the selection
    /// @return whether the file was read; the log tells why it was not
    static bool reloadFromFile(const osg::NodePtr& reference, osg::NodePtr& loaded, std::vector<osg::NodePtr>& contents,
                               bool replace, bool merge, bool select);

    /// The node that carries what stands around the scene (its ground), beside the tree of the scene; null while there
    /// is none.
    static osg::NodePtr environmentGeometrySwitch();
    /// Makes a new switch, inactive, in place of the one that is there.
    /// @param content what it carries; null for a ground of the scene's size at its lowest point
    /// @return the new switch
    static osg::NodePtr createEnvironmentGeometrySwitch(const osg::NodePtr& content);

    /// What `unshareNode` copies.
    enum DuplicateBehaviour {
        DuplicateCores = 0, ///< the contents of the nodes
    };

    /// Gives `node` a content of its own where other nodes have it too. Vertices stay shared until one of them changes.
    /// @param recursive what hangs below `node` as well
    /// @param keepMaterials materials stay shared; otherwise each new content gets a copy of its material
    /// @return `node`
    static znNodePtr unshareNode(const osg::NodePtr& node, DuplicateBehaviour behaviour, bool recursive,
                                 bool keepMaterials);
};
