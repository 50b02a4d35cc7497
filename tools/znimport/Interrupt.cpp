#include "tools/znimport/Interrupt.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <iterator>
#include <unistd.h>

namespace znimport
{

namespace
{

constexpr int stopSignals[] = {SIGINT, SIGTERM, SIGHUP};

int pipeEnds[2] = {-1, -1};
volatile std::sig_atomic_t hasCome[NSIG] = {};

void handleSignal(int signal)
{
    if (hasCome[signal])
        _exit(130);
    hasCome[signal] = 1;
    const char byte = 1;
    [[maybe_unused]] const auto written = write(pipeEnds[1], &byte, 1);
}

} // namespace

void Interrupt::catchSignals()
{
    if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        qFatal("cannot make a pipe for signals");
    struct sigaction action = {};
    action.sa_handler = handleSignal;
    action.sa_flags = SA_RESTART;
    sigset_t stops;
    sigemptyset(&stops);
    for (const int signal : stopSignals) {
        sigaction(signal, &action, nullptr);
        sigaddset(&stops, signal);
    }
    sigprocmask(SIG_UNBLOCK, &stops, nullptr);
}

Interrupt::Interrupt(QObject* parent) : QObject(parent)
{
    const auto* notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &Interrupt::received);
}

void Interrupt::received()
{
    char bytes[std::size(stopSignals)];
    [[maybe_unused]] const auto got = read(pipeEnds[0], bytes, sizeof bytes);
    if (m_requested)
        return;
    m_requested = true;
    Q_EMIT stopRequested();
}

} // namespace znimport
