#pragma once

#include <QObject>

class QSocketNotifier;

namespace znimport
{

/// Turns the signals by which a user or the system asks a program to stop (SIGINT, SIGTERM, SIGHUP) into a Qt signal.
/// The second request of this kind ends the program at once, with the exit code 130.
class Interrupt : public QObject
{
    Q_OBJECT

public:
    explicit Interrupt(QObject* parent = nullptr);
    ~Interrupt() override;

    bool requested() const { return m_requested; }

Q_SIGNALS:
    void stopRequested();

private:
    void received();

    QSocketNotifier* m_notifier;
    bool m_requested = false;
};

} // namespace znimport
