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
    std::vector<std::string> steps;
    steps.reserve(parent->getNChildren());
    std::unordered_map<std::string, unsigned> uses;
    for (unsigned i = 0; i < parent->getNChildren(); ++i) {
        const NodePtr child = parent->getChild(i);
        std::string step = stepOf(child, productOf(child));
        if (const unsigned number = ++uses[step]; number > 1)
            step += "#" + std::to_string(number);
        steps.push_back(std::move(step));
    }
    return steps;
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
    OccurrenceSteps steps;
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
    for (NodePtr each = node; each && !step(each).empty(); each = each->getParent())
        steps.push_back(&step(each));
    std::string id;
    std::for_each(steps.rbegin(), steps.rend(),
                  [&id](const std::string* each) { id += (id.empty() ? "" : "/") + *each; });
    return id;
}

} // namespace osg
