#include "ptx/readers/step/facets/ProductShapes.h"

namespace ptx::step::facets
{

ProductShapes::ProductShapes(const p21::Entities& entities, std::span<const std::uint32_t> shapes)
{
    for (const std::uint32_t number : shapes) {
        const p21::Fields shape = entities.at(number);
        const p21::Fields definition = entities.at(shape.reference(0));
        if (definition.type() != "PRODUCT_DEFINITION_SHAPE")
            continue; // a part of a product has one of these of its own
        const std::uint32_t product = definition.reference(2);
        if (entities.at(product).type().starts_with("PRODUCT_DEFINITION"))
            m_products.try_emplace(shape.reference(1), product);
    }
}

std::uint32_t ProductShapes::of(std::uint32_t representation) const
{
    const auto found = m_products.find(representation);
    return found == m_products.end() ? 0 : found->second;
}

} // namespace ptx::step::facets
