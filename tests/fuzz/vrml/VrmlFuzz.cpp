// Any bytes as a VRML file: an error or a tree, nothing left alive.
//
// zn_vrml_fuzz -dict=<this folder>/vrml.dict <a folder for findings> <this folder>/corpus

#include "files/SceneReaders.h"
#include "files/vrml/VrmlReader.h"
#include "scene/ContainerRegistry.h"
#include "tests/files/scenefile/TreeWalk.h"
#include "tests/fuzz/FuzzedFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace fuzzing;
    static const InputFile file;
    file.write(data, size);
    files::SceneReaders readers;
    readers.add({QStringLiteral("VRML97"), {QString()}, files::vrml::readVrml});
    const files::ReadResult result = readers.read(file.name(), limits());
    require(!result || result.value());
    if (result)
        touchEverything(osg::RefPtr<osg::NodePtr>(result.value()));
    require(osg::livingContainerCount() == 0);
    osg::sweepContainers();
    return 0;
}
