#pragma once

#include "ptx/readers/step/p21/Entities.h"

#include <cstdint>
#include <span>
#include <unordered_map>

namespace ptx::step::facets
{

/// The products that representations are the shapes of.
class ProductShapes
{
public:
    /// `shapes` are the numbers of the entities that tell so.
    ProductShapes(const p21::Entities& entities, std::span<const std::uint32_t> shapes);

    /// The number of the product definition whose own shape the representation is; 0 for none. A part of a product has
    /// representations too, which are not the product's.
    std::uint32_t of(std::uint32_t representation) const;

private:
    std::unordered_map<std::uint32_t, std::uint32_t> m_products;
};

} // namespace ptx::step::facets
