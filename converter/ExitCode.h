#pragma once

/// The exit codes of the converter that the library gives a meaning of its own.
namespace znExitCode
{

constexpr int OldStylarFile = 4;          ///< the file needs the update tool first
constexpr int NoExternalParts = 5;        ///< external parts were asked for and the file has none
constexpr int NoExternalPartsEither = -1; ///< the same, from converters that count it as an error
constexpr int Cancelled = 21;             ///< the converter was asked to stop
constexpr int NothingToImport = 25;       ///< the file holds nothing to import

} // namespace znExitCode
