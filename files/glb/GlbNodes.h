#pragma once

#include "files/glb/GlbAttributes.h"
#include "files/glb/GlbCameras.h"
#include "files/glb/GlbFold.h"
#include "files/glb/GlbMeshes.h"
#include "files/glb/GlbPlacement.h"
#include "host/OSGSystem/Node.h"
#include "scene/OccurrenceIds.h"

#include <deque>

namespace files::glb
{

/// The nodes of a file, level by level; the first are the roots.
class GlbNodes
{
public:
    /// Takes `root` and what is active below it, or shown in a variant. `path` is that of the file.
    GlbNodes(const osg::NodePtr& root, const WriteOptions& options, const QString& path);

    const JsonList& list() const { return m_list; }
    /// The entry of the list of scenes.
    const std::string& scene() const { return m_scene; }
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
        GlbFold::Chain chain;      ///< the nodes of the tree; none for a second node of a camera
        osg::Matrix above;         ///< to be applied after the own transform
        Json inner;                ///< for the second node of a transform or a camera: what it consists of
        double scale = 1;          ///< of the space that the node stands in
        double vertexScale = 1;    ///< what vertices and translations are multiplied with
        std::string name;          ///< in the file
        std::string within;        ///< the name of the node of the tree, or of the next one above that has a name
        GlbMeshes::Body naming;    ///< whose material is told by the name; null for others
        unsigned namingNumber = 1; ///< among siblings of that material
        std::string extras;        ///< members of these beside others
        osg::AttributeAttachment::Ptr product; ///< of the part that it belongs to
    };

    void addScene(const osg::NodePtr& frame);
    Step stepOf(const Step& parent, const GlbFold::Chain& chain, const std::optional<std::string>& idStep);
    std::string idOf(const GlbFold::Chain& chain, const std::string& idStep);
    void add(Step step);
    void addContent(const Step& step, Json& json);
    void addCamera(const osg::UberCameraPtr& camera, double scale, Json& json);
    static GlbMeshes::Bodies bodiesOf(const Step& step, const GlbFold::Below& below);
    static std::string meshName(const Step& step, const GlbFold::Below& below);
    osg::Matrix placeOf(Step& step) const;
    void addVariants(const osg::NodePtr& node, Json& json);
    void hide(Json& json);
    osg::GeometryPtr drawnBy(const GlbFold::Chain& chain) const;
    osg::GeometryPtr namingOf(const Step& parent, const GlbFold::Chain& chain) const;
    std::string nameBehind(const Step& step);
    void enqueueFrame(GlbFold::Chain frame);
    std::vector<std::size_t> enqueueChildren(const Step& parent, const GlbFold::Below& below);
    std::size_t enqueue(Step step);

    WriteOptions m_options;
    std::deque<Step> m_queue;
    std::size_t m_enqueued = 0;
    JsonList m_list;
    std::string m_scene;
    GlbVariants m_variants;
    GlbFold m_fold;
    GlbMeshes m_meshes;
    GlbCameras m_cameras;
    GlbAttributes m_attributes;
    osg::OccurrenceSteps m_idSteps;
    bool m_hasHidden = false;
    QStringList m_warnings;
};

} // namespace files::glb
