#include "ptx/readers/step/annotations/Listings.h"

#include <algorithm>
#include <iterator>

namespace ptx::step::annotations
{

Listings::Listings(const p21::Entities& entities, const Census& census, std::size_t most) : m_left(most)
{
    Census::Numbers models = census.models;
    std::sort(models.begin(), models.end());
    for (const std::uint32_t model : models) {
        const p21::Fields items = entities.own(model, "REPRESENTATION", 0).list(1);
        for (std::size_t i = 0; i < items.size(); ++i)
            if (Numbers& known = m_models[items.reference(i)]; known.empty() || known.back() != model)
                known.push_back(model);
    }
    for (const std::uint32_t plane : census.planes) {
        const p21::Fields elements = entities.own(plane, "ANNOTATION_PLANE", 3).list(0);
        for (std::size_t i = 0; i < elements.size(); ++i)
            m_planes[elements.reference(i)].push_back(plane);
    }
    for (const std::uint32_t hiding : census.hidings) {
        const p21::Fields items = entities.at(hiding).list(0);
        for (std::size_t i = 0; i < items.size(); ++i)
            m_hidden.insert(items.reference(i));
    }
}

void Listings::addTo(Callout& callout, std::uint32_t number)
{
    if (number == 0)
        return;
    callout.isHidden = callout.isHidden || m_hidden.contains(number);
    addModels(callout, number);
    if (const auto planes = m_planes.find(number); planes != m_planes.end())
        for (const std::uint32_t plane : planes->second)
            addModels(callout, plane);
}

void Listings::addModels(Callout& callout, std::uint32_t number)
{
    const auto listed = m_models.find(number);
    if (listed == m_models.end())
        return;
    const std::size_t work = listed->second.size() + callout.models.size();
    if (work > m_left) {
        m_isCut = true;
        return;
    }
    m_left -= work;
    Numbers all;
    std::set_union(callout.models.begin(), callout.models.end(), listed->second.begin(), listed->second.end(),
                   std::back_inserter(all));
    callout.models = std::move(all);
}

} // namespace ptx::step::annotations
