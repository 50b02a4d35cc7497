#include "importer/DocumentReading.h"

#include "importer/plmxml/DocumentReport.h"
#include "protocol/FileNames.h"
#include "protocol/Options.h"
#include "standalone/session/Session.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <optional>
#include <utility>

namespace importer
{

namespace
{

using files::ErrorCode;
using plmxml::NormalisedDocument;

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(importer::DocumentReading)
};

files::Error unwritten(const QString& file, const QString& reason)
{
    return {{Texts::tr("the document in the form that is read cannot be written: %1").arg(reason), file, {}},
            ErrorCode::WriteFailed};
}

files::Expected<ReadDocument> readHere(const zn::Session& session, const QString& file, const QString& textName,
                                       const plmxml::NormaliserOptions& options)
{
    ReadDocument read{plmxml::normalise(file, options), {}, {}};
    if (read.content.way != NormalisedDocument::Way::AsText)
        return read;
    read.folder = std::make_unique<QTemporaryDir>(session.temporaryFolder() + QStringLiteral("/document-XXXXXX"));
    read.text = read.folder->filePath(textName);
    const std::string text = std::exchange(read.content.text, {});
    const auto size = static_cast<qint64>(text.size());
    QFile out(read.text);
    if (!read.folder->isValid() || !out.open(QIODevice::WriteOnly) || out.write(text.data(), size) != size ||
        !out.flush())
        return unwritten(file, out.errorString());
    return read;
}

/// The report is looked at where it lies.
std::optional<NormalisedDocument> contentOf(const zn::reading::ReaderProcess& process, std::uint64_t memory)
{
    QFile file(process.output() + QLatin1String(protocol::NotesSuffix));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const uchar* const bytes = file.map(0, file.size());
    if (!bytes)
        return std::nullopt;
    return plmxml::documentOf({reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(file.size())}, memory);
}

files::Expected<ReadDocument> readByChild(zn::Session& session, const QString& file, const QString& textName,
                                          const plmxml::NormaliserOptions& options, const QString& program)
{
    const std::uint64_t memory =
        zn::reading::memoryOfNextRead(session, std::uint64_t(session.settings().read.memory.value()) << 20);
    zn::reading::ReaderProcess process(session, program);
    if (const auto run = process.run(
            {protocol::option::ReadDocument, file, QStringLiteral("text"), plmxml::wordsOf(options), memory});
        !run)
        return run.error();
    std::optional<NormalisedDocument> content;
    if (process.hasSucceeded())
        content = contentOf(process, memory);
    if (!content)
        return process.failure();
    ReadDocument read{std::move(*content), {}, {}};
    if (read.content.way != NormalisedDocument::Way::AsText)
        return read;
    // Its own name would be too long for the files beside it.
    QFile text(process.output());
    read.folder = process.takeFolder();
    read.text = read.folder->filePath(textName);
    if (!text.rename(read.text))
        return unwritten(file, text.errorString());
    return read;
}

} // namespace

files::Expected<ReadDocument> readDocument(zn::Session& session, const QString& file, const QString& textName,
                                           const plmxml::NormaliserOptions& options, const QString& program)
{
    return zn::reading::readsInChild(session, program) ? readByChild(session, file, textName, options, program)
                                                       : readHere(session, file, textName, options);
}

} // namespace importer
