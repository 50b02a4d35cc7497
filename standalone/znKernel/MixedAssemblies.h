#pragma once

#include <QString>

#include <functional>

namespace zn::kernel
{

/// Answers `znFileIOHelper::canContainMixedAssemblies` in place of the table of formats, for a host whose converters
/// know better; empty in normal work.
struct MixedAssemblies {
    std::function<bool(const QString& path)> canContain;
};

} // namespace zn::kernel
