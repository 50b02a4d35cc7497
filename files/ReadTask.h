#pragma once

#include "files/References.h"
#include "files/SceneReader.h"
#include "files/Text.h"

#include <utility>
#include <vector>

namespace files
{

/// One run of a reader: what it is asked for, its warnings, and its limits. It fails by `files::Failure`.
class ReadTask
{
public:
    ReadTask(const QString& path, const ReadOptions& options);

    const QString& path() const { return m_path; }
    const ReadOptions& options() const { return m_options; }

    /// Ends the run.
    [[noreturn]] void fail(ErrorCode code, const QString& message, const QString& place = {}) const;
    [[noreturn]] void fail(const Error& error) const;
    /// The same because of another file.
    [[noreturn]] void failIn(const QString& file, ErrorCode code, const QString& message,
                             const QString& place = {}) const;

    void warn(const QString& message, const QString& place = {}) { warnIn(m_path, message, place); }
    void warnIn(const QString& file, const QString& message, const QString& place = {});
    std::vector<Note> warnings() const;
    /// The warnings of a run elsewhere that did the work of this one, in place of those so far.
    void adoptWarnings(std::vector<Note> warnings) { m_warnings = std::move(warnings); }

    /// Why `path` may not be taken by what stands in the file `from`; nothing when it may.
    std::optional<references::Refusal> refusal(references::Use use, const QString& path, const QString& from) const
    {
        return refusalOf(m_options.references, use, path, from);
    }

    /// Hold what is about to be made against the limits.
    void countNodes(std::uint64_t count);
    void countVertices(std::uint64_t count, const QString& place);
    void countFileBytes(const QString& file, std::uint64_t count);
    /// The same for bytes that come out of a packed file.
    void countUnpackedBytes(const QString& file, std::uint64_t count);

    /// Holds `bytes` of memory that are about to be taken against the limit: that of the options, and no more than
    /// 256 MB and 1 KB for each byte that files have, so that a small file claims no gigabytes. Nodes and the bytes of
    /// files count by themselves.
    void takeMemory(std::uint64_t bytes, const QString& place = {});

private:
    QString m_path;
    ReadOptions m_options;
    std::vector<Note> m_warnings;
    std::uint64_t m_moreWarnings = 0;
    std::uint64_t m_nodes = 0;
    std::uint64_t m_vertices = 0;
    std::uint64_t m_fileBytes = 0;   ///< unpacked
    std::uint64_t m_packedBytes = 0; ///< as files have them
    std::uint64_t m_memory = 0;
};

/// "line 12"
QString linePlace(std::uint64_t line);

} // namespace files
