#pragma once

#include "ptx/readers/step/annotations/Census.h"
#include "ptx/readers/step/annotations/Drawing.h"
#include "ptx/readers/step/p21/Entities.h"

#include <unordered_set>

namespace ptx::step::annotations
{

/// Which draughting models list annotations, by themselves or on planes, and which annotations are hidden. A view shows
/// what the model of its camera lists.
class Listings
{
public:
    explicit Listings(const p21::Entities& entities, const Census& census, std::size_t most = MostModels);

    /// Adds to `callout` what is known of `number`: itself or an occurrence in it.
    void addTo(Callout& callout, std::uint32_t number);
    /// Whether callouts got so many models that the rest was left out.
    bool isCut() const { return m_isCut; }

private:
    using Numbers = std::vector<std::uint32_t>;
    static constexpr std::size_t MostModels = 10'000'000;

    void addModels(Callout& callout, std::uint32_t number);

    std::unordered_map<std::uint32_t, Numbers> m_models; ///< by what they list, rising
    std::unordered_map<std::uint32_t, Numbers> m_planes; ///< by what is written on them
    std::unordered_set<std::uint32_t> m_hidden;
    std::size_t m_left;
    bool m_isCut = false;
};

} // namespace ptx::step::annotations
