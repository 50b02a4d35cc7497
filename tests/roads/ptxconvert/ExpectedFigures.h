#pragma once

#include <string>
#include <vector>

namespace jttest
{

/// What an independent decoder made of a real file; lengths are those of the file.
struct Figures {
    std::string file; ///< relative to the folder
    std::string version;
    double millimetres = 1; ///< of one unit
    std::size_t nodes = 0;  ///< of the kinds that the decoder counts
    std::size_t instanceNodes = 0;
    std::size_t partOccurrences = 0;
    std::size_t triangles = 0; ///< of the finest level, as often as they are placed
    std::vector<float> box;    ///< low and high corner
    std::vector<std::string> externalFiles;
};

/// The folder of real JT files with its trailing slash; empty when ZN_CORPUS names none.
std::string corpusFolder();

/// The figures of all files of the corpus; none without a corpus.
std::vector<Figures> expectedFigures();

} // namespace jttest
