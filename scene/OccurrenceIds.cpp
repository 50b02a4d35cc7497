#include "scene/OccurrenceIds.h"

#include "host/OSGSystem/Names.h"
#include "scene/Attributes.h"
#include "scene/NodeWalk.h"

#include <algorithm>

namespace osg
{

namespace
{

std::string escaped(const std::string& text)
{
    std::string result;
    for (const char c : text)
        switch (c) {
        case '%':
            result += "%25";
            break;
        case '/':
            result += "%2F";
            break;
        case '@':
            result += "%40";
            break;
        case '#':
            result += "%23";
            break;
        default:
            result += c;
        }
    return result;
}

std::string stepOf(const NodePtr& node, const std::string& product)
{
    const AttributeAttachment::Ptr occurrence = attributeAttachment(node, AttributeOwner::Occurrence);
    std::string name = occurrence ? occurrence->text("Designator") : std::string();
    if (const char* own = getName(node); name.empty() && own)
        name = own;
    if (name.empty())
        name = product.empty() ? "-" : product;
    const bool isTold = product.empty() || product == name;
    return escaped(name) + (isTold ? std::string() : "@" + escaped(product));
}

} // namespace

std::vector<std::string> OccurrenceSteps::below(const NodePtr& parent)
{
    const bool isWrapper = m_wrappers.contains(parent);
    std::vector<std::string> steps(parent->getNChildren());
    Uses uses;
    for (unsigned i = 0; i < parent->getNChildren(); ++i) {
        const NodePtr child = parent->getChild(i);
        if (isWrapper)
            steps[i] = std::move(m_belowWrappers[child.get()]);
        else if (m_wrappers.contains(child))
            numberBelow(child, uses);
        else
            steps[i] = numbered(child, uses);
    }
    return steps;
}

/// Wrappers in wrappers, too; in the order of the tree.
void OccurrenceSteps::numberBelow(const NodePtr& wrapper, Uses& uses)
{
    std::vector<NodePtr> pending = {wrapper};
    while (!pending.empty()) {
        const NodePtr node = pending.back();
        pending.pop_back();
        if (!m_wrappers.contains(node)) {
            m_belowWrappers[node.get()] = numbered(node, uses);
            continue;
        }
        for (unsigned i = node->getNChildren(); i-- > 0;)
            pending.push_back(node->getChild(i));
    }
}

std::string OccurrenceSteps::numbered(const NodePtr& node, Uses& uses)
{
    std::string step = stepOf(node, productOf(node));
    if (const unsigned number = ++uses[step]; number > 1)
        step += "#" + std::to_string(number);
    return step;
}

std::string OccurrenceSteps::productOf(const NodePtr& node)
{
    const AttributeAttachment::Ptr product = attributeAttachment(node, AttributeOwner::Product);
    if (!product)
        return {};
    // Who holds the only reference is the only one to meet it.
    if (product->getRefCount() == 1)
        return product->text("Product");
    const auto [entry, isNew] = m_products.try_emplace(product.get());
    if (isNew)
        entry->second = product->text("Product");
    return entry->second;
}

OccurrenceIds::OccurrenceIds(const NodePtr& root)
{
    OccurrenceSteps steps(root);
    for (const NodePtr& parent : parentsFirst(root)) {
        std::vector<std::string> below = steps.below(parent);
        for (unsigned i = 0; i < parent->getNChildren(); ++i)
            m_steps.emplace(parent->getChild(i).get(), std::move(below[i]));
    }
}

const std::string& OccurrenceIds::step(const NodePtr& node) const
{
    static const std::string none;
    const auto found = m_steps.find(node.get());
    return found == m_steps.end() ? none : found->second;
}

std::string OccurrenceIds::of(const NodePtr& node) const
{
    std::vector<const std::string*> steps;
    if (!step(node).empty())
        for (NodePtr each = node; each; each = each->getParent())
            if (!step(each).empty())
                steps.push_back(&step(each));
    std::string id;
    std::for_each(steps.rbegin(), steps.rend(),
                  [&id](const std::string* each) { id += (id.empty() ? "" : "/") + *each; });
    return id;
}

} // namespace osg
