#include "importer/inventory/PartsList.h"

#include "files/scenefile/AttributeTags.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform.h"
#include "importer/inventory/PartMeasures.h"
#include "scene/GeometryWalk.h"
#include "scene/MatrixMath.h"
#include "scene/OccurrenceIds.h"

#include <map>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace importer::inventory
{

namespace
{

using namespace osg::scenefile::converted;
constexpr double kilogramsPerGramOfMm3 = 1e-6; // g/cm3 times mm3

std::optional<double> numberOf(const osg::AttributeList& attributes, std::string_view name)
{
    for (const osg::Attribute& attribute : attributes)
        if (attribute.name == name)
            if (const auto* number = std::get_if<double>(&attribute.value))
                return *number;
    return std::nullopt;
}

/// An occurrence of a product in the tree.
struct Place {
    osg::NodePtr node;
    std::size_t parent = 0; ///< the place around it; its own number for the outermost one
    osg::Matrix matrix;     ///< within it
    std::vector<PlacedMesh> meshes;
    std::vector<std::size_t> children;
    std::size_t product = 0;
};

/// What equal products have in common: a number for their attributes, their name without such, their meshes.
using Key = std::tuple<std::size_t, std::string, std::vector<const void*>>;

/// The products of a tree: their places, and which of them are the same.
class Inventory
{
public:
    explicit Inventory(const osg::NodePtr& root)
    {
        m_places.push_back({root, 0, {}, {}, {}, 0});
        walk(root);
        for (std::size_t i = 1; i < m_places.size(); ++i)
            number(i);
    }

    const std::vector<Place>& places() const { return m_places; }
    std::size_t products() const { return m_products.size(); }
    const osg::AttributeList& attributes(std::size_t place) const { return m_lists[m_listOf[place]]; }

private:
    struct Step {
        osg::NodePtr node;
        std::size_t place;
        osg::Matrix matrix;
    };

    // Children in their order, a parent before them; trees may be deeper than the call stack.
    void walk(const osg::NodePtr& root)
    {
        std::vector<Step> pending = {{root, 0, {}}};
        while (!pending.empty()) {
            const Step step = pending.back();
            pending.pop_back();
            if (step.node->isActive())
                take(step, pending);
        }
    }

    void take(Step step, std::vector<Step>& pending)
    {
        const auto transform = osg::fcCast<osg::Transform>(step.node->getCore());
        const bool isProduct = static_cast<bool>(osg::attributeAttachment(step.node, osg::AttributeOwner::Product));
        const osg::GeometryPtr geometry = osg::geometryOf(step.node);
        if (isProduct || (geometry && step.place == 0))
            step = {step.node, open(step), {}};
        else if (transform)
            step.matrix = step.matrix * transform->getMatrix();
        if (geometry)
            m_places[step.place].meshes.push_back({&osg::GeometryAccess::mesh(*geometry), step.matrix});
        for (unsigned i = step.node->getNChildren(); i-- > 0;)
            pending.push_back({step.node->getChild(i), step.place, step.matrix});
    }

    std::size_t open(const Step& step)
    {
        const std::size_t number = m_places.size();
        m_places.push_back({step.node, step.place, {}, {}, {}, 0});
        m_places[step.place].children.push_back(number);
        return number;
    }

    void number(std::size_t place)
    {
        m_listOf.resize(m_places.size());
        m_listOf[place] = listOf(m_places[place].node);
        Key key{m_listOf[place], {}, {}};
        if (m_lists[m_listOf[place]].empty())
            std::get<1>(key) = nameOf(m_places[place].node);
        for (const PlacedMesh& mesh : m_places[place].meshes)
            std::get<2>(key).push_back(mesh.mesh->positions.data());
        m_places[place].product = m_products.try_emplace(std::move(key), m_products.size()).first->second;
    }

    static std::string nameOf(const osg::NodePtr& node)
    {
        const char* name = osg::getName(node);
        return name ? name : "";
    }

    /// Equal lists of several files have one number.
    std::size_t listOf(const osg::NodePtr& node)
    {
        const auto attachment = osg::attributeAttachment(node, osg::AttributeOwner::Product);
        const auto [entry, isNew] = m_listOfAttachment.try_emplace(attachment.get());
        if (!isNew)
            return entry->second;
        osg::AttributeList list = attachment ? attachment->attributes() : osg::AttributeList();
        std::string text;
        for (const osg::Attribute& attribute : list)
            text += attribute.name + '\0' + osg::textOf(attribute) + '\0';
        const auto [known, isNewText] = m_listOfText.try_emplace(std::move(text), m_lists.size());
        if (isNewText)
            m_lists.push_back(std::move(list));
        return entry->second = known->second;
    }

    std::vector<Place> m_places; ///< the first is that of the root, which is no product
    std::vector<osg::AttributeList> m_lists;
    std::vector<std::size_t> m_listOf; ///< by place
    std::unordered_map<const osg::FieldContainer*, std::size_t> m_listOfAttachment;
    std::unordered_map<std::string, std::size_t> m_listOfText;
    std::map<Key, std::size_t> m_products;
};

/// Makes the rows of products, each measured once.
class RowMaker
{
public:
    RowMaker(const osg::NodePtr& root, const Inventory& inventory)
        : m_inventory(inventory), m_ids(root), m_rows(inventory.products()), m_firstPlace(inventory.products(), 0)
    {
        for (std::size_t i = inventory.places().size(); i-- > 1;)
            m_firstPlace[inventory.places()[i].product] = i;
        // What a product consists of is behind the last place of it, so that it is there when it is summed up.
        for (std::size_t i = inventory.places().size(); i-- > 1;)
            if (!m_rows[inventory.places()[i].product])
                make(i);
    }

    std::size_t firstPlace(std::size_t product) const { return m_firstPlace[product]; }
    const PartsListRow& row(std::size_t product) const { return *m_rows[product]; }

    /// How often each product is in a place, in the order of their first occurrence there.
    std::vector<std::pair<std::size_t, std::size_t>> counted(std::size_t place) const
    {
        std::vector<std::pair<std::size_t, std::size_t>> counts;
        std::unordered_map<std::size_t, std::size_t> known;
        for (const std::size_t child : m_inventory.places()[place].children) {
            const std::size_t product = m_inventory.places()[child].product;
            const auto [entry, isNew] = known.try_emplace(product, counts.size());
            if (isNew)
                counts.emplace_back(product, 0);
            ++counts[entry->second].second;
        }
        return counts;
    }

private:
    void make(std::size_t number)
    {
        const Place& place = m_inventory.places()[number];
        const osg::AttributeList& attributes = m_inventory.attributes(number);
        PartsListRow row;
        row.attributes = attributes;
        row.product = osg::findText(attributes, ProductName);
        if (const char* name = osg::getName(place.node); row.product.empty() && name)
            row.product = name;
        row.path = m_ids.of(m_inventory.places()[m_firstPlace[place.product]].node);
        row.material = osg::findText(attributes, MaterialName);
        row.density = numberOf(attributes, DensityName);
        measureInto(place, row);
        if (row.volume && row.density)
            row.mass = *row.volume * *row.density * kilogramsPerGramOfMm3;
        addChildren(number, row);
        m_rows[place.product] = std::move(row);
    }

    static void measureInto(const Place& place, PartsListRow& row)
    {
        row.volume = numberOf(row.attributes, ExactVolumeName);
        row.area = numberOf(row.attributes, ExactAreaName);
        row.origin = row.area ? MeasureOrigin::Exact : MeasureOrigin::None;
        if (row.area || place.meshes.empty())
            return;
        const MeshMeasures measures = measure(place.meshes);
        row.area = measures.area > 0 ? std::optional(measures.area) : std::nullopt;
        row.volume = measures.volume;
        row.origin = row.area ? MeasureOrigin::Mesh : MeasureOrigin::None;
    }

    /// A sum of which a part is not known is not known.
    static void addTo(std::optional<double>& sum, std::optional<double> part, double count)
    {
        sum = sum && part ? std::optional(*sum + *part * count) : std::nullopt;
    }

    void addChildren(std::size_t number, PartsListRow& row) const
    {
        const auto children = counted(number);
        if (children.empty())
            return;
        if (row.origin == MeasureOrigin::None)
            row.area = row.volume = row.mass = 0;
        row.origin = MeasureOrigin::Sum;
        for (const auto& [product, count] : children) {
            addTo(row.area, m_rows[product]->area, static_cast<double>(count));
            addTo(row.volume, m_rows[product]->volume, static_cast<double>(count));
            addTo(row.mass, m_rows[product]->mass, static_cast<double>(count));
        }
    }

    const Inventory& m_inventory;
    osg::OccurrenceIds m_ids;
    std::vector<std::optional<PartsListRow>> m_rows;
    std::vector<std::size_t> m_firstPlace;
};

std::vector<PartsListRow> flatList(const Inventory& inventory, const RowMaker& rows)
{
    std::vector<std::size_t> counts(inventory.products(), 0);
    std::vector<std::size_t> order;
    for (std::size_t i = 1; i < inventory.places().size(); ++i) {
        const Place& place = inventory.places()[i];
        if (place.children.empty() && counts[place.product]++ == 0)
            order.push_back(place.product);
    }
    std::vector<PartsListRow> list;
    for (const std::size_t product : order) {
        list.push_back(rows.row(product));
        list.back().count = counts[product];
    }
    return list;
}

std::vector<PartsListRow> indentedList(const RowMaker& rows)
{
    struct Step {
        std::size_t product;
        std::size_t count;
        unsigned level;
    };
    std::vector<PartsListRow> list;
    std::vector<Step> pending;
    const auto expand = [&](std::size_t place, unsigned level) {
        const auto children = rows.counted(place);
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            pending.push_back({child->first, child->second, level});
    };
    for (expand(0, 0); !pending.empty();) {
        const Step step = pending.back();
        pending.pop_back();
        list.push_back(rows.row(step.product));
        list.back().count = step.count;
        list.back().level = step.level;
        expand(rows.firstPlace(step.product), step.level + 1);
    }
    return list;
}

} // namespace

std::vector<PartsListRow> partsList(const osg::NodePtr& root, PartsListLevels levels)
{
    if (!root)
        return {};
    const Inventory inventory(root);
    const RowMaker rows(root, inventory);
    return levels == PartsListLevels::Flat ? flatList(inventory, rows) : indentedList(rows);
}

} // namespace importer::inventory
