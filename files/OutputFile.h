#pragma once

#include "files/Expected.h"

#include <QFile>

#include <cstdint>
#include <optional>

namespace files
{

/// A file that comes into being at one stroke: it is written under another name in the folder of its target and takes
/// the target's name when it is complete. Destroyed before that, it leaves nothing.
///
/// A target that is a link stays one: the file it leads to is replaced. A file that is replaced hands its permissions
/// on, and one that may not be written is not replaced.
class OutputFile
{
public:
    /// Where the file for `target` stands until it is complete; another number is in the name when a file of this one
    /// is there already.
    static QString unfinishedPath(const QString& target);

    explicit OutputFile(const QString& target);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// False after the first failure; then nothing is written any more, and `commit` tells it.
    bool isSound() const { return !m_error; }

    void write(const void* data, std::uint64_t size);
    /// Fills up to the next multiple of `alignment` bytes.
    void pad(std::uint64_t alignment, char filler = '\0');
    /// Writes at the start of the file instead.
    void rewrite(const void* data, std::uint64_t size);
    /// The file that this one takes the place of: the wanted one, or what that leads to when it is a link.
    const QString& target() const { return m_target; }
    /// How far the file is written.
    std::uint64_t position() const { return m_position; }
    /// Whether what is written has to outlive a crash of the whole system: an empty file could stand in the place of
    /// the one before otherwise. It takes as long as the disk takes the bytes.
    enum class Lasting { Yes, No };
    /// Nothing more is written: what waits goes to the disk, and the file keeps its other name until `commit`.
    Expected<void> complete(Lasting lasting = Lasting::Yes);
    /// The file takes the name of its target, unless something failed. The error names the target and no place.
    Expected<void> commit(Lasting lasting = Lasting::Yes);

private:
    bool create();
    void flush(Lasting lasting);
    void rename();
    void discard();
    void fail(ErrorCode code, const QString& message);

    QString m_wanted;
    QString m_target; ///< the file itself where the one that is wanted is a link
    QFile m_file;
    bool m_isUnfinished = false; ///< it is there by its other name
    std::uint64_t m_position = 0;
    std::optional<Error> m_error;
};

} // namespace files
