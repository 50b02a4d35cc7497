#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace protocol
{

/// A format that the converter reads.
struct ReadFormat {
    const char* name;                        ///< for a person
    std::span<const char* const> extensions; ///< lower case, without the dot; the usual one first
};

namespace format
{

inline constexpr const char* StepExtensions[] = {"stp", "step"};
inline constexpr const char* IgesExtensions[] = {"igs", "iges"};
inline constexpr const char* JtExtensions[] = {"jt"};
inline constexpr const char* StlExtensions[] = {"stl", "stla", "stlb"};
inline constexpr const char* BrepExtensions[] = {"brep", "brp"}; ///< of no format of the vocabulary

inline constexpr ReadFormat Step{"STEP", StepExtensions};
inline constexpr ReadFormat Iges{"IGES", IgesExtensions};
inline constexpr ReadFormat Jt{"JT", JtExtensions};
inline constexpr ReadFormat Stl{"STL", StlExtensions};
inline constexpr ReadFormat Brep{"BREP", BrepExtensions};

} // namespace format

/// All formats that the converter reads, in the order in which it looks at a file.
inline constexpr std::array<ReadFormat, 5> ReadFormats = {format::Step, format::Iges, format::Jt, format::Stl,
                                                          format::Brep};

/// The extension of a file's name, lower case and without the dot. A packed STEP file ("a.stpz", "a.step.gz",
/// "a.stp.zip") has that of the file in it.
std::string extensionOf(std::string_view fileName);

/// The names under which the file of this name may lie packed; none for other files than STEP files.
std::vector<std::string> packedNames(std::string_view fileName);

/// Whether files of this extension (lower case, without the dot) go through the converter: those of the vocabulary's
/// CAD formats, and those of the converter's own.
bool isConverted(std::string_view extension);

/// Whether files of this extension (lower case, without the dot) may name parts in other files. It is the one answer to
/// that question: who asks the converter to keep part files apart asks it, and the converter's readers keep to it. What
/// a file of such a format really names is told by the converter alone, with `ExitCode::NoExternalParts`.
bool mayNamePartFiles(std::string_view extension);

} // namespace protocol
