#pragma once

namespace ptx
{

/// How the process ends. The numbers are the protocol with whoever started it; a fatal signal n ends in 128 + n.
enum class ExitCode : int {
    Success = 0,         ///< output written
    WrongUse = 2,        ///< the command line cannot be understood
    InputUnreadable = 3, ///< input missing or unreadable
    NoExternalParts = 5, ///< external parts were asked for and the file names none
    Unsupported = 6,     ///< no reader for this format
    Damaged = 7,         ///< the input is not what it should be; the log says where
    OutputFailed = 8,    ///< the output could not be written
    MemoryLimit = 10,
    TimeLimit = 11,
    StallLimit = 12,
    Cancelled = 21,      ///< asked to stop
    NothingToImport = 25 ///< read well, but there is no geometry in it
};

} // namespace ptx
