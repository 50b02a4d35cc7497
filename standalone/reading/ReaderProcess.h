#pragma once

#include "files/Expected.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

namespace zn
{
class Session;
} // namespace zn

/// Files come from anywhere. They are read by a `ptxconvert` of their own, so that a read can be stopped, has limits of
/// time and memory, and a file that crashes a reader costs that file and not the host.
namespace zn::reading
{

/// Path of the `ptxconvert` of this installation; empty where there is none.
QString installedReader();

/// Whether `session` has files read by `program` in a process of its own: as the setting files.reading says, and never
/// without a program, which the log tells once in a session.
bool readsInChild(Session& session, const QString& program);

/// Ends the reads of `session` that children do now and refuses further ones (`ErrorCode::Cancelled`) until it is
/// called with false. Reads in this process cannot be ended.
void setCancelled(Session& session, bool isCancelled);

/// What a read that begins now may take where one may take `memory`: those that run at the same time share it evenly.
std::uint64_t memoryOfNextRead(Session& session, std::uint64_t memory);

/// One read by a child. Nothing is left of it once this is gone, neither files nor a process, however it ended.
class ReaderProcess
{
public:
    /// What the child is to do.
    struct Work {
        const char* option = "";  ///< the kind of read, of `protocol::option`
        QString input;            ///< the file
        QString output;           ///< the name of the file to make of it, without folder
        QStringList words;        ///< options of that kind
        std::uint64_t memory = 0; ///< bytes that the reader may take by its own account
    };

    /// A read by `program` for `session`, in a new folder of it.
    ReaderProcess(Session& session, const QString& program);

    /// Has the work done. While the child works the event loop runs: windows are drawn, and what stands there may call
    /// `setCancelled`. An error when it was cancelled or the program cannot be started.
    files::Expected<void> run(const Work& work);

    /// Path of the file that was to be made.
    QString output() const { return m_folder->filePath(m_work.output); }
    /// Whether the program ended well.
    bool hasSucceeded() const;
    /// Why there is no result: how the program ended, with its own words where it left any.
    files::Error failure() const;
    /// The folder with all that the program made, which is the caller's from here on.
    std::unique_ptr<QTemporaryDir> takeFolder() { return std::move(m_folder); }

private:
    files::Error error(files::ErrorCode code, const QString& message) const;
    files::Error cancelled() const;
    files::Expected<int> exitCode() const;
    std::optional<files::Expected<int>> codeOfCopy() const;
    files::Expected<int> codeOfProgram() const;
    QStringList words() const;

    Session& m_session;
    QString m_program;
    std::unique_ptr<QTemporaryDir> m_folder;
    Work m_work;
    int m_code = 0;
};

} // namespace zn::reading
