#include "ptx/occt/meshing/BrepBlob.h"

#include <BinTools.hxx>
#include <TopoDS_Shape.hxx>

#include <cstring>
#include <sstream>
#include <vector>

namespace ptx::occt::meshing
{

osg::Buffer<std::byte> brepBlob(const TopoDS_Shape& shape)
{
    std::ostringstream stream(std::ios::binary);
    BinTools::Write(shape, stream, false, false, BinTools_FormatVersion_CURRENT);
    const std::string text = stream.str();
    std::vector<std::byte> bytes(text.size());
    std::memcpy(bytes.data(), text.data(), text.size());
    return bytes;
}

} // namespace ptx::occt::meshing
