#include "ptx/scene/NodeFacts.h"

#include "files/scenefile/AttributeTags.h"
#include "files/scenefile/ConvertedTree.h"
#include "ptx/scene/NodeNames.h"
#include "scene/AttributeLimits.h"
#include "scene/Tags.h"

namespace ptx::scene
{

using namespace osg::scenefile::converted;

namespace
{

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
    osg::AttributeList own = osg::bounded(takeAttributes(tags));
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
    osg::AttributeList attributes = osg::bounded(takeAttributes(facts->tags));
    if (const std::size_t body = m_model.products[product].body; body < m_model.bodies.size())
        addMeasures(m_model.bodies[body].measures, attributes);
    if (!attributes.empty())
        facts->attributes = osg::AttributeAttachment::create(std::move(attributes));
    return *facts;
}

} // namespace ptx::scene
