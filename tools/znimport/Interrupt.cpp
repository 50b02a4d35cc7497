#include "tools/znimport/Interrupt.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace znimport
{

namespace
{

constexpr int stopSignals[] = {SIGINT, SIGTERM, SIGHUP};

int pipeEnds[2] = {-1, -1};
volatile std::sig_atomic_t requests = 0;

void handleSignal(int)
{
    requests = requests + 1;
    if (requests > 1)
        _exit(130);
    const char byte = 1;
    [[maybe_unused]] const auto written = write(pipeEnds[1], &byte, 1);
}

} // namespace

Interrupt::Interrupt(QObject* parent) : QObject(parent)
{
    if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        qFatal("cannot make a pipe for signals");
    m_notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &Interrupt::received);
    struct sigaction action = {};
    action.sa_handler = handleSignal;
    action.sa_flags = SA_RESTART;
    for (const int signal : stopSignals)
        sigaction(signal, &action, nullptr);
}

Interrupt::~Interrupt()
{
    for (const int signal : stopSignals)
        std::signal(signal, SIG_DFL);
    close(pipeEnds[0]);
    close(pipeEnds[1]);
}

void Interrupt::received()
{
    char byte = 0;
    [[maybe_unused]] const auto got = read(pipeEnds[0], &byte, 1);
    m_requested = true;
    Q_EMIT stopRequested();
}

} // namespace znimport
