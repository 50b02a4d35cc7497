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

/// A converter of this session that has loaded the readers which take long to load, and copies itself for each
/// conversion. It is started when there are more than a few of them, and goes with the session.
class ConverterServer
{
public:
    /// How many conversions start a converter of their own before there is a server.
    static constexpr int FirstConversions = 3;

    ConverterServer();
    ~ConverterServer();

    /// What stands before the command line of `program` for a conversion of `input`, which is counted, to have it done
    /// by a copy; empty while a start of its own is better, and always for formats that load nothing.
    QStringList wordsFor(const QString& program, const QString& input);

private:
    void start(const QString& program);

    int m_conversions = 0; ///< of such formats
    QString m_socket;
    std::unique_ptr<znJobs::ChildProcess> m_process;
};

} // namespace zn::kernel
