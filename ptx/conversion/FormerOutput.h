#pragma once

#include <string>

namespace ptx::conversion
{

/// The output of a run before, out of the way while this run is at work: whoever looks for the output finds that of
/// this run or none, and after a run that failed the one of before is back.
///
/// It lies beside the output under a hidden name that follows from the output's. A process that is killed leaves it
/// there; the next run for the same output takes it for the output of before.
class FormerOutput
{
public:
    /// Looks at `output`; one that may not be written, or is `input`, stays where it is.
    FormerOutput(const std::string& output, const std::string& input);
    /// Puts it back, unless the output of this run stands.
    ~FormerOutput();
    FormerOutput(const FormerOutput&) = delete;
    FormerOutput& operator=(const FormerOutput&) = delete;

    /// From now on the process cannot end without putting it back, unless it is killed.
    void moveAside();
    /// The output of this run stands: it gets the permissions of the former one, which goes.
    void drop();

private:
    std::string m_output; ///< the file itself where the output is a link
    std::string m_aside;  ///< empty when there is nothing to move
    bool m_isAway = false;
};

} // namespace ptx::conversion
