#include "ptx/conversion/TreeReading.h"

#include "files/ReadReport.h"
#include "files/ReadRequest.h"
#include "protocol/FileNames.h"
#include "protocol/Options.h"
#include "protocol/Printable.h"
#include "ptx/box/Box.h"
#include "ptx/conversion/OutputFile.h"
#include "ptx/core/CommandLine.h"
#include "ptx/core/Limits.h"
#include "ptx/core/Monitor.h"
#include "ptx/core/ProcessEnd.h"

#include <QFile>

#include <cstdio>
#include <filesystem>
#include <new>
#include <optional>
#include <system_error>

namespace ptx::conversion
{

namespace
{

struct Request {
    std::string input;
    std::string output;
    files::ReadOptions options;
    core::Settings settings;
    core::Sandbox sandbox = core::Sandbox::On;
};

core::Outcome<Request> requestOf(const std::vector<std::string>& arguments)
{
    constexpr std::size_t firstWord = 3;
    if (arguments.size() < firstWord)
        return core::Failure{core::ExitCode::WrongUse, "a file and a scene file are wanted"};
    Request request{arguments[1], arguments[2], {}, {}};
    for (std::size_t i = firstWord; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (word == protocol::option::Sandbox && i + 1 < arguments.size()) {
            const std::optional<core::Sandbox> wish = core::sandboxOf(arguments[++i]);
            if (!wish)
                return core::Failure{core::ExitCode::WrongUse, "\"" + arguments[i] + "\" is no way to lock in"};
            request.sandbox = *wish;
            continue;
        }
        const bool isTaken = word.starts_with("limit.")
                                 ? !request.settings.assign(word)
                                 : files::takeWord(request.options, QString::fromStdString(word));
        if (!isTaken)
            return core::Failure{core::ExitCode::WrongUse, "\"" + word + "\" is no option of reading"};
    }
    return request;
}

core::ExitCode exitCodeOf(files::ErrorCode code)
{
    using files::ErrorCode;
    switch (code) {
    case ErrorCode::NotFound:
    case ErrorCode::NotRegular:
    case ErrorCode::NotReadable:
    case ErrorCode::ReadFailed:
        return core::ExitCode::InputUnreadable;
    case ErrorCode::UnknownFormat:
    case ErrorCode::Unsupported:
        return core::ExitCode::Unsupported;
    case ErrorCode::Empty:
        return core::ExitCode::NothingToImport;
    case ErrorCode::LimitExceeded:
    case ErrorCode::OutOfMemory:
        return core::ExitCode::MemoryLimit;
    default:
        return core::ExitCode::Damaged;
    }
}

std::uint64_t sizeOf(const std::string& path)
{
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return error ? 0 : size;
}

/// Material libraries and scenes within scenes may lie anywhere, and only their readers find their names.
core::Outcome<std::string> lockInFor(const Request& request, const std::string& readers)
{
    const files::references::Policy& policy = request.options.references;
    box::Work work{{request.input}, policy.folders, request.output, readers};
    if (policy.rule == files::references::Rule::Parts)
        work.folders.emplace_back("/");
    else if (!policy.top.empty())
        work.folders.push_back(policy.top);
    return box::lock(request.sandbox, work);
}

class TreeReading
{
public:
    explicit TreeReading(const Request& request)
        : m_request(request), m_log(request.output + protocol::LogSuffix),
          m_progressFile(request.output + protocol::ProgressSuffix), m_output(request.output)
    {
    }

    core::ExitCode run(const std::function<core::Outcome<TreeReader>()>& load, const std::string& box)
    {
        core::processend::install(m_log, m_progress, m_output.unfinishedPath());
        m_log.info(box);
        core::Limits limits(m_request.settings, sizeOf(m_request.input));
        core::Trouble trouble;
        {
            const core::Monitor monitor(m_progress, m_progressFile, limits, m_log);
            try {
                trouble = read(load);
            } catch (const std::bad_alloc&) {
                trouble = limits.memoryFailure();
            }
        }
        if (!trouble)
            return core::ExitCode::Success;
        m_log.error(trouble->message);
        return trouble->code;
    }

private:
    core::Trouble read(const std::function<core::Outcome<TreeReader>()>& load)
    {
        m_progress.begin(core::Stage::ReadAndProcess);
        const core::Outcome<TreeReader> reader = load();
        if (!reader)
            return reader.failure();
        const files::ReadResult result = reader.value()(QString::fromStdString(m_request.input), m_request.options);
        const osg::RefPtr<osg::NodePtr> root(result ? result.value() : osg::NodePtr());
        if (core::Trouble trouble = report(result))
            return trouble;
        if (!result)
            return core::Failure{exitCodeOf(result.error().code), result.error().toString().toStdString()};
        m_progress.begin(core::Stage::Write);
        if (core::Trouble trouble = m_output.write(root))
            return trouble;
        m_progress.begin(core::Stage::Finished);
        return std::nullopt;
    }

    core::Trouble report(const files::ReadResult& result) const
    {
        files::ReadReport report{{}, result.warnings};
        if (!result)
            report.error = result.error();
        const QByteArray bytes = report.toBytes();
        QFile file(QString::fromStdString(m_request.output + files::ReadReport::suffix));
        if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush())
            return std::nullopt;
        const std::string reason = file.errorString().toStdString();
        return core::Failure{core::ExitCode::OutputFailed, "cannot write " + m_request.output + ": " + reason};
    }

    const Request& m_request;
    core::Log m_log;
    core::Progress m_progress;
    core::ProgressFile m_progressFile;
    OutputFile m_output;
};

} // namespace

core::ExitCode readTree(const std::vector<std::string>& arguments,
                        const std::function<core::Outcome<TreeReader>()>& load, const std::string& readers)
{
    const core::Outcome<Request> request = requestOf(arguments);
    if (!request) {
        protocol::print(stderr, "ptxconvert: " + request.failure().message + "\n");
        return request.failure().code;
    }
    // Nothing is open before, since the box closes it.
    const core::Outcome<std::string> box = lockInFor(request.value(), readers);
    if (!box) {
        protocol::print(stderr, "ptxconvert: " + box.failure().message + "\n");
        return box.failure().code;
    }
    return TreeReading(request.value()).run(load, box.value());
}

} // namespace ptx::conversion
