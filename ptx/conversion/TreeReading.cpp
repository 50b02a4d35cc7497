#include "ptx/conversion/TreeReading.h"

#include "files/ReadReport.h"
#include "files/ReadRequest.h"
#include "protocol/FileNames.h"
#include "ptx/conversion/HostRequest.h"
#include "ptx/conversion/OutputFile.h"

#include <optional>

namespace ptx::conversion
{

namespace
{

/// Material libraries and scenes within scenes may lie anywhere, and only their readers find their names.
box::Work workOf(const HostRequest& request, const files::references::Policy& policy, const std::string& readers)
{
    box::Work work{{request.input}, policy.folders, request.output, readers};
    if (policy.rule == files::references::Rule::Parts)
        work.folders.emplace_back("/");
    else if (!policy.top.empty())
        work.folders.push_back(policy.top);
    return work;
}

core::Trouble writeReport(const HostRequest& request, const files::ReadResult& result)
{
    files::ReadReport report{{}, result.warnings};
    if (!result)
        report.error = result.error();
    return writeForHost(request.output + protocol::NotesSuffix, report.toBytes().toStdString());
}

core::Trouble readTo(const OutputFile& output, const HostRequest& request, const files::ReadOptions& options,
                     const std::function<core::Outcome<TreeReader>()>& load, core::Progress& progress)
{
    const core::Outcome<TreeReader> reader = load();
    if (!reader)
        return reader.failure();
    const files::ReadResult result = reader.value()(QString::fromStdString(request.input), options);
    const osg::RefPtr<osg::NodePtr> root(result ? result.value() : osg::NodePtr());
    if (core::Trouble trouble = writeReport(request, result))
        return trouble;
    if (!result)
        return core::Failure{exitCodeOf(result.error().code), result.error().toString().toStdString()};
    progress.begin(core::Stage::Write);
    if (core::Trouble trouble = output.write(root))
        return trouble;
    progress.begin(core::Stage::Finished);
    return std::nullopt;
}

} // namespace

core::ExitCode readTree(const std::vector<std::string>& arguments,
                        const std::function<core::Outcome<TreeReader>()>& load, const std::string& readers)
{
    const core::Outcome<HostRequest> asked = hostRequestOf(arguments);
    if (!asked)
        return refuse(asked.failure());
    const HostRequest& request = asked.value();
    files::ReadOptions options;
    for (const std::string& word : request.words)
        if (!files::takeWord(options, QString::fromStdString(word)))
            return refuse(strangeWord(word));
    const OutputFile output(request.output);
    return runForHost(request, workOf(request, options.references, readers), output.unfinishedPath(),
                      [&](core::Progress& progress) { return readTo(output, request, options, load, progress); });
}

} // namespace ptx::conversion
