#include "files/gltf/GltfExtras.h"

#include "files/gltf/ExtrasValues.h"
#include "scene/Tags.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

namespace files::gltf
{

namespace
{

using Json = nlohmann::json;

/// What `files/glb` writes that is no attribute.
constexpr std::array<std::string_view, 6> ownMembers = {"annotations", "externalReference", "shown",
                                                        "step",        "variants",          "variantSets"};

/// The lists whose entries may have extras that are read.
constexpr std::array<std::string_view, 5> readLists = {"cameras", "materials", "meshes", "nodes", "scenes"};

/// Keeps the extras of the document, of its asset, nodes, meshes and their primitives, cameras, materials and scenes,
/// and whatever is in these.
class Filter
{
public:
    explicit Filter(std::size_t& leftOut) : m_leftOut(leftOut) {}

    bool operator()(int depth, std::string_view key)
    {
        if (m_depth > 0 && depth > m_depth)
            return true;
        m_depth = 0;
        if (depth == 1)
            m_hasPrimitives = key == "meshes";
        if (depth == 1)
            m_readDepth = key == "asset"                                                          ? 2
                          : std::find(readLists.begin(), readLists.end(), key) != readLists.end() ? 3
                                                                                                  : 0;
        if (key != "extras")
            return true;
        if (depth == 1 || depth == m_readDepth || (m_hasPrimitives && depth == primitiveDepth))
            m_depth = depth;
        else
            ++m_leftOut;
        return m_depth > 0;
    }

private:
    static constexpr int primitiveDepth = 5;

    std::size_t& m_leftOut;
    bool m_hasPrimitives = false; ///< in the present member of the document
    int m_depth = 0;              ///< of the extras around the place; 0 outside
    int m_readDepth = 0;          ///< where extras are read in the present member of the document; 0 for nowhere
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

MemberFilter memberFilter(std::size_t& leftOut)
{
    return Filter(leftOut);
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
        m_isOurs = m_isOurs || generator().starts_with("znCADImport ") || hasVariantSets();
        m_attachments.resize(m_products.size());
        osg::AttributeList attributes = others(own);
        for (osg::Attribute& attribute : assetExtras())
            attributes.push_back(std::move(attribute));
        m_extras.m_document = attachmentOf(std::move(attributes));
        each("nodes", [this](int index, Json& extras, Json& node) {
            if (m_isOurs) {
                takeVariants(index, extras);
                show(index, takeMember(extras, "shown"), node);
            }
            if (m_isOurs)
                takeParts(index, extras);
            if (m_isOurs && takeMember(extras, "annotations") == true)
                m_extras.m_annotations.insert(index);
            m_extras.m_nodes[index] = nodeExtras(extras);
        });
        each("meshes", [this](int index, Json& extras, const Json&) { m_extras.m_meshes[index] = withOwn(extras); });
        takeRanges();
        each("cameras", [this](int index, Json& extras, const Json&) { m_extras.m_cameras[index] = withOwn(extras); });
        each("materials",
             [this](int index, Json& extras, const Json&) { m_extras.m_materials[index] = withOwn(extras); });
        each("scenes", [this](int index, Json& extras, const Json&) { m_extras.m_scenes[index] = withOwn(extras); });
        return m_leftOut;
    }

private:
    std::string generator() const
    {
        const Json::json_pointer place("/asset/generator");
        const bool isTold = m_document.contains(place) && m_document.at(place).is_string();
        return isTold ? m_document.at(place).get<std::string>() : std::string();
    }

    /// Other programs that write our files anew put their own name in the place of ours.
    bool hasVariantSets() const
    {
        const Json::json_pointer first("/asset/extras/variantSets/0/name");
        return m_document.contains(first) && m_document.at(first).is_string();
    }

    /// Takes unit, axis and variant sets out of those that we wrote.
    osg::AttributeList assetExtras()
    {
        const auto asset = m_document.find("asset");
        Json extras = asset == m_document.end() ? Json() : takeMember(*asset, "extras");
        if (m_isOurs) {
            const Json unit = takeMember(extras, "metresPerUnit");
            const double millimetres = unit.is_number() ? unit.get<double>() * 1000 : 0;
            if (millimetres > 0 && std::isfinite(static_cast<float>(millimetres)))
                m_extras.m_millimetresPerUnit = millimetres;
            if (takeMember(extras, "upAxis") == "Z")
                m_extras.m_upAxis = UpAxis::Z;
            takeSets(extras);
        }
        return foreignAttributesIn(extras, m_leftOut);
    }

    template <class Visit>
    void each(const char* list, Visit visit)
    {
        const auto found = m_document.find(list);
        if (found == m_document.end() || !found->is_array())
            return;
        const Json::json_pointer levels("/extensions/MSFT_lod");
        int index = 0;
        for (Json& element : *found) {
            Json extras = takeMember(element, "extras");
            if (extras.is_object() && element.contains(levels))
                extras.erase("MSFT_screencoverage");
            if (!extras.is_null())
                visit(index, extras, element);
            ++index;
        }
    }

