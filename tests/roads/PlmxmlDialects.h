#pragma once

#include <string>

namespace dialects
{

/// Who writes a document.
enum class Dialect {
    Pdm,        ///< occurrences with transforms that lead to the top, and files of data sets
    Session,    ///< a graph, and occurrences that move single places
    CadSystem,  ///< a graph of assemblies, parts with several representations, and a view that repeats all places
    Automotive, ///< a graph whose parts have compound representations, among elements of another namespace
    Graph,      ///< a graph alone
    Flat        ///< instances and parts without a graph
};

/// How many part files there are: "part0.obj" and so on, each a tetrahedron with the corners (0, 0, 0), (100, 0, 0),
/// (0, 200, 0) and (0, 0, 300 + 10 i) in millimetres.
inline constexpr int PartFiles = 4;

/// A document of a random structure with so many places, up to three times as many; the same for the same seed. One
/// seed is the same structure in all dialects, and has the same names as occurrences and as a graph.
std::string makeDocument(Dialect dialect, unsigned seed, int places = 1);

} // namespace dialects
