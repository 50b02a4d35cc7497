#pragma once

#include <optional>

/// What the host side and the converter side agree on: neither sees the other, both see this.
namespace protocol
{

/// How a program of the converter side ends. Converters of other makers are understood as far as they keep to it.
/// A fatal signal n ends a program in `exitCodeOfSignal(n)`.
enum class ExitCode : int {
    NoExternalPartsEither = -1, ///< as NoExternalParts, from converters that count it as an error
    Success = 0,                ///< output written
    WrongUse = 2,               ///< the command line cannot be understood
    InputUnreadable = 3,        ///< input missing or unreadable
    OldStylarFile = 4,          ///< the file needs the update tool first
    NoExternalParts = 5,        ///< external parts were asked for and the file names none
    Unsupported = 6,            ///< no reader for this format
    Damaged = 7,                ///< the input is not what it should be; the log says where
    OutputFailed = 8,           ///< the output could not be written
    MemoryLimit = 10,           ///< more memory was needed than the limit allows
    TimeLimit = 11,             ///< more time was needed than the limit allows
    StallLimit = 12,            ///< no progress for as long as the limits allow, without work of the processor or with
    Cancelled = 21,             ///< asked to stop
    NothingToImport = 25        ///< read well, but there is no geometry in it
};

/// The number that the process ends with.
constexpr int number(ExitCode code)
{
    return static_cast<int>(code);
}

/// Exit codes arrive as numbers, and not every number is one of ours.
constexpr bool operator==(int exitCode, ExitCode known)
{
    return exitCode == number(known);
}

/// Exit codes above this tell the signal that ended the program.
inline constexpr int SignalBase = 128;

/// No system of ours has a signal above this.
inline constexpr int MostSignal = 64;

/// What a program ends with that the fatal signal `signal` hit.
constexpr int exitCodeOfSignal(int signal)
{
    return SignalBase + signal;
}

/// The signal that `exitCode` tells of; nothing when it tells of none.
constexpr std::optional<int> signalOf(int exitCode)
{
    const int signal = exitCode - SignalBase;
    return signal > 0 && signal <= MostSignal ? std::optional(signal) : std::nullopt;
}

} // namespace protocol
