#pragma once

#include "files/ply/PlyHeader.h"

#include <memory>

namespace files::ply
{

/// The values after the header, taken one by one in the order of the file. A row holds the values of one element: in a
/// text a line of its own.
class PlyValues
{
public:
    /// `file` and `task` outlive the result.
    static std::unique_ptr<PlyValues> open(const PlyHeader& header, std::string_view file, const ReadTask& task);
    virtual ~PlyValues() = default;

    virtual void beginRow() = 0;
    /// Fails through the task at the end of the data, and where there is no number.
    virtual double take(PlyType type) = 0;
    /// No more than this many values of this type can follow.
    virtual std::uint64_t possible(PlyType type) const = 0;
    /// The line or the byte of the next value.
    virtual QString place() const = 0;

    /// The length of a list that is to come, held against what is left of the file.
    std::uint64_t takeLength(const PlyProperty& list);

protected:
    explicit PlyValues(const ReadTask& task) : m_task(task) {}

    [[noreturn]] void fail(const QString& message) const { m_task.fail(ErrorCode::Damaged, message, place()); }

private:
    const ReadTask& m_task;
};

} // namespace files::ply
