// The operations of CADBase that create child elements.

#include "cad/xml/CADBase.h"

#include "cad/xml/CADCompoundRef.h"
#include "cad/xml/CADDocument.h"
#include "cad/xml/CADElementWalk.h"
#include "cad/xml/CADInstance.h"
#include "cad/xml/CADInstanceGraph.h"
#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADPart.h"
#include "cad/xml/CADProductView.h"
#include "cad/xml/CADTransform.h"
#include "cad/xml/CADUserData.h"
#include "cad/xml/CADUserList.h"
#include "cad/xml/CADUserListItem.h"
#include "cad/xml/CADUserValue.h"

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

/// From its construction on this element owns the child, whatever its load throws.
template <class Element, class Registered>
Element* CADBase::create(const TiXmlElement& element, std::string_view suffix, void (CADDocument::*add)(Registered*))
{
    auto* child = new Element(this);
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
