#include "cad/xml/CADBase.h"

#include "cad/xml/CADElementWalk.h"
#include "cad/xml/CADProductDef.h"
#include "cad/xml/CADUserData.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace HB::XML::CAD
{

CADBase::CADBase(CADDocument* document) : m_document(document) {}

CADBase::CADBase(CADBase* parent) : m_parent(parent)
{
    if (!parent)
        return;
    m_document = parent->m_document;
    parent->m_children.emplace_back(this);
}

CADBase::~CADBase()
{
    // Still a child here means that a derived constructor failed: the memory is not the parent's to free.
    if (m_parent)
        m_parent->releaseChild(this);
    for (auto& child : m_children) {
        child->m_parent = nullptr;
        child.reset();
    }
}

void CADBase::releaseChild(const CADBase* child)
{
    const auto isChild = [child](const auto& owned) { return owned.get() == child; };
    const auto found = std::find_if(m_children.rbegin(), m_children.rend(), isChild);
    if (found == m_children.rend())
        return;
    static_cast<void>(found->release());
    m_children.erase(std::next(found).base());
}

void CADBase::load(const TiXmlElement& element)
{
    CADBase::loadAttributes(element);
    loadAttributes(element);
    for (const TiXmlElement& child : ChildElementsOf(element)) {
        if (auto* userData = createUserData(child))
            m_userData = userData;
    }
}

void CADBase::loadAttributes(const TiXmlElement& element)
{
    bool hasName = false;
    bool hasId = false;
    for (const auto [name, value] : AttributesOf(element)) {
        if (name == "name") {
            m_name = value;
            hasName = true;
        } else if (name == "id") {
            m_id = value;
            hasId = true;
        }
        if (hasName && hasId)
            return;
    }
}

CADProductDef* CADBase::getRootProductDef()
{
    auto* root = this;
    while (root->m_parent)
        root = root->m_parent;
    return dynamic_cast<CADProductDef*>(root);
}

void CADBase::generateId(std::string_view suffix)
{
    if (!m_id.empty())
        return;
    std::array<char, 2 + 2 * sizeof(std::uintptr_t)> address{'0', 'x'};
    const auto number = reinterpret_cast<std::uintptr_t>(this);
    const auto end = std::to_chars(address.data() + 2, address.data() + address.size(), number, 16).ptr;
    const std::string_view parentId = m_parent ? m_parent->m_id : std::string_view();
    m_id.reserve(parentId.size() + suffix.size() + address.size());
    m_id.append(parentId).append(suffix).append(address.data(), end);
}

} // namespace HB::XML::CAD
