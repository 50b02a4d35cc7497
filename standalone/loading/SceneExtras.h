#pragma once

#include "host/OSGSystem/Node.h"

#include <QStringList>

namespace zn
{

class Session;

/// What a session keeps beside its scene, hung below the root of the scene for as long as this object lives, so that
/// a writer of files finds it there: the variants as `osg::VariantAttachment`, the cameras as the last child, a group
/// with the tag `camerasTag`.
class SceneWithExtras
{
public:
    /// The tag of the group that holds the cameras.
    static constexpr const char* camerasTag = "zn::cameras";

    /// Hangs the extras in. `session` must outlive this.
    explicit SceneWithExtras(Session& session);
    ~SceneWithExtras();
    SceneWithExtras(const SceneWithExtras&) = delete;
    SceneWithExtras& operator=(const SceneWithExtras&) = delete;

    /// The root of the scene, with the extras.
    osg::NodePtr root() const { return m_root; }

private:
    osg::NodePtr m_root;
    osg::NodePtr m_cameras;
    bool m_hasVariants = false;
};

/// Takes over what a loaded tree brings beside its parts: its variants and its cameras leave the tree for the session,
/// and every camera in it enters the pool. A viewpoint of a known name is dropped: the one that is there wins.
/// Null is ignored. Gives a sentence for each thing that did not fit.
QStringList takeExtras(Session& session, const osg::NodePtr& root);

} // namespace zn
