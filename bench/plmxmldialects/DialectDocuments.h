#pragma once

#include <string>

/// A structure of groups with a hundred leaves each, placed along two axes; a hundred parts with a missing file each.
/// Both documents say the same.
struct DialectDocuments {
    int places = 100000; ///< about

    /// As a PDM system exports it: occurrences with transforms that lead to the top, and the instances of each.
    std::string exported() const;
    /// As the loader reads it.
    std::string plain() const { return fitting({}); }

    /// What a document of the loader's form may say of its leaves, and still be read as it stands.
    struct Sayings {
        bool hasUserData = false;    ///< two values of each
        bool hasOccurrences = false; ///< moves each tenth
    };
    /// As the loader reads it, with that.
    std::string fitting(const Sayings& says) const;
};
