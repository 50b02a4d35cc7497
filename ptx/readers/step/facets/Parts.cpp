#include "ptx/readers/step/facets/Parts.h"

#include "ptx/readers/step/facets/Colors.h"
#include "ptx/readers/step/facets/CoordinateLists.h"
#include "ptx/readers/step/facets/ProductShapes.h"
#include "ptx/readers/step/p21/TypeSearch.h"

#include <algorithm>
#include <utility>

namespace ptx::step::facets
{

namespace
{

/// What the entities are that lead from products to tessellated shapes.
enum Class { Shape, Relation, Tessellated, Styled, ClassCount };

int classOf(std::string_view type)
{
    if (type.starts_with("TESSELLATED_SHAPE_REPRESENTATION"))
        return Tessellated;
    if (type == "SHAPE_DEFINITION_REPRESENTATION")
        return Shape;
    if (type == "SHAPE_REPRESENTATION_RELATIONSHIP")
        return Relation;
    return type == "STYLED_ITEM" || type == "OVER_RIDING_STYLED_ITEM" ? Styled : p21::NotWanted;
}

int classOfTessellated(std::string_view type)
{
    return classOf(type) == Tessellated ? 0 : p21::NotWanted;
}

using Numbers = std::vector<std::uint32_t>;

/// By class, in the order of the text.
using Census = std::array<Numbers, ClassCount>;

Census takeCensus(const p21::Records& records)
{
    Census census;
    p21::forEachTyped(records, classOf, [&census](int found, std::uint32_t number) {
        Numbers& numbers = census[static_cast<std::size_t>(found)];
        if (numbers.empty() || numbers.back() != number)
            numbers.push_back(number);
    });
    return census;
}

class PartReader
{
public:
    PartReader(const p21::Records& records, const p21::EntityIndex& index)
        : m_entities(records, index), m_census(takeCensus(records)), m_products(m_entities, m_census[Shape]),
          m_points(m_entities, [this](std::size_t count) { return take(count); })
    {
        addRelations();
        for (const std::uint32_t styled : m_census[Styled])
            m_styles.insert_or_assign(m_entities.own(styled, "STYLED_ITEM", 1).reference(1), styled);
    }

    Parts read()
    {
        for (const std::uint32_t number : m_census[Tessellated])
            if (const std::uint32_t product = productOf(number); product != 0)
                addPart(number, product);
            else
                ++m_parts.ofNoProduct;
        return std::move(m_parts);
    }

private:
    using Color = std::optional<osg::Color4f>;

    /// What two representations of one thing are: that one of a product, the other one tessellated, for instance.
    void addRelations()
    {
        for (const std::uint32_t number : m_census[Relation]) {
            if (m_entities.isA(number, "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION"))
                continue; // a product at its place in another one
            const p21::Fields relation = m_entities.own(number, "REPRESENTATION_RELATIONSHIP", 0);
            const std::uint32_t sides[] = {relation.reference(2), relation.reference(3)};
            for (const int side : {0, 1})
                if (const std::uint32_t product = m_products.of(sides[1 - side]); product != 0)
                    m_related.try_emplace(sides[side], product);
        }
    }

    std::uint32_t productOf(std::uint32_t representation) const
    {
        if (const std::uint32_t own = m_products.of(representation); own != 0)
            return own;
        const auto related = m_related.find(representation);
        return related == m_related.end() ? 0 : related->second;
    }

    void addPart(std::uint32_t number, std::uint32_t product)
    {
        const p21::Fields representation = m_entities.own(number, "REPRESENTATION", 0);
        const p21::Fields items = representation.list(1);
        Part part;
        part.product = product;
        part.context = representation.reference(2);
        for (std::size_t i = 0; i < items.size() && take(1); ++i)
            addItem(items.reference(i), {}, std::nullopt, part);
        if (!part.faces.empty())
            m_parts.parts.push_back(std::move(part));
    }

    /// The list of faces of `number`, when it is a body or a set.
    p21::Fields facesOf(std::uint32_t number) const
    {
        for (const char* type : {"TESSELLATED_SOLID", "TESSELLATED_SHELL", "TESSELLATED_GEOMETRIC_SET"})
            if (m_entities.isA(number, type))
                return m_entities.own(number, type, 1).list(0);
        return {};
    }

    void addItem(std::uint32_t number, Places places, const Color& around, Part& part)
    {
        constexpr std::size_t Deepest = 16;
        const Color own = colorOf(number);
        const Color& color = own ? own : around;
        const p21::Fields item = m_entities.at(number);
        if (Surface::isOne(item.type()))
            return addFace(Surface(item), places, color, part);
        const p21::Fields faces = facesOf(number);
        if (!faces || places.size() > Deepest)
            return countUnread(item.type());
        const bool isMoved = m_entities.isA(number, "REPOSITIONED_TESSELLATED_ITEM");
        places.push_back(
            isMoved ? axesOf(m_entities, m_entities.own(number, "REPOSITIONED_TESSELLATED_ITEM", 0).reference(0))
                    : Axes());
        for (std::size_t i = 0; i < faces.size() && take(1); ++i)
            addItem(faces.reference(i), places, color, part);
    }

    void addFace(const Surface& surface, const Places& places, const Color& color, Part& part)
    {
        FaceMesh mesh = faceMesh(
            surface, m_points.of(surface.points()), places, true, [this] { return take(1); }, m_parts.counts);
        if (!mesh.triangles.empty())
            part.faces.push_back({std::move(mesh), color});
    }

    Color colorOf(std::uint32_t item) const
    {
        const auto styled = m_styles.find(item);
        if (styled == m_styles.end())
            return std::nullopt;
        return surfaceColor(m_entities, m_entities.own(styled->second, "STYLED_ITEM", 1).list(0));
    }

    // Axes of the part stand among its items.
    void countUnread(std::string_view type)
    {
        if (!type.starts_with("AXIS2_PLACEMENT"))
            ++m_parts.unread[type.empty() ? "an entity that is not there" : std::string(type)];
    }

    bool take(std::size_t count)
    {
        m_parts.isCut = m_parts.isCut || count > m_left;
        m_left -= m_parts.isCut ? 0 : count;
        return !m_parts.isCut;
    }

    p21::Entities m_entities;
    Census m_census;
    ProductShapes m_products;
    std::unordered_map<std::uint32_t, std::uint32_t> m_related; ///< products, by representation
    std::unordered_map<std::uint32_t, std::uint32_t> m_styles;  ///< by what they style; the last one counts
    CoordinateLists m_points;
    Parts m_parts;
    std::size_t m_left = 40'000'000; ///< points and triangles that may still come
};

} // namespace

Parts readParts(const p21::Records& records, const p21::EntityIndex& index)
{
    return p21::hasType(records, classOfTessellated) ? PartReader(records, index).read() : Parts();
}

} // namespace ptx::step::facets
