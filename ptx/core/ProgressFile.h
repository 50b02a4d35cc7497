#pragma once

#include "ptx/core/FileBeside.h"
#include "ptx/core/Stage.h"

#include <string>

namespace ptx::core
{

/// The progress file: a number and a stage word, each with a line end.
///
/// Whoever started the process seeds and watches this file, so it is neither truncated nor made anew: every change is
/// one write of the same length at the file's start, padded with blanks. A reader thus never sees it empty or torn.
class ProgressFile
{
public:
    static constexpr int Length = 30; ///< bytes of each write; more than the seed's

    /// Opens `path`, which is created when it is missing. A file that cannot be opened leaves the object without
    /// effect: a conversion does not fail for want of an audience.
    explicit ProgressFile(const std::string& path);

    bool isOpen() const { return m_file.isOpen(); }
    /// Why it is not open.
    const std::string& trouble() const { return m_file.trouble(); }
    /// The number in the file; 0 where there is none.
    int percent() const;
    /// Writes unless number and word are those written last.
    void write(int percent, Stage stage);

private:
    FileBeside m_file;
    int m_percent = -1;
    Stage m_stage = Stage::Unknown;
};

} // namespace ptx::core
