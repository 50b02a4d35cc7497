#include "scene/HeldMaterialComparison.h"

#include "host/OSGSystem/Names.h"

#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace osg
{

namespace
{

using Pair = std::pair<const Material*, const Material*>;

/// The pairs of materials that are still to be compared. Materials may be nested deeper than the call stack, and be
/// held in many places: each pair is compared once.
class Comparison
{
public:
    /// False when it is clear already that the entries differ.
    bool add(const MaterialField& a, const MaterialField& b)
    {
        if (a.size() != b.size())
            return false;
        for (std::size_t i = 0; i < a.size(); ++i) {
            if (a[i] == b[i])
                continue;
            if (!a[i] || !b[i] || nameOf(a[i]) != nameOf(b[i]))
                return false;
            if (m_met.emplace(a[i].get(), b[i].get()).second)
                m_pending.emplace_back(a[i], b[i]);
        }
        return true;
    }

    bool run()
    {
        while (!m_pending.empty()) {
            const auto [a, b] = m_pending.back();
            m_pending.pop_back();
            if (!FieldContainer::isEqual(a, b))
                return false;
        }
        return true;
    }

private:
    static std::string_view nameOf(const MaterialPtr& material)
    {
        const char* name = getName(material);
        return name ? name : std::string_view();
    }

    std::set<Pair> m_met;
    std::vector<std::pair<MaterialPtr, MaterialPtr>> m_pending;
};

/// The one that is under way: materials that it compares add what they hold to it.
Comparison* running = nullptr;

} // namespace

bool holdEqualMaterials(const MaterialField& a, const MaterialField& b)
{
    if (running)
        return running->add(a, b);
    Comparison comparison;
    running = &comparison;
    const bool areEqual = comparison.add(a, b) && comparison.run();
    running = nullptr;
    return areEqual;
}

} // namespace osg
