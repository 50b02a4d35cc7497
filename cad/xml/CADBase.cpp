#include "cad/xml/CADBase.h"

#include "cad/xml/CADCompoundRef.h"
#include "cad/xml/CADDocument.h"
#include "cad/xml/CADElementWalk.h"
#include "cad/xml/CADInstance.h"
#include "cad/xml/CADInstanceGraph.h"
#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADPart.h"
#include "cad/xml/CADProductDef.h"
#include "cad/xml/CADProductView.h"
#include "cad/xml/CADTransform.h"
#include "cad/xml/CADUserData.h"
#include "cad/xml/CADUserList.h"
#include "cad/xml/CADUserListItem.h"
#include "cad/xml/CADUserValue.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace HB::XML::CAD
{

namespace
{

constexpr std::string_view noGeneratedId;

template <class Element>
constexpr void (CADDocument::*noTable)(Element*) = nullptr;

template <class... Names>
bool isNamed(const TiXmlElement& element, Names... names)
{
    return (... || (std::string_view(element.ValueTStr()) == names));
}

} // namespace

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

void CADBase::noteFault(const CADFault& fault) const
{
    if (m_document)
        m_document->noteFault(fault);
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

/// From its construction on this element owns the child, whatever its load throws.
template <class Element, class Registered>
Element* CADBase::create(const TiXmlElement& element, std::string_view suffix, void (CADDocument::*add)(Registered*))
{
    auto* child = new Element(this);
    if (m_document)
        m_document->noteOrigin(*child, element);
    child->load(element);
    if (suffix != noGeneratedId)
        child->generateId(suffix);
    if (add && m_document)
        (m_document->*add)(child);
    return child;
}

CADInstance* CADBase::createInstance(const TiXmlElement& element)
{
    return isNamed(element, "Instance", "ProductInstance")
               ? create<CADInstance>(element, noGeneratedId, &CADDocument::addInstance)
               : nullptr;
}

CADPart* CADBase::createPart(const TiXmlElement& element)
{
    return isNamed(element, "Part", "ProductRevisionView")
               ? create<CADPart>(element, noGeneratedId, &CADDocument::addPart)
               : nullptr;
}

CADTransform* CADBase::createTransform(const TiXmlElement& element)
{
    return isNamed(element, "Transform") ? create<CADTransform>(element, "_tr", &CADDocument::addTransform) : nullptr;
}

CADRepresentation* CADBase::createRepresentation(const TiXmlElement& element)
{
    return isNamed(element, "Representation")
               ? create<CADRepresentation>(element, "_rep", &CADDocument::addRepresentation)
               : nullptr;
}

CADCompoundRef* CADBase::createCompoundRep(const TiXmlElement& element)
{
    return isNamed(element, "CompoundRep") ? create<CADCompoundRef>(element, "_cor", &CADDocument::addRepresentation)
                                           : nullptr;
}

CADUserData* CADBase::createUserData(const TiXmlElement& element)
{
    return isNamed(element, "UserData") ? create<CADUserData>(element, "_ud", noTable<CADUserData>) : nullptr;
}

CADUserValue* CADBase::createUserValue(const TiXmlElement& element)
{
    return isNamed(element, "UserValue") ? create<CADUserValue>(element, "_uv", noTable<CADUserValue>) : nullptr;
}

CADUserList* CADBase::createUserList(const TiXmlElement& element)
{
    return isNamed(element, "UserList") ? create<CADUserList>(element, "_ul", &CADDocument::addUserList) : nullptr;
}

CADUserListItem* CADBase::createUserListItem(const TiXmlElement& element)
{
    return isNamed(element, "Item") ? create<CADUserListItem>(element, "_uli", noTable<CADUserListItem>) : nullptr;
}

CADInstanceGraph* CADBase::createInstanceGraph(const TiXmlElement& element)
{
    return isNamed(element, "InstanceGraph")
               ? create<CADInstanceGraph>(element, noGeneratedId, noTable<CADInstanceGraph>)
               : nullptr;
}

CADMaterial* CADBase::createMaterial(const TiXmlElement& element)
{
    return isNamed(element, "Material") ? create<CADMaterial>(element, "_mat", &CADDocument::addMaterial) : nullptr;
}

CADProductView* CADBase::createProductView(const TiXmlElement& element)
{
    return isNamed(element, "ProductView") ? create<CADProductView>(element, "_pv", &CADDocument::addProductView)
                                           : nullptr;
}

CADOccurrence* CADBase::createOccurrence(const TiXmlElement& element)
{
    return isNamed(element, "Occurrence") ? create<CADOccurrence>(element, "_o", &CADDocument::addOccurrence) : nullptr;
}

} // namespace HB::XML::CAD
