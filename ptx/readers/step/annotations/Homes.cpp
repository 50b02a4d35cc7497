#include "ptx/readers/step/annotations/Homes.h"

#include <algorithm>

namespace ptx::step::annotations
{

namespace
{

/// Parameters of a representation: name, items, context.
constexpr std::size_t Items = 1;
constexpr std::size_t Context = 2;

} // namespace

Homes::Homes(const p21::Entities& entities, const Census& census)
    : m_entities(entities), m_products(entities, census.shapes)
{
    addModels(census);
    addRelations(census);
    addLinks(census);
    addItems(census);
}

Home Homes::of(std::uint32_t number) const
{
    const auto home = m_homes.find(number);
    return home == m_homes.end() ? Home() : home->second;
}

void Homes::addModels(const Census& census)
{
    for (const std::uint32_t number : census.models) {
        const p21::Fields model = m_entities.own(number, "REPRESENTATION", 0);
        m_models[number] = {model.reference(Context), mappedProduct(model.list(Items))};
    }
}

std::uint32_t Homes::mappedProduct(const p21::Fields& items) const
{
    for (std::size_t i = 0; i < items.size(); ++i) {
        const p21::Fields item = m_entities.at(items.reference(i));
        if (item.type() != "MAPPED_ITEM")
            continue;
        const std::uint32_t shape = m_entities.at(item.reference(1)).reference(1);
        if (const std::uint32_t product = m_products.of(shape); product != 0)
            return product;
    }
    return 0;
}

void Homes::addRelations(const Census& census)
{
    for (const std::uint32_t number : census.relations) {
        const p21::Fields relation = m_entities.at(number);
        const std::uint32_t sides[] = {relation.reference(2), relation.reference(3)};
        for (const int side : {0, 1}) {
            const auto model = m_models.find(sides[side]);
            if (model == m_models.end() || model->second.product != 0)
                continue;
            if (const std::uint32_t product = m_products.of(sides[1 - side]); product != 0)
                model->second.product = product;
            else if (const auto other = m_models.find(sides[1 - side]); other != m_models.end())
                model->second.product = other->second.product;
        }
    }
}

/// A model that maps nothing belongs to the product whose aspects it draws, when these are of one.
void Homes::addLinks(const Census& census)
{
    Numbers linked;
    for (const std::uint32_t number : census.links) {
        const p21::Fields link = m_entities.at(number);
        const auto model = m_models.find(link.reference(3));
        if (model == m_models.end() || model->second.product != 0)
            continue;
        const std::uint32_t product = productBehind(link.reference(2));
        const auto [entry, isNew] = linked.try_emplace(model->first, product);
        if (!isNew && entry->second != product)
            entry->second = 0;
    }
    for (const auto& [model, product] : linked)
        m_models[model].product = product;
}

std::uint32_t Homes::productBehind(std::uint32_t number) const
{
    return m_entities.firstReached(number, [this](std::uint32_t reached) {
        const std::string_view type = m_entities.at(reached).type();
        return type == "PRODUCT_DEFINITION" || type.starts_with("PRODUCT_DEFINITION_WITH");
    });
}

void Homes::addItems(const Census& census)
{
    for (const std::uint32_t number : census.models) {
        const p21::Fields items = m_entities.own(number, "REPRESENTATION", 0).list(Items);
        for (std::size_t i = 0; i < items.size(); ++i)
            settle(items.reference(i), m_models[number]);
    }
    for (const std::uint32_t number : census.planes) {
        const p21::Fields elements = m_entities.own(number, "ANNOTATION_PLANE", 3).list(0);
        for (std::size_t i = 0; i < elements.size(); ++i)
            settle(elements.reference(i), of(number));
    }
    for (const std::uint32_t number : census.callouts) {
        const p21::Fields contents = m_entities.own(number, "DRAUGHTING_CALLOUT", 1).list(0);
        for (std::size_t i = 0; i < contents.size(); ++i) {
            settle(contents.reference(i), of(number));
            settle(number, of(contents.reference(i)));
        }
    }
}

void Homes::settle(std::uint32_t number, const Home& home)
{
    Home& own = m_homes[number];
    if (number != 0 && (own.context == 0 || (own.product == 0 && home.product != 0)))
        own = home;
}

} // namespace ptx::step::annotations
