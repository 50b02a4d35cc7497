#pragma once

#include "host/OSGSystem/Node.h"
#include "standalone/export/GlbMeshes.h"
#include "standalone/export/GlbPlacement.h"

#include <deque>

namespace glb
{

/// The nodes of a file, level by level; the first is the root.
class GlbNodes
{
public:
    /// Takes `root` and what is active below it.
    explicit GlbNodes(const osg::NodePtr& root);

    const JsonList& list() const { return m_list; }
    const GlbMeshes& meshes() const { return m_meshes; }
    QStringList warnings() const { return m_warnings + m_meshes.warnings(); }

private:
    /// An entry of the list to come. Entries are numbered as they are put into the queue.
    struct Step {
        osg::NodePtr node;
        osg::MaterialPtr material; ///< of the nearest material group above
        osg::Matrix above;         ///< to be applied after the own transform
        Json inner;                ///< for the second node of a shearing transform: what it consists of
    };

    void add(const Step& step);
    void addContent(const Step& step, Json& json);
    void addChildren(const Step& step, Json& json);
    std::size_t enqueue(Step step);

    std::deque<Step> m_queue;
    std::size_t m_enqueued = 0;
    JsonList m_list;
    GlbMeshes m_meshes;
    QStringList m_warnings;
};

} // namespace glb
