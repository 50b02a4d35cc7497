// Any bytes as a glTF file: an error or a tree, nothing left alive. Pictures on its materials are made smaller, as for
// a GLB file.
//
// zn_gltf_fuzz -dict=<this folder>/gltf.dict <a folder for findings> <this folder>/corpus

#include "files/SceneReaders.h"
#include "files/glb/images/FittedImage.h"
#include "files/gltf/GltfReader.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "scene/ContainerRegistry.h"
#include "scene/MaterialLook.h"
#include "tests/files/scenefile/TreeWalk.h"
#include "tests/fuzz/FuzzedFile.h"

namespace
{

/// Makes the pictures on what is drawn at and below `root` smaller, as a GLB file may ask.
void fitPictures(const osg::NodePtr& root)
{
    std::vector<osg::NodePtr> nodes = {root};
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const auto geometry = osg::fcCast<osg::Geometry>(nodes[i]->getCore());
        const osg::PhysicalSurface surface = osg::surfaceOf(geometry ? geometry->getMaterial() : osg::MaterialPtr());
        for (const auto& [slot, texture] : surface.textures)
            (void)files::glb::images::fitted(texture.image, 4);
        for (unsigned child = 0; child < nodes[i]->getNChildren(); ++child)
            nodes.push_back(nodes[i]->getChild(child));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace fuzzing;
    static const InputFile file;
    file.write(data, size);
    files::SceneReaders readers;
    readers.add({QStringLiteral("glTF"), {QString()}, files::gltf::readGltf});
    const files::ReadResult result = readers.read(file.name(), limits());
    require(!result || result.value());
    if (result) {
        const osg::RefPtr<osg::NodePtr> root(result.value());
        fitPictures(root.get());
        touchEverything(root);
    }
    require(osg::livingContainerCount() == 0);
    osg::sweepContainers();
    return 0;
}
