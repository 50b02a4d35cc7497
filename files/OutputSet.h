#pragma once

#include "files/OutputFile.h"

#include <memory>
#include <vector>

namespace files
{

/// Files that come into being together: none of them takes its name before all are complete, and when one cannot, those
/// that did are taken back, and what they had replaced is there again.
class OutputSet
{
public:
    /// The file for `target`, to be written until `commit`.
    OutputFile& add(const QString& target);

    /// All take their names, or none does. The error is that of the first file that cannot.
    Expected<void> commit();

private:
    /// What stood at a target.
    struct Kept {
        QString target;
        QString path; ///< where it is meanwhile; empty when there was nothing
    };

    static Expected<Kept> keep(const QString& target);
    static void takeBack(const std::vector<Kept>& kept);

    std::vector<std::unique_ptr<OutputFile>> m_files;
};

} // namespace files
