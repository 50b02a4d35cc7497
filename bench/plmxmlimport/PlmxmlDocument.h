#pragma once

#include <string>

/// A PLMXML document of instances that go round part files in turn, each moved to a place of its own.
struct PlmxmlDocument {
    int instances = 10000;
    int parts = 500;
    int boxesOfPart = 1; ///< separate solids in each STEP file, which tell how long its conversion takes

    /// Writes "assembly.plmxml" and the part files into `folder`, which exists, and gives the path of the document;
    /// empty when a file cannot be written.
    std::string write(const std::string& folder) const;
};