    static std::string textIn(const Json& object, const char* name)
    {
        const auto found = object.is_object() ? object.find(name) : object.end();
        return object.is_object() && found != object.end() && found->is_string() ? found->get<std::string>() : "";
    }

    void takeSets(Json& extras)
    {
        for (const Json& set : takeMember(extras, "variantSets"))
            m_extras.m_variantSets.push_back({textIn(set, "name"), textIn(set, "group"), textIn(set, "viewpoint")});
    }

    /// Gives a hidden node the transform that it has when it is shown.
    void show(int index, Json shown, Json& node)
    {
        if (!shown.is_object())
            return;
        m_extras.m_shrunk.insert(index);
        for (const char* member : {"matrix", "translation", "rotation", "scale"}) {
            node.erase(member);
            if (shown.contains(member))
                node[member] = std::move(shown[member]);
        }
    }

    /// Older files tell the sets in their first node.
    void takeVariants(int index, Json& extras)
    {
        takeSets(extras);
        const Json variants = takeMember(extras, "variants");
        for (const auto& [name, isShown] : variants.items())
            if (variants.is_object() && isShown.is_boolean())
                m_extras.m_nodeVariants[index][name] = isShown.get<bool>();
    }

    static std::optional<std::uint64_t> numberIn(const Json& value)
    {
        return value.is_number_unsigned() ? std::optional(value.get<std::uint64_t>()) : std::nullopt;
    }

    void takeParts(int index, Json& extras)
    {
        if (const auto group = numberIn(takeMember(extras, "group")))
            m_extras.m_groups[index] = *group;
        for (const char* member : {"instances", "parts"})
            for (Json& entry : takeMember(extras, member)) {
                GltfPart part;
                part.name = textIn(entry, "name");
                for (const Json& name : takeMember(entry, "path"))
                    part.path.push_back(name.is_string() ? name.get<std::string>() : std::string());
                part.group = numberIn(takeMember(entry, "group"));
                for (const char* known : {"name", "mesh"})
                    takeMember(entry, known);
                NodeExtras own = nodeExtras(entry);
                part.product = own.product;
                part.occurrence = own.occurrence;
                m_extras.m_parts[index].push_back(std::move(part));
            }
    }

    /// Of the primitives, whose other extras nobody reads.
    void takeRanges()
    {
        const auto meshes = m_document.find("meshes");
        if (meshes == m_document.end() || !meshes->is_array())
            return;
        for (std::size_t mesh = 0; mesh < meshes->size(); ++mesh) {
            const auto primitives =
                (*meshes)[mesh].is_object() ? (*meshes)[mesh].find("primitives") : (*meshes)[mesh].end();
            if (!(*meshes)[mesh].is_object() || primitives == (*meshes)[mesh].end() || !primitives->is_array())
                continue;
            for (std::size_t i = 0; i < primitives->size(); ++i) {
                Json extras = takeMember((*primitives)[i], "extras");
                if (extras.is_null())
                    continue;
                std::vector<GltfPartRange> ranges = rangesIn(m_isOurs ? takeMember(extras, "parts") : Json());
                if (ranges.empty())
                    ++m_leftOut;
                else
                    m_extras.m_ranges[{int(mesh), i}] = std::move(ranges);
            }
        }
    }

    /// None when some entry is no range.
    static std::vector<GltfPartRange> rangesIn(const Json& list)
    {
        std::vector<GltfPartRange> ranges;
        for (const Json& entry : list) {
            if (!entry.is_array() || entry.size() < 2 || !entry[0].is_number_unsigned() ||
                !entry[1].is_number_unsigned())
                return {};
            ranges.push_back({entry[0].get<std::size_t>(), entry[1].get<std::size_t>(),
                              entry.size() > 2 ? textIn(entry[2], "material") : std::string()});
        }
        return ranges;
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

GltfExtras::GltfExtras(Json& document, std::size_t leftOut, ReadTask& task)
{
    if (const std::size_t count = leftOut + Taking(document, *this).take(); count > 0)
        task.warn(tr("%1 values of extras were left out").arg(static_cast<qulonglong>(count)));
}

void GltfExtras::addToNode(int index, const osg::NodePtr& node) const
{
    if (m_annotations.contains(index))
        osg::setTags(node, {osg::AnnotationsTag});
    const auto found = m_nodes.find(index);
    if (found == m_nodes.end())
        return;
    osg::setAttributes(node, osg::AttributeOwner::Product, found->second.product.get());
    osg::setAttributes(node, osg::AttributeOwner::Occurrence, found->second.occurrence.get());
}

void GltfExtras::addMeshToNode(int mesh, const osg::NodePtr& node) const
{
    const auto found = m_meshes.find(mesh);
    if (found != m_meshes.end() && !osg::attributeAttachment(node, osg::AttributeOwner::Product))
        osg::setAttributes(node, osg::AttributeOwner::Product, found->second.get());
}

void GltfExtras::addCameraToNode(int camera, const osg::NodePtr& node) const
{
    if (const auto found = m_cameras.find(camera); found != m_cameras.end())
        osg::setAttributes(node, osg::AttributeOwner::Occurrence, found->second.get());
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
