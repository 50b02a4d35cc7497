#pragma once

#include "importer/PartCounts.h"

#include <QElapsedTimer>
#include <QString>

#include <cstdio>

namespace znimport
{

/// Shows what an import is doing: one line that changes on a terminal, otherwise a line for each new stage.
class ProgressDisplay
{
public:
    /// Writes to `stream`; `moving` tells whether it is a terminal.
    ProgressDisplay(std::FILE* stream, bool moving);
    /// Takes the moving line away.
    ~ProgressDisplay();
    ProgressDisplay(const ProgressDisplay&) = delete;
    ProgressDisplay& operator=(const ProgressDisplay&) = delete;

    /// Begins the display of a new file.
    void begin(const QString& file);
    /// `percent` of 0 stands for a stage without a number.
    void show(unsigned percent, const QString& stage);
    /// How far the parts of the file are, in words. Without a moving line only the end of all parts is worth one.
    void showParts(const zn::PartCounts& counts, const QString& text);
    /// Takes the moving line away, so that something else can be written.
    void clear();

private:
    std::FILE* m_stream;
    bool m_moving;
    bool m_lineShown = false;
    QString m_file;
    QString m_lastStage;
    QElapsedTimer m_elapsed;
};

} // namespace znimport
