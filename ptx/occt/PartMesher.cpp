#include "ptx/occt/PartMesher.h"

#include "ptx/occt/PartWork.h"
#include "ptx/occt/WorkPlan.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <exception>
#include <functional>
#include <thread>

namespace ptx::occt
{

namespace
{

class PartMesher
{
public:
    PartMesher(std::vector<occt::meshing::ShapeBody> shapes, const model::Job& job, HealingAhead* ahead)
        : m_shapes(std::move(shapes)), m_job(job), m_ahead(ahead), m_plan(planWork(m_shapes)),
          m_bodies(m_shapes.size()), m_threads(core::threadCount(job.settings))
    {
        for (const WorkGroup& group : m_plan)
            m_allFaces += group.faces;
    }

    void stitch()
    {
        m_job.progress.begin(core::Stage::Stitch);
        const auto start = std::chrono::steady_clock::now();
        const double limit = m_job.settings.number(core::Setting::StitchTime);
        forEachPart([&](std::size_t part, const WorkGroup& group) {
            const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
            healPart(m_shapes[part], m_job, mayShare(group), m_ahead);
            stitchPart(m_shapes[part], m_job, limit == 0 ? 0 : std::max(0.001, limit - passed.count()));
        });
        m_isHealed = true;
    }

    std::vector<model::Body> mesh()
    {
        m_job.progress.begin(core::Stage::Tessellate);
        forEachPart([this](std::size_t part, const WorkGroup& group) {
            occt::meshing::ShapeBody shape = std::move(m_shapes[part]);
            if (!m_isHealed)
                healPart(shape, m_job, mayShare(group), m_ahead);
            take(part, meshPart(shape, m_job, budgetFor(group)));
        });
        tellCounts();
        return std::move(m_bodies);
    }

private:
    using Work = std::function<void(std::size_t part, const WorkGroup& group)>;

    void forEachPart(const Work& work)
    {
        m_next = 0;
        m_doneFaces = 0;
        const std::size_t helpers = std::min<std::size_t>(m_threads, m_plan.size());
        std::vector<std::thread> threads;
        for (std::size_t i = 1; i < helpers; ++i)
            threads.emplace_back([&] { takeGroups(work); });
        takeGroups(work);
        for (std::thread& thread : threads)
            thread.join();
        if (m_thrown)
            std::rethrow_exception(m_thrown);
    }

    void takeGroups(const Work& work)
    {
        try {
            for (std::size_t next = m_next++; next < m_plan.size(); next = m_next++) {
                for (const std::size_t part : m_plan[next].parts)
                    workOn(part, m_plan[next], work);
                m_doneFaces += m_plan[next].faces;
                m_job.progress.report(share(m_doneFaces));
            }
        } catch (...) {
            if (!m_hasThrown.exchange(true))
                m_thrown = std::current_exception();
        }
    }

    void workOn(std::size_t part, const WorkGroup& group, const Work& work)
    {
        if (m_job.rescue.isLost(part))
            return;
        const core::Rescue::Mark mark = m_job.rescue.workOnPart(part);
        work(part, group);
    }

    double share(std::size_t faces) const
    {
        return static_cast<double>(faces) / static_cast<double>(std::max<std::size_t>(1, m_allFaces));
    }

    // A part that is more than its share of the work would keep the other threads waiting, and so would the last ones.
    bool mayShare(const WorkGroup& group) const
    {
        return m_threads > 1 && (group.faces * m_threads > m_allFaces || m_next >= m_plan.size());
    }

    // A part that is more than its share of the faces may have its share of the triangles.
    PartBudget budgetFor(const WorkGroup& group) const
    {
        constexpr double Least = 10000;
        const double most = m_job.settings.number(core::Setting::MostTriangles);
        return {mayShare(group), most == 0 ? 0 : std::max(Least, most * share(group.faces))};
    }

    void take(std::size_t part, PartResult result)
    {
        m_faces += result.faces;
        m_emptyFaces += result.emptyFaces;
        m_triangles += result.triangles;
        m_bodies[part] = std::move(result.body);
    }

    void tellCounts()
    {
        m_job.log.info(std::to_string(m_bodies.size()) + " distinct parts, " + std::to_string(m_faces) + " faces (" +
                       std::to_string(m_emptyFaces) + " without mesh), " + std::to_string(m_triangles) +
                       " triangles, on " + std::to_string(m_threads) + " threads");
    }

    std::vector<occt::meshing::ShapeBody> m_shapes;
    const model::Job& m_job;
    HealingAhead* m_ahead;
    std::vector<WorkGroup> m_plan;
    std::vector<model::Body> m_bodies;
    unsigned m_threads;
    std::size_t m_allFaces = 0;
    bool m_isHealed = false;
    std::atomic<std::size_t> m_next{0};
    std::atomic<std::size_t> m_faces{0};
    std::atomic<std::size_t> m_emptyFaces{0};
    std::atomic<std::size_t> m_triangles{0};
    std::atomic<std::size_t> m_doneFaces{0};
    std::atomic<bool> m_hasThrown{false};
    std::exception_ptr m_thrown;
};

} // namespace

core::Outcome<std::vector<model::Body>> meshParts(std::vector<occt::meshing::ShapeBody> shapes, const model::Job& job,
                                                  Loose loose, HealingAhead* ahead)
{
    PartMesher mesher(std::move(shapes), job, ahead);
    if (loose == Loose::Stitch)
        mesher.stitch();
    return mesher.mesh();
}

} // namespace ptx::occt
