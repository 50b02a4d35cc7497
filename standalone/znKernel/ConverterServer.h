#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace znJobs
{
class ChildProcess;
} // namespace znJobs

namespace zn::kernel
{

/// A converter of this session that has loaded the readers for one kind of work, and copies itself for each piece of
/// it. It is started when there are more than a few of them, and goes with the session.
class ConverterServer
{
public:
    /// How many pieces start a converter of their own before there is a server.
    static constexpr int FirstPieces = 3;

    /// `option` (of `protocol::option`) starts `ptxconvert` as the server, at the socket `name` in the session's
    /// folder.
    ConverterServer(const char* option, const char* name);
    ~ConverterServer();

    /// The socket at which one more piece of the work of `program` is asked for; empty while a start of its own is
    /// better.
    QString nextSocket(const QString& program);

private:
    void start(const QString& program);

    const char* m_option;
    const char* m_name;
    int m_pieces = 0;
    QString m_socket;
    std::unique_ptr<znJobs::ChildProcess> m_process;
};

/// The servers of a session. Each kind of work has its own, since what one loads takes time and memory.
class ConverterServers
{
public:
    ConverterServers();

    /// What stands before the command line of `program` for a conversion of `input`; always empty for formats that load
    /// nothing, which are not counted.
    QStringList wordsForConversion(const QString& program, const QString& input);
    /// Where to ask for a copy of `program` that does one more read on behalf of this host; empty as `nextSocket` is.
    QString socketForRead(const QString& program) { return m_reads.nextSocket(program); }

private:
    ConverterServer m_conversions;
    ConverterServer m_reads;
};

} // namespace zn::kernel
