#pragma once

#include <QString>
#include <QStringList>

namespace zn
{
class Settings;
} // namespace zn

namespace zn::kernel
{

/// What a conversion may take where a launcher runs it.
struct ProcessNeeds {
    int cores = 1;
    int megabytes = 0; ///< resident memory
    int seconds = 0;   ///< wall time

    friend bool operator==(const ProcessNeeds&, const ProcessNeeds&) = default;
};

/// How the needs of a conversion grow with its input.
struct NeedRates {
    int mostCores = 8;
    int mostMemory = 0;          ///< megabytes; 0 sets no bound
    int memory = 1024;           ///< megabytes of any conversion
    int memoryPerMegabyte = 60;  ///< that each megabyte of input adds
    int seconds = 660;           ///< of any conversion
    int secondsPerMegabyte = 60; ///< that each megabyte of input adds
};

/// One core, and one more for each 32 MB of input.
ProcessNeeds needsOf(qint64 inputBytes, const NeedRates& rates);

/// The launcher that the settings name, for one conversion.
class Launcher
{
public:
    /// `input` is looked at for its size; one that is not there counts as empty.
    Launcher(const Settings& settings, const QString& input, const QString& output);

    /// False when the setting is empty: conversions are started directly then.
    bool isUsed() const { return !m_words.isEmpty(); }

    /// What stands before the converter's command line.
    const QStringList& words() const { return m_words; }

    /// Settings that make the converter keep within its needs, a little earlier than the launcher would end it, so that
    /// its log can say so; empty without a launcher.
    QStringList converterOptions() const;

private:
    ProcessNeeds m_needs;
    QStringList m_words;
};

} // namespace zn::kernel
