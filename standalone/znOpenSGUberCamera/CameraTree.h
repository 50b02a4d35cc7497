#pragma once

#include "host/znOpenSGUberCamera/UberCamera.h"

#include <QHash>
#include <QString>

#include <cstdint>
#include <map>
#include <set>
#include <unordered_map>
#include <vector>

namespace zn::cameras
{

/// The cameras of one session: a tree of them beside the scene (camera, tracks, viewpoints), the list that is offered,
/// and the one that the scene is seen through.
class CameraTree
{
public:
    /// A camera that is offered. Neither is kept alive.
    struct Entry {
        unsigned cameraId = 0;
        unsigned nodeId = 0; ///< the node that bears it; 0 when it is not known
    };

    CameraTree();

    /// A group named "Cameras"; its children are cameras, theirs tracks, and theirs viewpoints.
    osg::NodePtr root() const { return m_root; }

    /// Lists `camera` as borne by `node`; a second time changes its node only.
    void list(const osg::UberCameraPtr& camera, const osg::NodePtr& node);
    void unlist(unsigned cameraId);
    /// The entries whose cameras are alive, in the order in which they came.
    std::vector<Entry> entries() const;

    /// The camera with this id, listed or not; null when there is none.
    static osg::UberCameraPtr cameraOf(unsigned cameraId);
    /// The entry of this camera; with the id 0 when it is not listed or gone.
    Entry find(unsigned cameraId) const;
    /// The entry of the viewpoint of this name; with the id 0 when there is none.
    Entry findViewpoint(const QString& name) const;
    /// The camera of this name directly below the root, as a node; null when there is none.
    osg::NodePtr findCamera(const QString& name) const;
    /// Whether a listed camera other than that with the id `exceptId` bears this name.
    bool isTaken(const QString& name, unsigned exceptId) const;
    /// Names `camera`, and the node that bears it.
    void rename(const osg::UberCameraPtr& camera, const QString& name);

    /// The scene is seen through the camera with this id from now on.
    void look(unsigned cameraId) { m_viewId = cameraId; }
    /// Null when none was chosen, or it is gone.
    osg::UberCameraPtr view() const { return cameraOf(m_viewId); }
    /// Where a listed camera stands, by its own transform and those above the node that bears it.
    osg::Matrix placementOf(const osg::UberCameraPtr& camera) const;

private:
    /// A camera that was listed once.
    struct Known {
        Entry entry;
        bool isListed = true;
    };
    /// By number, in the order in which they came.
    using KnownCameras = std::map<std::uint64_t, Known>;

    /// Cameras by name, for the many finds of an import. It follows what is renamed here and is made anew when a camera
    /// was renamed elsewhere.
    struct NameIndex {
        QHash<QString, std::set<std::uint64_t>> numbers;
        std::uint64_t revision = 0;
    };

    const Known* knownOf(unsigned cameraId) const;
    const std::set<std::uint64_t>& numbersOf(const QString& name) const;
    void updateNames() const;

    osg::RefPtr<osg::NodePtr> m_root;
    KnownCameras m_known;
    std::unordered_map<unsigned, std::uint64_t> m_numbers; ///< by camera id
    std::uint64_t m_nextNumber = 0;
    mutable NameIndex m_names;
    unsigned m_viewId = 0;
};

} // namespace zn::cameras
