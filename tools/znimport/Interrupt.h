#pragma once

#include <QObject>

namespace znimport
{

/// Turns the signals by which a user or the system asks a program to stop (SIGINT, SIGTERM, SIGHUP) into a Qt signal.
/// The second one of a kind ends the program at once, with the exit code 130; one of each kind is a single request: the
/// terminal sends SIGINT to all that run in it, and a batch SIGTERM to its runs.
class Interrupt : public QObject
{
    Q_OBJECT

public:
    /// From now on to the end of the process a signal is kept for the `Interrupt` that there is or will be, also where
    /// whoever started the program had them blocked. To be called before anything else.
    static void catchSignals();

    explicit Interrupt(QObject* parent = nullptr);

    bool requested() const { return m_requested; }

Q_SIGNALS:
    void stopRequested();

private:
    void received();

    bool m_requested = false;
};

} // namespace znimport
