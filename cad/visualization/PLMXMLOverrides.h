#pragma once

#include <string>
#include <vector>

namespace HB::XML::CAD
{
class CADDocument;
class CADInstance;
} // namespace HB::XML::CAD

namespace HB::Visualization
{

/// The references that an occurrence puts in place of an instance's own; empty texts leave those in force.
struct PLMXMLOverride {
    std::string transform; ///< to a transform
    std::string material;  ///< to a material
};

/// What holds of `instance` where it stands at the end of `path`, the ids of the instances from the root on.
PLMXMLOverride findOverride(const XML::CAD::CADDocument& document, XML::CAD::CADInstance& instance,
                            const std::vector<std::string>& path);

} // namespace HB::Visualization
