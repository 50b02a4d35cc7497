// Any bytes as a scene file: an error or a sound tree, nothing read outside, nothing left alive.
//
// zn_scenefile_fuzz NEW_FOLDER tests/fuzz/scenefile/corpus tests/files/scenefile/golden

#include "files/scenefile/ReadScene.h"
#include "scene/ContainerRegistry.h"
#include "tests/files/scenefile/FileBuilder.h"
#include "tests/files/scenefile/TreeWalk.h"

#include <cstdlib>

namespace
{

void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// Small enough for a small memory.
osg::scenefile::SceneFileReadOptions limits(bool verifyChecksums)
{
    osg::scenefile::SceneFileReadOptions options;
    options.maxContainers = 1 << 18;
    options.maxTextBytes = 1 << 24;
    options.verifyChecksums = verifyChecksums;
    return options;
}

/// A tree that comes back can be used, and written again.
void use(const osg::RefPtr<osg::NodePtr>& root)
{
    touchEverything(root);
    osg::scenefile::GraphWriter writer({});
    require(static_cast<bool>(writer.collect(root)));
    require(!writer.graph().empty());
}

void readAndUse(const filebuilder::Bytes& bytes, bool verifyChecksums)
{
    const files::Result<osg::NodePtr> result =
        osg::scenefile::readScene(osg::scenefile::copyBytes(bytes), limits(verifyChecksums));
    require(!result || result.value());
    if (result)
        use(osg::RefPtr<osg::NodePtr>(result.value()));
    require(osg::livingContainerCount() == 0);
    osg::sweepContainers();
}

/// What checksums and sizes would refuse at once goes on into the depths.
void mend(filebuilder::Bytes& bytes)
{
    osg::scenefile::FileHeader header = filebuilder::headerOf(bytes);
    header.magic = osg::scenefile::fileMagic;
    header.version = osg::scenefile::fileVersion;
    header.fileSize = bytes.size();
    filebuilder::put(bytes, 0, header);
    filebuilder::seal(bytes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto* start = reinterpret_cast<const std::byte*>(data);
    filebuilder::Bytes bytes(start, start + size);
    readAndUse(bytes, true);
    if (bytes.size() < sizeof(osg::scenefile::FileHeader))
        return 0;
    mend(bytes);
    readAndUse(bytes, false);
    return 0;
}
