#include "scene/DeepClone.h"

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/ContainerRegistry.h"
#include "scene/SceneEdits.h"

#include <unordered_map>

namespace osg
{

namespace
{

/// Copies of cores, one for each original however many nodes share it.
class CoreCopies
{
public:
    NodeCorePtr copyOf(const NodeCorePtr& original)
    {
        NodeCorePtr& copied = m_copies[original.get()];
        if (!copied)
            copied = NodeCorePtr(static_cast<NodeCore*>(ContainerAccess::copy(*original).get()));
        return copied;
    }

private:
    std::unordered_map<const NodeCore*, NodeCorePtr> m_copies;
};

void appendToName(const NodePtr& node, const std::string& suffix)
{
    const char* name = getName(node);
    if (name && !suffix.empty())
        setName(node, name + suffix);
}

} // namespace

void partFromOriginal(const NodePtr& root, const std::string& nameSuffix)
{
    CoreCopies copies;
    traverse(root, [&](const NodePtr& step) {
        if (!step)
            return Action::Skip;
        if (step->getCore())
            exchangeCore(step, copies.copyOf(step->getCore()));
        appendToName(step, nameSuffix);
        return Action::Continue;
    });
}

} // namespace osg
