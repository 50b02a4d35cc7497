#include "tools/ptxconvert/kernel/PartMesher.h"

#include "tools/ptxconvert/kernel/Healing.h"
#include "tools/ptxconvert/kernel/KernelGuard.h"
#include "tools/ptxconvert/kernel/MeshExtraction.h"
#include "tools/ptxconvert/kernel/Meshing.h"
#include "tools/ptxconvert/kernel/WorkPlan.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <thread>

namespace ptx
{

namespace
{

class PartMesher
{
public:
    PartMesher(std::vector<ShapeBody> shapes, const Job& job)
        : m_shapes(std::move(shapes)), m_job(job), m_plan(planWork(m_shapes)), m_bodies(m_shapes.size())
    {
        for (const WorkGroup& group : m_plan)
            m_allFaces += group.faces;
        m_threads = static_cast<unsigned>(job.settings.number(Setting::Threads));
        if (m_threads == 0)
            m_threads = std::max(1u, std::thread::hardware_concurrency());
    }

    std::vector<Body> run()
    {
        const std::size_t helpers = std::min<std::size_t>(m_threads, m_plan.size());
        std::vector<std::thread> threads;
        for (std::size_t i = 1; i < helpers; ++i)
            threads.emplace_back([this] { work(); });
        work();
        for (std::thread& thread : threads)
            thread.join();
        if (m_thrown)
            std::rethrow_exception(m_thrown);
        tellCounts();
        return std::move(m_bodies);
    }

private:
    void work()
    {
        try {
            for (std::size_t next = m_next++; next < m_plan.size(); next = m_next++)
                for (const std::size_t part : m_plan[next].parts)
                    process(part, m_plan[next]);
        } catch (...) {
            if (!m_hasThrown.exchange(true))
                m_thrown = std::current_exception();
        }
    }

    void process(std::size_t part, const WorkGroup& group)
    {
        ShapeBody shape = std::move(m_shapes[part]);
        if (m_job.settings.isOn(Setting::Heal))
            warn(guarded("healing", [&]() -> Trouble { return heal(shape), std::nullopt; }), shape);
        warn(guarded("meshing", [&] { return mesh(part, shape, group); }), shape);
    }

    Trouble mesh(std::size_t part, const ShapeBody& shape, const WorkGroup& group)
    {
        const Tolerance tolerance = toleranceFor(shape.shape, m_job.settings);
        // A part that is more than its share would keep the other threads waiting.
        const bool isBig = m_threads > 1 && group.faces * m_threads > m_allFaces;
        tessellate(shape.shape, tolerance, isBig);
        Extraction result = extract(shape, tolerance);
        m_faces += result.faces;
        m_emptyFaces += result.emptyFaces;
        m_triangles += result.triangles;
        if (result.emptyFaces > 0)
            m_job.log.warning(std::to_string(result.emptyFaces) + " of " + std::to_string(result.faces) +
                              " faces of part \"" + shape.name + "\" got no mesh");
        m_bodies[part] = std::move(result.body);
        m_doneFaces += result.faces;
        m_job.progress.report(static_cast<double>(m_doneFaces) /
                              static_cast<double>(std::max<std::size_t>(1, m_allFaces)));
        return std::nullopt;
    }

    void warn(const Trouble& trouble, const ShapeBody& shape)
    {
        if (trouble)
            m_job.log.warning("part \"" + shape.name + "\": " + trouble->message);
    }

    void tellCounts()
    {
        m_job.log.info(std::to_string(m_bodies.size()) + " distinct parts, " + std::to_string(m_faces) + " faces (" +
                       std::to_string(m_emptyFaces) + " without mesh), " + std::to_string(m_triangles) +
                       " triangles, on " + std::to_string(m_threads) + " threads");
    }

    std::vector<ShapeBody> m_shapes;
    const Job& m_job;
    std::vector<WorkGroup> m_plan;
    std::vector<Body> m_bodies;
    unsigned m_threads = 1;
    std::size_t m_allFaces = 0;
    std::atomic<std::size_t> m_next{0};
    std::atomic<std::size_t> m_faces{0};
    std::atomic<std::size_t> m_emptyFaces{0};
    std::atomic<std::size_t> m_triangles{0};
    std::atomic<std::size_t> m_doneFaces{0};
    std::atomic<bool> m_hasThrown{false};
    std::exception_ptr m_thrown;
};

} // namespace

Outcome<std::vector<Body>> meshParts(std::vector<ShapeBody> shapes, const Job& job)
{
    job.progress.begin(Stage::Tessellate);
    return PartMesher(std::move(shapes), job).run();
}

} // namespace ptx
