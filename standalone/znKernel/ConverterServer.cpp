#include "standalone/znKernel/ConverterServer.h"

#include "protocol/Formats.h"
#include "protocol/Options.h"
#include "standalone/session/Session.h"
#include "standalone/znJobProcessing/ChildProcess.h"
#include "standalone/znKernel/ConverterCommand.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <string>

namespace zn::kernel
{

namespace
{

/// Whether the converter loads the CAD kernel for a file of this name.
bool needsKernel(const QString& input)
{
    const std::string extension = protocol::extensionOf(QFileInfo(input).fileName().toStdString());
    const std::array formats = {protocol::format::Step, protocol::format::Iges, protocol::format::Brep};
    return std::any_of(formats.begin(), formats.end(), [&extension](const protocol::ReadFormat& format) {
        return std::find(format.extensions.begin(), format.extensions.end(), extension) != format.extensions.end();
    });
}

/// It lies where the converter has its readers; empty when it is not there, as beside programs of others.
QString programOfCopies(const QString& converter)
{
    const QFileInfo program(QFileInfo(converter).absolutePath() +
                            QStringLiteral("/" ZN_READERS_FROM_PROGRAMS "/ptxlaunch"));
    return program.isExecutable() ? program.canonicalFilePath() : QString();
}

} // namespace

ConverterServer::ConverterServer(const char* option, const char* name) : m_option(option), m_name(name) {}
ConverterServer::~ConverterServer() = default;

QString ConverterServer::nextSocket(const QString& program)
{
    if (++m_pieces <= FirstPieces || programOfCopies(program).isEmpty())
        return {};
    if (!m_process)
        start(program);
    return m_socket;
}

/// A server that does not come, or goes, costs nothing: each piece starts by itself then.
void ConverterServer::start(const QString& program)
{
    m_socket = Session::require().temporaryFolder() + QLatin1Char('/') + QLatin1String(m_name);
    m_process = std::make_unique<znJobs::ChildProcess>(nullptr);
    m_process->launch(joinCommand({program, QLatin1String(m_option), m_socket}));
}

ConverterServers::ConverterServers()
    : m_conversions(protocol::option::Serve, "converter"), m_reads(protocol::option::ServeReads, "reader")
{
}

QStringList ConverterServers::wordsForConversion(const QString& program, const QString& input)
{
    const QString socket = needsKernel(input) ? m_conversions.nextSocket(program) : QString();
    return socket.isEmpty() ? QStringList() : QStringList{programOfCopies(program), socket};
}

} // namespace zn::kernel
