// Any bytes as a VRML file: an error or a tree, nothing left alive.
//
// zn_vrml_fuzz -dict=<this folder>/vrml.dict <a folder for findings> <this folder>/corpus

#include "files/SceneReaders.h"
#include "files/vrml/VrmlReader.h"
#include "scene/ContainerRegistry.h"
#include "tests/files/scenefile/TreeWalk.h"

#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

namespace
{

void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// A file in memory, under a name without an extension.
class InputFile
{
public:
    InputFile() : m_file(memfd_create("input", MFD_CLOEXEC)) { require(m_file >= 0); }

    void write(const std::uint8_t* data, std::size_t size) const
    {
        require(ftruncate(m_file, 0) == 0 && pwrite(m_file, data, size, 0) == static_cast<ssize_t>(size));
    }

    QString name() const { return QStringLiteral("/proc/self/fd/%1").arg(m_file); }

private:
    int m_file;
};

/// Small enough for a small memory and a short time.
files::ReadOptions limits()
{
    files::ReadOptions options;
    options.limits.maxFileBytes = 1 << 22;
    options.limits.maxNodes = 1 << 13;
    options.limits.maxVertices = 1 << 20;
    return options;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
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
