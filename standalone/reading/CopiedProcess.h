#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace zn::reading
{

/// A copy of a program that waits for work with all that it needs loaded. Unlike a child of this process it costs no
/// fork of this process, which takes 30 ms where a scene of 300 MB is in its memory. The copy dies with this object.
class CopiedProcess
{
public:
    /// Has the server at `socket` make a copy for a command line of these `words`, in the folder and environment of
    /// this process and with nothing to read from or write to. Null where no server takes requests there.
    static std::unique_ptr<CopiedProcess> start(const QString& socket, const QStringList& words);

    ~CopiedProcess();
    CopiedProcess(const CopiedProcess&) = delete;
    CopiedProcess& operator=(const CopiedProcess&) = delete;

    /// Can be read from once the copy has ended or the server is gone.
    int descriptor() const { return m_server; }

    /// Waits for the end of the copy, 5 seconds at most. Its exit code, 128 + n for the signal n; nothing where that
    /// does not come, as when the server goes away first.
    std::optional<int> exitCode() const;

    /// Ends the copy and waits for that; its exit code.
    std::optional<int> kill() const;

private:
    explicit CopiedProcess(int server) : m_server(server) {}

    int m_server;
};

} // namespace zn::reading
