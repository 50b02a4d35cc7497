#pragma once

#include <string>

namespace HB::XML::CAD
{
class CADUserData;
}

namespace HB::Visualization
{

/// User data in an XML form of its own, whose type words are other ones than those that documents use. Titles and
/// values are written as they stand, without escapes.
std::string userDataText(const XML::CAD::CADUserData& userData);

} // namespace HB::Visualization
