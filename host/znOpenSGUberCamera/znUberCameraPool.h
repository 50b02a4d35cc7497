#pragma once

#include "host/znOpenSGUberCamera/UberCamera.h"

#include <cstddef>

/// The cameras that the host offers to its users. It keeps no camera alive: one that is destroyed leaves it.
///
/// Cameras of a loaded file are added when the file is loaded, at the place that they have in its tree.
class ZN_HOST_EXPORT znUberCameraPool
{
public:
    /// The only one; never null. It lists the cameras of the session that is alive when it is called.
    static znUberCameraPool* the();

    /// The camera of the pool with this container id; null when there is none.
    static osg::UberCameraPtr get(unsigned id);

    /// Adds `camera`; null is ignored, and a camera is listed once. With a `parent`, a new last child of it gets the
    /// camera as its core.
    void add(const osg::UberCameraPtr& camera, const osg::NodePtr& parent);
    /// Takes `camera` off the list. Its nodes stay where they are.
    void remove(const osg::UberCameraPtr& camera);

    /// How many living cameras it lists.
    std::size_t getNumCameras() const;
};
