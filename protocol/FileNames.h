#pragma once

namespace protocol
{

/// The extension of the file that a conversion makes, with its dot.
inline constexpr char SceneFileSuffix[] = ".osb";

/// What the name of the progress file has behind the name of the output: percent and stage word of a run.
inline constexpr char ProgressSuffix[] = ".tmp";

/// What the name of the log has behind the name of the output.
inline constexpr char LogSuffix[] = ".log";

/// Begins the text of the line of a log that tells why the run failed.
inline constexpr char LogErrorMark[] = "Error: ";

/// What the name of the file with what a read for a host has to tell beside has behind the name of the output.
inline constexpr char NotesSuffix[] = ".notes";

/// What the name of the file of part marks has behind the name of the output.
inline constexpr char PartMarksSuffix[] = ".parts";

/// The file of part marks of `ptxtessellate` has one of these letters for each part, true at every moment: whoever
/// finds the program dead reads in it which parts were at work.
namespace partmark
{

inline constexpr char Waits = '.';
inline constexpr char Started = 's';
inline constexpr char Ended = 'e';

} // namespace partmark

} // namespace protocol
