#pragma once

#include "ptx/readers/step/annotations/Census.h"
#include "ptx/readers/step/facets/ProductShapes.h"
#include "ptx/readers/step/p21/Entities.h"

namespace ptx::step::annotations
{

/// Where annotations belong.
struct Home {
    std::uint32_t context = 0; ///< of its numbers: number of the entity that names their unit, 0 when nothing tells
    std::uint32_t product = 0; ///< number of the product definition, 0 when nothing tells
};

/// The homes of annotations: the draughting models that list them, by themselves, in callouts or on planes.
class Homes
{
public:
    Homes(const p21::Entities& entities, const Census& census);

    /// Of a callout or an occurrence. The first model that has it and knows its product counts.
    Home of(std::uint32_t number) const;

private:
    using Numbers = std::unordered_map<std::uint32_t, std::uint32_t>;

    void addModels(const Census& census);
    void addRelations(const Census& census);
    void addLinks(const Census& census);
    void addItems(const Census& census);
    std::uint32_t productBehind(std::uint32_t number) const;
    std::uint32_t mappedProduct(const p21::Fields& items) const;
    void settle(std::uint32_t number, const Home& home);

    const p21::Entities& m_entities;
    facets::ProductShapes m_products;
    std::unordered_map<std::uint32_t, Home> m_models;
    std::unordered_map<std::uint32_t, Home> m_homes;
};

} // namespace ptx::step::annotations
