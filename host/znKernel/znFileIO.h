#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"

#include <QString>

#include <vector>

/// Reads files that the host knows by itself into the scene graph.
class ZN_HOST_EXPORT znFileIO
{
public:
    /// What `load` returns when every file went fully well.
    static constexpr int LoadedFully = 131003;
    /// What it returns when some of several files failed.
    static constexpr int LoadedInPart = 1;

    /// The result of one load of one file.
    class ZN_HOST_EXPORT loadedS
    {
    public:
        /// Stands for `node` without holding it; null for a load without a tree.
        explicit loadedS(const osg::NodePtr& node);
        /// The root of the tree that came from the file; null when there was none, or it is gone.
        osg::NodePtr getNode() const;

    private:
        unsigned m_nodeId;
    };

    /// Reads `files` and hangs the tree of each under `parent`. Each brings one plain group as its own root. With a
    /// null `parent` the trees stand alone: nobody holds a reference on them, and whoever wants one takes it from the
    /// list.
    /// @param sceneWasEmpty whether this is the first load of the scene; the open host has no views to fit
    /// @param merge reserved for hosts that merge a load into what is there; the open host never does
    /// @param select whether what was loaded becomes the selection
    /// @return 131003 when every file was read, 0 when none was, another number otherwise; the log tells why, and also
    ///         what was left out of a file that was read
    static int load(const std::vector<QString>& files, osg::NodePtr parent, bool sceneWasEmpty, bool merge,
                    bool select);

    /// One entry for each file loaded so far; the last one belongs to the latest load.
    static const std::vector<loadedS>& getLoadedGeometriesList();

    /// Whether the user wants uber materials in place of the simple ones that files bring.
    static bool getConvertToUberMaterials();
    /// Puts an uber material of the same look and name in place of each simple one at and below `root`. One that is
    /// used in several places stays one; materials of other classes stay.
    static void convertToUberMaterials(const osg::NodePtr& root);

    /// Whether the solid-geometry kernel is in use: imported trees keep their meshes, and get ambient occlusion data.
    static bool getUseGSK();

    /// Moves an imported tree that hangs in the scene to where the user wants it. Its root gets the transform, in place
    /// of a plain group if it is one. A tree without vertices stays where it is.
    /// @param path the file that it came from
    /// @param reserved no use in the open host
    /// @param centerInOrigin the middle of its bounding box comes to the origin
    /// @param putOnGround its lowest point comes to the height 0, whatever `centerInOrigin` says of the height
    static void applyGeometryImportTransformations(const osg::NodePtr& root, const QString& path, bool reserved,
                                                   bool centerInOrigin, bool putOnGround);
};
