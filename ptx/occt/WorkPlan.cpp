#include "ptx/occt/WorkPlan.h"

#include <TopExp_Explorer.hxx>
#include <TopoDS_TShape.hxx>

#include <algorithm>
#include <numeric>
#include <unordered_map>

namespace ptx::occt
{

namespace
{

/// Sets of parts that grow together.
class Groups
{
public:
    explicit Groups(std::size_t count) : m_parents(count) { std::iota(m_parents.begin(), m_parents.end(), 0u); }

    std::size_t find(std::size_t part)
    {
        while (m_parents[part] != part)
            part = m_parents[part] = m_parents[m_parents[part]];
        return part;
    }

    void join(std::size_t a, std::size_t b) { m_parents[find(a)] = find(b); }

private:
    std::vector<std::size_t> m_parents;
};

} // namespace

std::vector<WorkGroup> planWork(const std::vector<occt::meshing::ShapeBody>& shapes)
{
    Groups groups(shapes.size());
    std::vector<std::size_t> faces(shapes.size());
    std::unordered_map<const TopoDS_TShape*, std::size_t> owners;
    for (std::size_t part = 0; part < shapes.size(); ++part)
        for (TopExp_Explorer face(shapes[part].shape, TopAbs_FACE); face.More(); face.Next()) {
            ++faces[part];
            groups.join(part, owners.try_emplace(face.Current().TShape().get(), part).first->second);
        }
    std::unordered_map<std::size_t, WorkGroup> found;
    for (std::size_t part = 0; part < shapes.size(); ++part) {
        WorkGroup& group = found[groups.find(part)];
        group.parts.push_back(part);
        group.faces += faces[part];
    }
    std::vector<WorkGroup> plan;
    plan.reserve(found.size());
    for (auto& [root, group] : found)
        plan.push_back(std::move(group));
    std::sort(plan.begin(), plan.end(), [](const WorkGroup& a, const WorkGroup& b) {
        return a.faces != b.faces ? a.faces > b.faces : a.parts.front() < b.parts.front();
    });
    return plan;
}

} // namespace ptx::occt
