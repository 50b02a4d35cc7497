#include "ptx/conversion/HostRequest.h"

#include "protocol/FileNames.h"
#include "protocol/Options.h"
#include "protocol/Printable.h"
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

std::uint64_t sizeOf(const std::string& path)
{
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return error ? 0 : size;
}

} // namespace

core::Outcome<HostRequest> hostRequestOf(const std::vector<std::string>& arguments)
{
    constexpr std::size_t firstWord = 3;
    if (arguments.size() < firstWord)
        return core::Failure{core::ExitCode::WrongUse, "a file to read and one to make are wanted"};
    HostRequest request{arguments[1], arguments[2], {}, {}};
    for (std::size_t i = firstWord; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (word == protocol::option::Sandbox && i + 1 < arguments.size()) {
            const std::optional<core::Sandbox> wish = core::sandboxOf(arguments[++i]);
            if (!wish)
                return core::Failure{core::ExitCode::WrongUse, "\"" + arguments[i] + "\" is no way to lock in"};
            request.sandbox = *wish;
        } else if (!word.starts_with("limit.")) {
            request.words.push_back(word);
        } else if (request.settings.assign(word)) {
            return strangeWord(word);
        }
    }
    return request;
}

core::ExitCode refuse(const core::Failure& failure)
{
    protocol::print(stderr, "ptxconvert: " + failure.message + "\n");
    return failure.code;
}

core::Failure strangeWord(const std::string& word)
{
    return {core::ExitCode::WrongUse, "\"" + word + "\" is no option of reading"};
}

core::ExitCode runForHost(const HostRequest& request, const box::Work& work, const std::string& unfinished,
                          const std::function<core::Trouble(core::Progress& progress)>& read)
{
    // Nothing is open before, since the box closes it.
    const core::Outcome<std::string> box = box::lock(request.sandbox, work);
    if (!box)
        return refuse(box.failure());
    core::Log log(request.output + protocol::LogSuffix);
    core::Progress progress;
    core::ProgressFile progressFile(request.output + protocol::ProgressSuffix);
    core::processend::install(log, progress, unfinished);
    log.info(box.value());
    core::Limits limits(request.settings, sizeOf(request.input));
    core::Trouble trouble;
    {
        const core::Monitor monitor(progress, progressFile, limits, log);
        try {
            progress.begin(core::Stage::ReadAndProcess);
            trouble = read(progress);
        } catch (const std::bad_alloc&) {
            trouble = limits.memoryFailure();
        }
    }
    if (!trouble)
        return core::ExitCode::Success;
    log.error(trouble->message);
    return trouble->code;
}

core::Trouble writeForHost(const std::string& path, const std::string& bytes)
{
    QFile file(QString::fromStdString(path));
    const auto size = static_cast<qint64>(bytes.size());
    if (file.open(QIODevice::WriteOnly) && file.write(bytes.data(), size) == size && file.flush())
        return std::nullopt;
    const std::string reason = file.errorString().toStdString();
    return core::Failure{core::ExitCode::OutputFailed, "cannot write " + path + ": " + reason};
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

} // namespace ptx::conversion
