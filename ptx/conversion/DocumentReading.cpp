#include "ptx/conversion/DocumentReading.h"

#include "files/ReadRequest.h"
#include "protocol/FileNames.h"
#include "ptx/conversion/HostRequest.h"

#include <optional>

namespace ptx::conversion
{

namespace
{

/// Part files are looked for by their names alone.
box::Work workOf(const HostRequest& request, const files::references::Policy& policy, const std::string& readers)
{
    box::Work work{{request.input}, {}, request.output, readers, policy.folders};
    if (policy.rule == files::references::Rule::Parts)
        work.listed.emplace_back("/");
    else if (!policy.top.empty())
        work.listed.push_back(policy.top);
    return work;
}

core::Trouble readTo(const HostRequest& request, const QStringList& words,
                     const std::function<core::Outcome<DocumentReader>()>& load, core::Progress& progress)
{
    const core::Outcome<DocumentReader> reader = load();
    if (!reader)
        return reader.failure();
    const ReadDocument document = reader.value()(QString::fromStdString(request.input), words);
    if (!document.strangeWord.isEmpty())
        return strangeWord(document.strangeWord.toStdString());
    progress.begin(core::Stage::Write);
    if (core::Trouble trouble = document.text.empty() ? std::nullopt : writeForHost(request.output, document.text))
        return trouble;
    if (core::Trouble trouble = writeForHost(request.output + protocol::NotesSuffix, document.report))
        return trouble;
    progress.begin(core::Stage::Finished);
    return std::nullopt;
}

} // namespace

core::ExitCode readDocument(const std::vector<std::string>& arguments,
                            const std::function<core::Outcome<DocumentReader>()>& load, const std::string& readers)
{
    const core::Outcome<HostRequest> asked = hostRequestOf(arguments);
    if (!asked)
        return refuse(asked.failure());
    const HostRequest& request = asked.value();
    files::DocumentRules rules;
    QStringList words;
    for (const std::string& word : request.words) {
        words.append(QString::fromStdString(word));
        files::takeWord(rules, words.last());
    }
    return runForHost(request, workOf(request, rules.policy, readers), request.output,
                      [&](core::Progress& progress) { return readTo(request, words, load, progress); });
}

} // namespace ptx::conversion
