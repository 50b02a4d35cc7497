#pragma once

#include <QString>

#include <string>
#include <utility>
#include <vector>

/// Settings of a run: name and value.
using RunSettings = std::vector<std::pair<const char*, const char*>>;

/// The seconds of each step, in their order, by its name; empty when the run failed.
using StepSeconds = std::vector<std::pair<std::string, double>>;

/// Optimises a generated tree of about this many nodes in a session of its own.
StepSeconds optimizeGenerated(unsigned nodes, const RunSettings& settings);

/// Imports a CAD file and gives what its optimisation took. Needs an application object.
StepSeconds optimizeImported(const QString& file, std::size_t& nodes);
