#pragma once

#include <QString>
#include <QStringList>

/// The glTF validator, run on a file that a test has written. It is a package of its own that scripts/setup installs;
/// where it is not installed, a test skips:
///
///     if (!gltfvalidator::isInstalled())
///         GTEST_SKIP() << "the glTF validator is not installed";
///     EXPECT_EQ(gltfvalidator::validate(file), gltfvalidator::Verdict());
namespace gltfvalidator
{

/// What the validator says. An equal to Verdict() is a valid file without a single finding.
struct Verdict {
    QStringList errors;   ///< "CODE at /pointer: message" each, in the order of the validator
    QStringList warnings; ///< the same
    QString failure;      ///< why there is no verdict: file not there, validator not started

    bool operator==(const Verdict&) const = default;
};

/// True if node is on the PATH and the validator's package is in its place.
bool isInstalled();

/// Runs the validator on a glTF or GLB file and waits for its end, a minute at most.
Verdict validate(const QString& file);

} // namespace gltfvalidator
