#pragma once

#include <string>

/// An assembly of many small part files: each part is a box of its own size, and references to the parts lie on a grid.
struct AssemblyPlan {
    int parts = 1000;
    int references = 10000; ///< go round the parts in turn

    /// The corner of reference `index`, in millimetres; its part is `index` modulo the number of parts.
    struct Place {
        double x = 0, y = 0, z = 0;
    };
    static Place place(int index) { return {20.0 * (index % 100), 20.0 * (index / 100), 5}; }
    /// The edge lengths of a part.
    static Place size(int part) { return {1 + 0.01 * part, 2, 3}; }

    /// "part-0007.stp"
    static std::string partName(int part);

    /// Writes "assembly.stp" and the part files into `folder`, which exists, and gives the path of the assembly; empty
    /// when a file cannot be written.
    std::string write(const std::string& folder) const;
};

/// A car whose parts lie in files of their own, over two levels: a lamp, and a wheel with two bolts, which are on a
/// layer that is switched off. It has references with and without a transform, and all of them have names that no
/// product has.
struct CarPlan {
    /// Writes "car.stp", "wheel.stp", "bolt.stp" and "lamp.stp" into `folder`, which exists, and gives the path of the
    /// car; empty when a file cannot be written.
    static std::string write(const std::string& folder);
};
