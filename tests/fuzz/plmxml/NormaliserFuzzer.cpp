// Normalises the input, and gives what comes of it to the loader's model, which must be able to read it.

#include "cad/xml/CADDocument.h"
#include "importer/plmxml/Normaliser.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace
{

/// A file in memory, under a name that can be opened.
class MemoryFile
{
public:
    explicit MemoryFile(const char* name) : m_file(memfd_create(name, MFD_CLOEXEC))
    {
        if (m_file < 0)
            std::abort();
    }

    void write(const void* data, std::size_t size) const
    {
        if (ftruncate(m_file, 0) != 0 || pwrite(m_file, data, size, 0) != static_cast<ssize_t>(size))
            std::abort();
    }

    std::string name() const { return "/proc/self/fd/" + std::to_string(m_file); }

private:
    int m_file;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using importer::plmxml::NormalisedDocument;
    static const MemoryFile input("input");
    static const MemoryFile output("output");
    input.write(data, size);
    const NormalisedDocument result = importer::plmxml::normalise(QString::fromStdString(input.name()), {});
    if (result.way != NormalisedDocument::Way::AsText)
        return 0;
    output.write(result.text.data(), result.text.size());
    HB::XML::CAD::CADDocument document;
    document.load(output.name());
    if (document.getProductDefCount() != 1)
        std::abort();
    return 0;
}
