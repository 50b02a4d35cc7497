#include "cad/xml/CADDocument.h"

#include "cad/xml/CADInstance.h"
#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADPart.h"
#include "cad/xml/CADProductDef.h"
#include "cad/xml/CADProductView.h"
#include "cad/xml/CADRepresentation.h"
#include "cad/xml/CADTransform.h"
#include "cad/xml/CADUserList.h"
#include "cad/xml/XMLFile.h"

#include <algorithm>
#include <exception>
#include <utility>

#include <tinyxml.h>

namespace HB::XML::CAD
{

namespace
{

void destroyInOrder(std::vector<std::unique_ptr<CADProductDef>>& productDefs)
{
    for (auto& productDef : productDefs)
        productDef.reset();
}

CADPlace placeOf(const TiXmlElement& element)
{
    return {element.Row(), element.Column()};
}

CADFault wrongRoot(const TiXmlElement* root)
{
    if (!root)
        return {CADFault::Cause::Root, {1, 1}};
    return {CADFault::Cause::Root, placeOf(*root), {}, root->ValueStr()};
}

} // namespace

CADDocument::CADDocument() = default;

CADDocument::~CADDocument()
{
    destroyInOrder(m_productDefs);
    destroyInOrder(m_halfReadProductDefs);
}

void CADDocument::load(const std::string& fileName)
{
    TiXmlDocument xml(fileName);
    m_fault.reset();
    if (auto fault = loadXMLFile(xml, m_limits, m_keepsPlaces))
        refuse(std::move(*fault));
    const TiXmlElement* root = xml.RootElement();
    if (!root || root->ValueTStr() != "PLMXML")
        refuse(wrongRoot(root));
    if (const TiXmlElement* productDef = root->FirstChildElement("ProductDef"))
        loadProductDef(*productDef);
}

void CADDocument::loadProductDef(const TiXmlElement& element)
{
    m_halfReadProductDefs.push_back(std::make_unique<CADProductDef>(this));
    noteOrigin(*m_halfReadProductDefs.back(), element);
    m_halfReadProductDefs.back()->load(element);
    m_productDefs.push_back(std::move(m_halfReadProductDefs.back()));
    m_halfReadProductDefs.pop_back();
}

void CADDocument::refuse(CADFault fault)
{
    noteFault(std::move(fault));
    throw std::exception();
}

/// What the parser tells without having kept places is no place.
void CADDocument::noteFault(CADFault fault)
{
    if (!m_keepsPlaces && fault.cause != CADFault::Cause::Text)
        fault.place = {};
    m_fault = std::move(fault);
}

void CADDocument::noteOrigin(const CADBase& element, const TiXmlElement& source)
{
    if (m_keepsPlaces)
        m_origins.push_back({&element, source.ValueStr(), source.Attribute("id") != nullptr, placeOf(source)});
}

std::uint32_t CADDocument::getProductDefCount() const
{
    return static_cast<std::uint32_t>(m_productDefs.size());
}

CADProductDef* CADDocument::getProductDef(std::uint32_t index) const
{
    return index < m_productDefs.size() ? m_productDefs[index].get() : nullptr;
}

void CADDocument::addInstance(CADInstance* instance)
{
    m_instances.add(instance);
}

void CADDocument::addPart(CADPart* part)
{
    m_parts.add(part);
}

void CADDocument::addTransform(CADTransform* transform)
{
    m_transforms.add(transform);
}

void CADDocument::addRepresentation(CADRepresentation* representation)
{
    m_representations.add(representation);
}

void CADDocument::addUserList(CADUserList* userList)
{
    m_userLists.add(userList);
}

void CADDocument::addMaterial(CADMaterial* material)
{
    m_materials.add(material);
}

void CADDocument::addOccurrence(CADOccurrence* occurrence)
{
    m_occurrences.add(occurrence);
}

void CADDocument::addProductView(CADProductView* productView)
{
    m_productViews.add(productView);
}

CADInstance* CADDocument::findInstance(std::string_view reference) const
{
    return m_instances.find(reference);
}

CADPart* CADDocument::findPart(std::string_view reference) const
{
    return m_parts.find(reference);
}

CADTransform* CADDocument::findTransform(std::string_view reference) const
{
    return m_transforms.find(reference);
}

CADRepresentation* CADDocument::findRepresentation(std::string_view reference) const
{
    return m_representations.find(reference);
}

CADMaterial* CADDocument::findMaterial(std::string_view reference) const
{
    return m_materials.find(reference);
}

CADOccurrence* CADDocument::findOccurrence(std::string_view reference) const
{
    return m_occurrences.find(reference);
}

CADPart* CADDocument::findPartById(std::string_view id) const
{
    return m_parts.findById(id);
}

CADProductView* CADDocument::getActiveProductView() const
{
    if (m_viewsChosenFrom != m_productViews.elements().size()) {
        m_activeProductView = chooseProductView();
        m_viewsChosenFrom = m_productViews.elements().size();
    }
    return m_activeProductView;
}

CADProductView* CADDocument::chooseProductView() const
{
    const auto& views = m_productViews.elements();
    const auto active = std::find_if(views.begin(), views.end(), [](const auto* view) { return view->isActive(); });
    if (active != views.end())
        return *active;
    return views.empty() ? nullptr : views.front();
}

} // namespace HB::XML::CAD
