#include "protocol/Options.h"
#include "protocol/Printable.h"
#include "ptx/box/Box.h"
#include "ptx/conversion/Conversion.h"
#include "ptx/conversion/DocumentReading.h"
#include "ptx/conversion/TreeReading.h"
#include "tools/ptxconvert/ReaderModules.h"
#include "tools/ptxconvert/ReaderTable.h"
#include "tools/ptxconvert/series/Series.h"
#include "tools/ptxconvert/server/ForkServer.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace
{

int fail(const ptx::core::Failure& failure)
{
    protocol::print(stderr, "ptxconvert: " + failure.message + '\n');
    return static_cast<int>(failure.code);
}

int print(const std::string& text)
{
    std::fputs(text.c_str(), stdout);
    return static_cast<int>(ptx::core::ExitCode::Success);
}

/// What a conversion of its own is asked for by, which one of several is from here on: it may run itself anew.
std::vector<std::string> argumentsOf(const ptx::core::CommandLine& line)
{
    std::vector<std::string> arguments;
    if (line.externalParts)
        arguments.emplace_back(protocol::option::ExternalParts);
    arguments.insert(arguments.end(), {protocol::option::Sandbox, ptx::core::word(line.sandbox)});
    arguments.insert(arguments.end(), {protocol::option::References, files::references::word(line.references.rule)});
    if (!line.references.top.empty())
        arguments.insert(arguments.end(), {protocol::option::ReferencesBelow, line.references.top});
    for (const std::string& folder : line.references.folders)
        arguments.insert(arguments.end(), {protocol::option::AllowReferences, folder});
    for (const std::string& assignment : line.assignments)
        arguments.insert(arguments.end(), {protocol::option::Set, assignment});
    arguments.insert(arguments.end(), {"--", line.input, line.output});
    return arguments;
}

/// Readers that more than one input needs are loaded once, and are there in the copies. The copies share the cores,
/// unless the line says how many threads each has.
int convertSeveral(const ptx::core::CommandLine& line)
{
    const ptx::core::Outcome<std::vector<ptxconvert::SeriesItem>> items =
        ptxconvert::planSeries(line.inputs, line.folder);
    if (!items)
        return fail(items.failure());
    std::error_code error;
    std::filesystem::create_directories(line.folder, error);
    if (error)
        return fail({ptx::core::ExitCode::OutputFailed, line.folder + ": " + error.message()});
    if (std::count_if(line.inputs.begin(), line.inputs.end(), ptxconvert::needsModule) > 1)
        ptxconvert::prepareReaders();
    const unsigned jobs = line.jobs > 0 ? line.jobs : std::max(1U, std::thread::hardware_concurrency());
    ptx::core::CommandLine each = line;
    each.settings = {};
    if (jobs > 1)
        each.assignments.insert(each.assignments.begin(), std::string(protocol::setting::Threads) + "=1");
    for (const std::string& assignment : each.assignments)
        (void)each.settings.assign(assignment);
    return ptxconvert::runSeries(items.value(), jobs, [&each](const ptxconvert::SeriesItem& item) {
        each.input = item.input;
        each.output = item.output;
        each.arguments = argumentsOf(each);
        return static_cast<int>(ptx::conversion::convert(each, ptxconvert::formats()));
    });
}

int perform(const ptx::core::CommandLine& line)
{
    switch (line.task) {
    case ptx::core::CommandLine::Task::Help:
        return print(ptx::core::usageText());
    case ptx::core::CommandLine::Task::HelpSettings:
        return print(ptx::core::settingsHelp());
    case ptx::core::CommandLine::Task::Version:
        return print("ptxconvert " ZN_VERSION "\n" + ptxconvert::readerVersions() +
                     "sandbox: " + ptx::box::abilities() + '\n');
    case ptx::core::CommandLine::Task::ConvertSeveral:
        return convertSeveral(line);
    case ptx::core::CommandLine::Task::Convert:
        break;
    }
    return static_cast<int>(ptx::conversion::convert(line, ptxconvert::formats()));
}

ptx::core::Outcome<ptx::conversion::DocumentReader> documentReader()
{
    const ptx::core::Outcome<const ptxconvert::DocumentModule*> module = ptxconvert::loadDocumentReader();
    if (!module)
        return module.failure();
    return ptx::conversion::DocumentReader(module.value()->read);
}

ptx::core::Outcome<ptx::conversion::TreeReader> meshReader()
{
    const ptx::core::Outcome<const ptxconvert::MeshModule*> module = ptxconvert::loadMeshReader();
    if (!module)
        return module.failure();
    return ptx::conversion::TreeReader(module.value()->read);
}

int run(const std::vector<std::string>& arguments)
{
    // File names are bytes that mean UTF-8, whatever locale the process was started under; numbers stay in "C".
    std::setlocale(LC_CTYPE, "C.UTF-8");
    if (!arguments.empty() && arguments.front() == protocol::option::ReadMesh)
        return static_cast<int>(ptx::conversion::readTree(arguments, meshReader, ptxconvert::readersFolder()));
    if (!arguments.empty() && arguments.front() == protocol::option::ReadDocument)
        return static_cast<int>(ptx::conversion::readDocument(arguments, documentReader, ptxconvert::readersFolder()));
    ptx::core::Outcome<ptx::core::CommandLine> line = ptx::core::parseCommandLine(arguments);
    if (!line) {
        protocol::print(stderr, "ptxconvert: " + line.failure().message + "\n\n" + ptx::core::usageText());
        return static_cast<int>(ptx::core::ExitCode::WrongUse);
    }
    line.value().arguments = arguments;
    line.value().readers = ptxconvert::readersFolder();
    return perform(line.value());
}

/// Readers are loaded once, by the server; what is asked of it is done by a copy.
int serve(const std::string& socket)
{
    const int error = ptxconvert::serve(socket, run);
    protocol::print(stderr, "ptxconvert: " + socket + ": " + std::strerror(error) + '\n');
    return static_cast<int>(ptx::core::ExitCode::WrongUse);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && std::strcmp(argv[1], protocol::option::Serve) == 0) {
        ptxconvert::prepareReaders();
        return serve(argv[2]);
    }
    if (argc == 3 && std::strcmp(argv[1], protocol::option::ServeReads) == 0) {
        ptxconvert::prepareReadersForHosts();
        return serve(argv[2]);
    }
    return run({argv + 1, argv + argc});
}
