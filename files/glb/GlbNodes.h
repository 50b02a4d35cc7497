#pragma once

#include "files/glb/GlbAttributes.h"
#include "files/glb/GlbCameras.h"
#include "files/glb/GlbMeshes.h"
#include "files/glb/GlbPlacement.h"
#include "host/OSGSystem/Node.h"
#include "scene/OccurrenceIds.h"

#include <deque>

namespace files::glb
{

/// The nodes of a file, level by level; the first is the root.
class GlbNodes
{
public:
    /// Takes `root` and what is active below it, or shown in a variant.
    GlbNodes(const osg::NodePtr& root, const WriteOptions& options);

    const JsonList& list() const { return m_list; }
    const GlbMeshes& meshes() const { return m_meshes; }
    const GlbCameras& cameras() const { return m_cameras; }
    const GlbVariants& variants() const { return m_variants; }
    const GlbAttributes& attributes() const { return m_attributes; }
    /// Some node is in the file though it is not shown at present.
    bool hasHidden() const { return m_hasHidden; }
    QStringList warnings() const { return m_warnings + m_meshes.warnings(); }

private:
    /// An entry of the list to come. Entries are numbered as they are put into the queue.
    struct Step {
        osg::NodePtr node;         ///< null for a second node of a camera
        osg::MaterialPtr material; ///< of the topmost material group above
        osg::Matrix above;         ///< to be applied after the own transform
        Json inner;                ///< for the second node of a transform or a camera: what it consists of
        double scale = 1;          ///< of the space that the node stands in
        std::string extras = {};   ///< members of these beside others
    };

    void add(Step step);
    void addContent(const Step& step, Json& json);
    void addCamera(const osg::UberCameraPtr& camera, double scale, Json& json);
    std::string extrasOf(const osg::NodePtr& node, const std::string& idStep);
    void addVariants(const osg::NodePtr& node, Json& json);
    void addChildren(const Step& step, Json& json);
    std::size_t enqueue(Step step);

    std::deque<Step> m_queue;
    std::size_t m_enqueued = 0;
    JsonList m_list;
    GlbVariants m_variants;
    GlbMeshes m_meshes;
    GlbCameras m_cameras;
    GlbAttributes m_attributes;
    osg::OccurrenceSteps m_idSteps;
    bool m_hasHidden = false;
    QStringList m_warnings;
};

} // namespace files::glb
