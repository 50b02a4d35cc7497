#include "standalone/znKernel/Launcher.h"

#include "protocol/Options.h"
#include "standalone/session/Settings.h"
#include "standalone/znKernel/ConverterCommand.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace zn::kernel
{

namespace
{

namespace setting = protocol::setting;

constexpr double megabyte = 1024.0 * 1024.0;
constexpr double megabytesPerCore = 32;

// A launcher may end a process that takes more, so its own limits are lower: by a sixteenth of the memory, and a
// minute.
constexpr int memorySlack = 16;
constexpr int secondsSlack = 60;

int grown(int base, int perMegabyte, double megabytes)
{
    return static_cast<int>(std::min(base + std::ceil(perMegabyte * megabytes), 1e9));
}

NeedRates ratesOf(const Settings& settings)
{
    NeedRates rates;
    rates.mostCores = settings.launcher.mostCores;
    rates.mostMemory = settings.launcher.mostMemory;
    rates.memory = settings.launcher.memory;
    rates.memoryPerMegabyte = settings.launcher.memoryPerMegabyte;
    rates.seconds = settings.launcher.time;
    rates.secondsPerMegabyte = settings.launcher.timePerMegabyte;
    return rates;
}

} // namespace

ProcessNeeds needsOf(qint64 inputBytes, const NeedRates& rates)
{
    const double megabytes = static_cast<double>(std::max<qint64>(inputBytes, 0)) / megabyte;
    ProcessNeeds needs;
    needs.cores =
        static_cast<int>(std::clamp(1 + std::floor(megabytes / megabytesPerCore), 1.0, double(rates.mostCores)));
    needs.megabytes = grown(rates.memory, rates.memoryPerMegabyte, megabytes);
    if (rates.mostMemory > 0)
        needs.megabytes = std::min(needs.megabytes, rates.mostMemory);
    needs.seconds = grown(rates.seconds, rates.secondsPerMegabyte, megabytes);
    return needs;
}

Launcher::Launcher(const Settings& settings, const QString& input, const QString& output)
    : m_needs(needsOf(QFileInfo(input).size(), ratesOf(settings)))
{
    TemplateValues values{input, output};
    values.fields = {{QStringLiteral("cores"), QString::number(m_needs.cores)},
                     {QStringLiteral("memory"), QString::number(m_needs.megabytes)},
                     {QStringLiteral("seconds"), QString::number(m_needs.seconds)},
                     {QStringLiteral("minutes"), QString::number((m_needs.seconds + 59) / 60)}};
    m_words = filledTemplate(settings.converter.launcher, values);
}

QStringList Launcher::converterOptions() const
{
    if (!isUsed())
        return {};
    const int seconds = std::max(m_needs.seconds - secondsSlack, m_needs.seconds / 2);
    return {converterOption(setting::Threads, m_needs.cores),
            converterOption(setting::MemoryLimit, m_needs.megabytes - m_needs.megabytes / memorySlack),
            converterOption(setting::MemoryLimitPerMegabyte, 0), converterOption(setting::TimeLimit, seconds),
            converterOption(setting::TimeLimitPerMegabyte, 0)};
}

} // namespace zn::kernel
