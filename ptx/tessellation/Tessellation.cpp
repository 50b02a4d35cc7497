#include "ptx/tessellation/Tessellation.h"

#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "protocol/FileNames.h"
#include "protocol/Printable.h"
#include "ptx/box/Box.h"
#include "ptx/core/Monitor.h"
#include "ptx/core/PartMarks.h"
#include "ptx/core/ProcessEnd.h"
#include "ptx/tessellation/BrepMeshing.h"
#include "scene/GeometryWalk.h"
#include "scene/SceneEdits.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <numeric>
#include <thread>

namespace ptx::tessellation
{

namespace
{

/// One geometry of the input and what became of it.
struct Part {
    osg::Buffer<std::byte> brep;
    std::shared_ptr<const osg::Mesh> mesh; ///< null when there is none
    std::string reason;                    ///< why there is none
};

class Tessellation
{
public:
    Tessellation(const TessellationOptions& options, const core::Outcome<std::string>& box)
        : m_options(options), m_box(box), m_log(options.output + protocol::LogSuffix),
          m_progressFile(options.output + protocol::ProgressSuffix)
    {
    }

    core::ExitCode run()
    {
        core::processend::install(m_log, m_progress, m_options.output);
        if (!m_log.isOpen())
            return fail({core::ExitCode::OutputFailed, m_log.trouble()});
        if (!m_box)
            return fail(m_box.failure());
        m_log.info(m_box.value());
        if (!m_progressFile.isOpen())
            m_log.warning(m_progressFile.trouble() + "; no progress is told");
        std::error_code unknown;
        const std::uintmax_t bytes = std::filesystem::file_size(m_options.input, unknown);
        core::Limits limits(m_options.settings, unknown ? 0 : bytes);
        core::Trouble trouble;
        {
            const core::Monitor monitor(m_progress, m_progressFile, limits, m_log);
            try {
                trouble = work();
            } catch (const std::bad_alloc&) {
                trouble = limits.memoryFailure();
            }
        }
        return trouble ? fail(*trouble) : core::ExitCode::Success;
    }

private:
    core::ExitCode fail(const core::Failure& failure)
    {
        m_log.error(failure.message);
        protocol::print(stderr, "ptxtessellate: " + failure.message + '\n');
        return failure.code;
    }

    core::Trouble work()
    {
        m_progress.begin(core::Stage::ReadAndProcess);
        if (core::Trouble trouble = read())
            return trouble;
        m_progress.begin(core::Stage::Tessellate);
        silenceOcct();
        meshAll();
        m_progress.begin(core::Stage::Write);
        return write();
    }

    core::Trouble read()
    {
        const files::Result<osg::NodePtr> input =
            osg::scenefile::readSceneFile(QString::fromUtf8(m_options.input.c_str()));
        if (!input)
            return core::Failure{core::ExitCode::InputUnreadable, input.error().toStringWithCode().toStdString()};
        const osg::RefPtr<osg::NodePtr> root(input.value());
        for (const osg::GeometryPtr& geometry : osg::geometriesBelow(root)) {
            m_parts.push_back({osg::GeometryAccess::mesh(*geometry).brep, {}, {}});
            m_bytes += m_parts.back().brep.size();
        }
        return std::nullopt;
    }

    /// The biggest first, so that no thread is left with one at the end.
    std::vector<std::size_t> workOrder() const
    {
        std::vector<std::size_t> order(m_parts.size());
        std::iota(order.begin(), order.end(), std::size_t(0));
        std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
            return m_parts[a].brep.size() > m_parts[b].brep.size();
        });
        return order;
    }

    void meshAll()
    {
        const core::PartMarks marks(m_options.output + protocol::PartMarksSuffix,
                                    std::string(m_parts.size(), protocol::partmark::Waits));
        if (!marks.isOpen())
            m_log.warning(marks.trouble() + "; nothing tells which part was at work");
        const std::vector<std::size_t> order = workOrder();
        const unsigned threads = core::threadCount(m_options.settings);
        std::atomic<std::size_t> next{0};
        const auto takeParts = [&] {
            for (std::size_t i = next++; i < order.size(); i = next++)
                mesh(order[i], marks, threads);
        };
        std::vector<std::thread> helpers;
        for (unsigned i = 1; i < std::min<std::size_t>(threads, order.size()); ++i)
            helpers.emplace_back(takeParts);
        takeParts();
        for (std::thread& helper : helpers)
            helper.join();
        if (m_isOutOfMemory)
            throw std::bad_alloc();
    }

    void mesh(std::size_t number, const core::PartMarks& marks, unsigned threads)
    {
        Part& part = m_parts[number];
        marks.set(number, protocol::partmark::Started);
        // A part that is more than its share of the work would keep the other threads waiting.
        const bool isBig = threads > 1 && part.brep.size() * threads > m_bytes;
        try {
            const auto result = meshBrep(part.brep, m_options, isBig);
            if (result)
                part.mesh = result.value();
            else
                part.reason = result.failure().message;
            marks.set(number, protocol::partmark::Ended);
        } catch (const std::bad_alloc&) {
            m_isOutOfMemory = true; // the mark stays: it tells which part it was
        }
        m_doneBytes += part.brep.size();
        m_progress.report(double(m_doneBytes) / double(std::max<std::size_t>(1, m_bytes)));
    }

    core::Trouble write() const
    {
        const osg::RefPtr<osg::NodePtr> root(osg::makeNodeFor(osg::Group::create()));
        for (const Part& part : m_parts) {
            const osg::GeometryPtr geometry = osg::Geometry::create();
            osg::exchangeMesh(geometry, part.mesh ? part.mesh : std::make_shared<const osg::Mesh>());
            const osg::NodePtr node = osg::makeNodeFor(geometry);
            osg::setName(node, part.reason);
            root->addChild(node);
        }
        const auto result = osg::scenefile::writeSceneFile(root, QString::fromUtf8(m_options.output.c_str()),
                                                           {.lasting = files::OutputFile::Lasting::No});
        if (result)
            return std::nullopt;
        return core::Failure{core::ExitCode::OutputFailed, result.error().toStringWithCode().toStdString()};
    }

    const TessellationOptions& m_options;
    const core::Outcome<std::string>& m_box; ///< what holds of it
    core::Log m_log;
    core::Progress m_progress;
    core::ProgressFile m_progressFile;
    std::vector<Part> m_parts;
    std::size_t m_bytes = 0;
    std::atomic<std::size_t> m_doneBytes{0};
    std::atomic<bool> m_isOutOfMemory{false};
};

} // namespace

core::ExitCode tessellateFile(const TessellationOptions& options)
{
    const core::Outcome<std::string> box = box::lock(options.sandbox, {{options.input}, {}, options.output, {}});
    return Tessellation(options, box).run();
}

} // namespace ptx::tessellation
