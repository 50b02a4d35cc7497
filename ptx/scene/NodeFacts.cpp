#include "ptx/scene/NodeFacts.h"

#include "files/scenefile/AttributeTags.h"
#include "files/scenefile/ConvertedTree.h"
#include "ptx/scene/NodeNames.h"
#include "scene/Tags.h"

#include <algorithm>

namespace ptx::scene
{

using namespace osg::scenefile::converted;

namespace
{

/// Cuts a text that is too long between letters of UTF-8. @return whether it was
bool cut(osg::AttributeValue& value)
{
    auto* text = std::get_if<std::string>(&value);
    if (!text || text->size() <= MostTextBytes)
        return false;
    std::size_t end = MostTextBytes;
    while (end > 0 && (static_cast<unsigned char>((*text)[end]) & 0xC0) == 0x80)
        --end;
    text->resize(end);
    return true;
}

osg::AttributeList bounded(osg::AttributeList attributes)
{
    const std::size_t leftOut = attributes.size() - std::min(attributes.size(), MostAttributes);
    attributes.resize(attributes.size() - leftOut);
    std::int64_t cuts = 0;
    for (osg::Attribute& attribute : attributes)
        cuts += cut(attribute.value);
    if (leftOut > 0)
        attributes.push_back({"Attributes left out", static_cast<std::int64_t>(leftOut)});
    if (cuts > 0)
        attributes.push_back({"Attributes cut short", cuts});
    return attributes;
}

void addMeasures(const model::ExactMeasures& measures, osg::AttributeList& attributes)
{
    if (measures.area > 0)
        attributes.push_back({ExactAreaName, measures.area, "mm2"});
    if (measures.volume > 0)
        attributes.push_back({ExactVolumeName, measures.volume, "mm3"});
}

} // namespace

void NodeFacts::addTo(const osg::NodePtr& node, const model::Occurrence& occurrence)
{
    const ProductFacts& product = factsOf(occurrence.product);
    std::vector<std::string> tags = occurrence.tags;
    if (!occurrence.name.empty() && occurrence.name != nodeName(occurrence, m_model.products[occurrence.product]))
        tags.push_back(tag(OccurrenceKey, occurrence.name));
    osg::AttributeList own = bounded(takeAttributes(tags));
    tags.insert(tags.end(), product.tags.begin(), product.tags.end());
    if (!tags.empty())
        osg::setTags(node, std::move(tags));
    osg::setAttributes(node, osg::AttributeOwner::Product, product.attributes.get());
    osg::addAttributes(node, osg::AttributeOwner::Occurrence, std::move(own));
}

const NodeFacts::ProductFacts& NodeFacts::factsOf(std::size_t product)
{
    std::optional<ProductFacts>& facts = m_products[product];
    if (facts)
        return *facts;
    facts.emplace();
    facts->tags = m_model.products[product].tags;
    if (const std::string& name = m_model.products[product].name; !name.empty())
        facts->tags.insert(facts->tags.begin(), tag(ProductKey, name));
    osg::AttributeList attributes = bounded(takeAttributes(facts->tags));
    if (const std::size_t body = m_model.products[product].body; body < m_model.bodies.size())
        addMeasures(m_model.bodies[body].measures, attributes);
    if (!attributes.empty())
        facts->attributes = osg::AttributeAttachment::create(std::move(attributes));
    return *facts;
}

} // namespace ptx::scene
