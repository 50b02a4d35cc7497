#include "files/gltf/GltfExtras.h"

#include "files/gltf/ExtrasValues.h"

#include <array>
#include <string>
#include <utility>

namespace files::gltf
{

namespace
{

using Json = nlohmann::json;

/// What `files/glb` writes that is no attribute.
constexpr std::array<std::string_view, 5> ownMembers = {"annotations", "externalReference", "step", "variants",
                                                        "variantSets"};

/// Keeps the extras of the document, of its nodes, materials and scenes, and whatever is in these.
class Filter
{
public:
    bool operator()(int depth, std::string_view key)
    {
        if (m_depth > 0 && depth > m_depth)
            return true;
        m_depth = 0;
        if (depth == 1)
            m_isInRead = key == "nodes" || key == "materials" || key == "scenes";
        if (key != "extras")
            return true;
        if (depth == 1 || (depth == 3 && m_isInRead))
            m_depth = depth;
        return m_depth > 0;
    }

private:
    int m_depth = 0; ///< of the extras around the place; 0 outside
    bool m_isInRead = false;
};

Json takeMember(Json& object, const char* name)
{
    const auto found = object.is_object() ? object.find(name) : object.end();
    if (!object.is_object() || found == object.end())
        return {};
    Json taken = std::move(*found);
    object.erase(found);
    return taken;
}

osg::RefPtr<osg::AttributeAttachment::Ptr> attachmentOf(osg::AttributeList attributes)
{
    if (attributes.empty())
        return {};
    return osg::RefPtr<osg::AttributeAttachment::Ptr>(osg::AttributeAttachment::create(std::move(attributes)));
}

} // namespace

MemberFilter memberFilter()
{
    return Filter();
}

/// One run over a document.
class GltfExtras::Taking
{
public:
    Taking(Json& document, GltfExtras& extras) : m_document(document), m_extras(extras) {}

    std::size_t take()
    {
        Json own = takeMember(m_document, "extras");
        if (own.is_object() && own.contains("products") && own["products"].is_array()) {
            m_products = takeMember(own, "products");
            m_isOurs = true;
        }
        m_isOurs = m_isOurs || generator().starts_with("znCADImport ");
        m_attachments.resize(m_products.size());
        m_extras.m_document = attachmentOf(others(own));
        each("nodes", [this](int index, Json& extras) { m_extras.m_nodes[index] = nodeExtras(extras); });
        each("materials", [this](int index, Json& extras) { m_extras.m_materials[index] = withOwn(extras); });
        each("scenes", [this](int index, Json& extras) { m_extras.m_scenes[index] = withOwn(extras); });
        return m_leftOut;
    }

private:
    std::string generator() const
    {
        const Json::json_pointer place("/asset/generator");
        const bool isTold = m_document.contains(place) && m_document.at(place).is_string();
        return isTold ? m_document.at(place).get<std::string>() : std::string();
    }

    template <class Visit>
    void each(const char* list, Visit visit)
    {
        const auto found = m_document.find(list);
        if (found == m_document.end() || !found->is_array())
            return;
        int index = 0;
        for (Json& element : *found) {
            if (Json extras = takeMember(element, "extras"); !extras.is_null())
                visit(index, extras);
            ++index;
        }
    }

    NodeExtras nodeExtras(Json& extras)
    {
        NodeExtras result;
        if (m_isOurs)
            result.product = productOf(takeMember(extras, "product"));
        result.occurrence = withOwn(extras);
        return result;
    }

    Held productOf(const Json& number)
    {
        if (number.is_null())
            return {};
        const bool isKnown =
            number.is_number_unsigned() && number.get<std::uint64_t>() < static_cast<std::uint64_t>(m_products.size());
        if (!isKnown) {
            ++m_leftOut;
            return {};
        }
        const auto index = number.get<std::size_t>();
        if (!m_products[index].is_null())
            m_attachments[index] = attachmentOf(attributesIn(std::exchange(m_products[index], {}), m_leftOut));
        return m_attachments[index];
    }

    Held withOwn(Json& extras)
    {
        osg::AttributeList attributes;
        if (m_isOurs)
            attributes = attributesIn(takeMember(extras, "attributes"), m_leftOut);
        for (osg::Attribute& attribute : others(extras))
            attributes.push_back(std::move(attribute));
        return attachmentOf(std::move(attributes));
    }

    /// The attributes that no writer of ours made.
    osg::AttributeList others(Json& extras)
    {
        for (const std::string_view member : ownMembers)
            if (m_isOurs && extras.is_object())
                extras.erase(std::string(member));
        return foreignAttributesIn(extras, m_leftOut);
    }

    Json& m_document;
    GltfExtras& m_extras;
    Json m_products = Json::array();
    std::vector<Held> m_attachments;
    bool m_isOurs = false;
    std::size_t m_leftOut = 0;
};

GltfExtras::GltfExtras(Json& document, ReadTask& task)
{
    if (const std::size_t count = Taking(document, *this).take(); count > 0)
        task.warn(tr("%1 values of extras were left out").arg(static_cast<qulonglong>(count)));
}

void GltfExtras::addToNode(int index, const osg::NodePtr& node) const
{
    const auto found = m_nodes.find(index);
    if (found == m_nodes.end())
        return;
    osg::setAttributes(node, osg::AttributeOwner::Product, found->second.product.get());
    osg::setAttributes(node, osg::AttributeOwner::Occurrence, found->second.occurrence.get());
}

void GltfExtras::addToMaterial(int index, const osg::MaterialPtr& material) const
{
    if (const auto found = m_materials.find(index); found != m_materials.end())
        osg::setAttributes(material, osg::AttributeOwner::Product, found->second.get());
}

void GltfExtras::addToScene(int index, const osg::NodePtr& node) const
{
    osg::setAttributes(node, osg::AttributeOwner::Occurrence, m_document.get());
    const auto found = m_scenes.find(index);
    if (found != m_scenes.end() && found->second.get())
        osg::addAttributes(node, osg::AttributeOwner::Occurrence, found->second.get()->attributes());
}

} // namespace files::gltf
