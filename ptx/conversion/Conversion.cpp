#include "ptx/conversion/Conversion.h"

#include "files/scenefile/ConvertedTree.h"
#include "protocol/FileNames.h"
#include "protocol/Printable.h"
#include "ptx/conversion/FormerOutput.h"
#include "ptx/conversion/InputFile.h"
#include "ptx/conversion/LockIn.h"
#include "ptx/conversion/OutputFile.h"
#include "ptx/core/Limits.h"
#include "ptx/core/Monitor.h"
#include "ptx/core/ProcessEnd.h"
#include "ptx/model/Losses.h"
#include "ptx/readers/FormatChoice.h"
#include "ptx/scene/SceneBuilder.h"

#include <chrono>
#include <cstdio>
#include <new>

namespace ptx::conversion
{

namespace
{

class Conversion
{
public:
    Conversion(const core::CommandLine& line, readers::Formats formats, const core::Outcome<std::string>& box)
        : m_line(line), m_formats(formats), m_box(box), m_log(openLog(line)),
          m_progressFile(line.output + protocol::ProgressSuffix),
          m_rescue(line.output + protocol::PartMarksSuffix, line.attempt), m_output(line.output),
          m_former(line.output, line.input)
    {
        if (line.attempt > 0)
            m_progress.goOnFrom(m_progressFile.percent());
    }
    ~Conversion() { core::processend::crashForGood(); }
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;

    core::ExitCode run()
    {
        core::Outcome<InputFile> input = lookAtInput(m_line.input);
        if (!m_log.isOpen())
            return fail({core::ExitCode::OutputFailed, m_log.trouble()});
        core::processend::install(m_log, m_progress, m_output.unfinishedPath());
        core::processend::beginAnewAfterCrash(m_rescue, nextAttempt());
        m_former.moveAside();
        tellStart();
        if (!m_box)
            return fail(m_box.failure());
        m_log.info(m_box.value());
        tellWhatIsWithout();
        if (!input)
            return fail(input.failure());
        m_inputBytes = input.value().size;
        core::Limits limits(m_line.settings, m_inputBytes);
        core::Trouble trouble;
        {
            const core::Monitor monitor(m_progress, m_progressFile, limits, m_log);
            trouble = withinMemory(limits, input.value());
        }
        return trouble ? fail(*trouble) : core::ExitCode::Success;
    }

private:
    core::Trouble withinMemory(core::Limits& limits, const InputFile& input)
    {
        try {
            return work(limits, input);
        } catch (const std::bad_alloc&) {
            return limits.memoryFailure();
        }
    }

    core::Trouble work(core::Limits& limits, const InputFile& input)
    {
        const core::Outcome<const readers::Format*> format =
            readers::chooseFormat(m_formats, m_line.input, input.head, input.size);
        if (!format)
            return format.failure();
        if (core::Trouble trouble = readers::requireExternalParts(
                m_line.externalParts, !m_line.externalParts || mayNameParts(*format.value())))
            return trouble;
        if (core::Trouble trouble = m_output.prepare())
            return trouble;
        m_log.info("format " + std::string(format.value()->name) + ", " + std::to_string(m_inputBytes) + " bytes");
        if (format.value()->canLoop)
            limits.limitWork();
        const model::Job job{m_line.input, m_inputBytes, m_line.externalParts,    m_line.settings, limits, m_progress,
                             m_log,        m_rescue,     m_line.referencePolicy()};
        core::Outcome<model::Model> model = format.value()->read(job);
        if (!model)
            return model.failure();
        model::markLostParts(model.value(), job);
        m_log.info("read: " + std::to_string(model.value().products.size()) + " products, " +
                   std::to_string(model.value().bodies.size()) + " with geometry");
        model.value().tags.insert(
            model.value().tags.begin(),
            osg::scenefile::converted::tag(osg::scenefile::converted::FormatKey, format.value()->name));
        return build(model.value());
    }

    bool mayNameParts(const readers::Format& format) const
    {
        return format.refersToParts && format.refersToParts(m_line.input);
    }

    core::Trouble build(const model::Model& model)
    {
        m_progress.begin(core::Stage::BuildOsgTree);
        core::Outcome<scene::Scene> scene =
            scene::buildScene(model, m_line.input, m_line.settings.number(core::Setting::NodeLimit));
        if (!scene)
            return scene.failure();
        if (scene.value().occurrences == 0 && !m_rescue.lostParts().empty())
            return core::Failure{core::ExitCode::Damaged, "the CAD kernel crashes on every part of the file"};
        if (scene.value().occurrences == 0 && scene.value().callouts == 0 && model.references.empty())
            return core::Failure{core::ExitCode::NothingToImport, "no part of the file became a mesh"};
        m_log.info("scene: " + std::to_string(scene.value().nodes) + " nodes, " +
                   std::to_string(scene.value().occurrences) + " occurrences of parts");
        m_progress.begin(core::Stage::Write);
        if (core::Trouble trouble = m_output.write(scene.value().root))
            return trouble;
        m_former.drop();
        tellEnd();
        m_progress.begin(core::Stage::Finished);
        return std::nullopt;
    }

    static core::Log openLog(const core::CommandLine& line)
    {
        using Clock = std::chrono::steady_clock;
        const std::string path = line.output + protocol::LogSuffix;
        return line.attempt == 0 ? core::Log(path)
                                 : core::Log(path, Clock::time_point(std::chrono::nanoseconds(line.begun)));
    }

    std::vector<std::string> nextAttempt() const
    {
        if (m_line.arguments.empty() || m_rescue.isLastAttempt())
            return {};
        const std::chrono::nanoseconds begun = m_log.start().time_since_epoch();
        return core::commandOfAttempt(m_line.attempt + 1, begun.count(), m_line.arguments);
    }

    void tellStart()
    {
        if (m_line.attempt > 0)
            return m_log.info("attempt " + std::to_string(m_line.attempt + 1));
        m_log.info("ptxconvert " ZN_VERSION);
        m_log.info("input  " + m_line.input);
        m_log.info("output " + m_line.output);
        for (const std::string& assignment : m_line.assignments)
            m_log.info("set " + assignment);
    }

    /// A conversion does not fail for want of an audience, nor of the help against a crash that does not come.
    void tellWhatIsWithout()
    {
        if (!m_progressFile.isOpen())
            m_log.warning(m_progressFile.trouble() + "; no progress is told");
        if (!m_rescue.trouble().empty())
            m_log.warning(m_rescue.trouble() + "; after a crash the conversion would not begin anew");
    }

    void tellEnd()
    {
        m_log.info("stages: " + m_progress.stageTimes());
        const core::Usage usage = core::measureUsage();
        m_log.info("finished: " + core::oneDecimal(usage.cpuSeconds) + " s of processor time, " +
                   std::to_string(m_log.warnings()) + " warnings");
    }

    core::ExitCode fail(const core::Failure& failure)
    {
        m_log.error(failure.message);
        protocol::print(stderr, "ptxconvert: " + failure.message + '\n');
        return failure.code;
    }

    const core::CommandLine& m_line;
    readers::Formats m_formats;
    const core::Outcome<std::string>& m_box; ///< what holds of it
    core::Log m_log;
    core::Progress m_progress;
    core::ProgressFile m_progressFile;
    core::Rescue m_rescue;
    OutputFile m_output;
    FormerOutput m_former;
    std::uint64_t m_inputBytes = 0;
};

} // namespace

core::ExitCode convert(const core::CommandLine& line, readers::Formats formats)
{
    const core::Outcome<std::string> box = lockIn(line, formats);
    return Conversion(line, formats, box).run();
}

} // namespace ptx::conversion
