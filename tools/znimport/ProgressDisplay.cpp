#include "tools/znimport/ProgressDisplay.h"

#include "protocol/Printable.h"
#include <QFileInfo>

namespace znimport
{

ProgressDisplay::ProgressDisplay(std::FILE* stream, bool moving) : m_stream(stream), m_moving(moving) {}

ProgressDisplay::~ProgressDisplay()
{
    clear();
}

void ProgressDisplay::begin(const QString& file)
{
    clear();
    m_file = QFileInfo(file).fileName();
    m_lastStage.clear();
    m_elapsed.start();
}

void ProgressDisplay::show(unsigned percent, const QString& stage)
{
    if (!m_moving && stage == m_lastStage)
        return;
    m_lastStage = stage;
    QString line = m_file + QStringLiteral(": ") + stage;
    if (percent > 0 && m_moving)
        line += QStringLiteral(" %1 %").arg(percent);
    if (m_moving)
        line += QStringLiteral("  %1 s").arg(double(m_elapsed.elapsed()) / 1000, 0, 'f', 1);
    std::fprintf(m_stream, m_moving ? "\r\x1b[K%s" : "%s\n", protocol::printableLine(line.toStdString()).c_str());
    std::fflush(m_stream);
    m_lineShown = m_moving;
}

void ProgressDisplay::showParts(const zn::PartCounts& counts, const QString& text)
{
    if (m_moving || counts.allEnded())
        show(counts.percent(), text);
}

void ProgressDisplay::clear()
{
    if (m_lineShown)
        std::fputs("\r\x1b[K", m_stream);
    m_lineShown = false;
    std::fflush(m_stream);
}

} // namespace znimport
