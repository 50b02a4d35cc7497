// Loads the input as a document and follows everything that the model gives out.

#include "cad/xml/CADCompoundRef.h"
#include "cad/xml/CADDocument.h"
#include "cad/xml/CADInstance.h"
#include "cad/xml/CADInstanceGraph.h"
#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADPart.h"
#include "cad/xml/CADProductDef.h"
#include "cad/xml/CADProductView.h"
#include "cad/xml/CADReference.h"
#include "cad/xml/CADTransform.h"
#include "cad/xml/CADUserData.h"
#include "cad/xml/CADUserValue.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

using namespace HB::XML::CAD;

namespace
{

/// A file in memory, under a name that the C library opens.
class InputFile
{
public:
    InputFile() : m_file(memfd_create("input", MFD_CLOEXEC))
    {
        if (m_file < 0)
            std::abort();
    }

    void write(const std::uint8_t* data, std::size_t size) const
    {
        if (ftruncate(m_file, 0) != 0 || pwrite(m_file, data, size, 0) != static_cast<ssize_t>(size))
            std::abort();
    }

    std::string name() const { return "/proc/self/fd/" + std::to_string(m_file); }

private:
    int m_file;
};

void require(bool condition)
{
    if (!condition)
        std::abort();
}

void followUserData(const CADBase& element)
{
    if (!element.getUserData())
        return;
    for (const auto* value : element.getUserData()->getUserValues())
        require(value->getParent() == element.getUserData() && static_cast<std::uint32_t>(value->getType()) <= 10);
}

void followPart(const CADDocument& document, CADPart& part)
{
    require(static_cast<std::uint32_t>(part.getType()) <= 5);
    followUserData(part);
    for (const auto& reference : part.getRepresentationRefs()) {
        const auto* representation = document.findRepresentation(reference);
        require(!representation || static_cast<std::uint32_t>(representation->getType()) <= 6);
    }
    for (const auto& reference : part.getInstanceRefs())
        document.findInstance(reference);
}

void followOccurrences(const CADDocument& document, const std::vector<CADOccurrence*>& occurrences,
                       const std::vector<std::string>& path)
{
    for (const auto* occurrence : occurrences) {
        require(equalPaths(occurrence->getInstanceRefs(), path));
        if (const auto* transform = document.findTransform(occurrence->getTransformRef()))
            require(static_cast<std::uint32_t>(transform->getType()) <= 4);
        if (const auto* material = document.findMaterial(occurrence->getMaterialRef()))
            require(!material->getAmbient().empty());
    }
}

void followInstance(const CADDocument& document, CADInstance& instance)
{
    const std::vector<std::string> path{"#" + instance.getId()};
    followUserData(instance);
    if (const auto* productDef = instance.getRootProductDef())
        followOccurrences(document, productDef->findOccurrences(path), path);
    if (const auto* view = document.getActiveProductView())
        followOccurrences(document, view->findOccurrences(path), path);
    if (auto* part = document.findPart(instance.getPartRef()))
        followPart(document, *part);
}

void follow(const CADDocument& document)
{
    for (std::uint32_t i = 0; i < document.getProductDefCount(); ++i) {
        const auto& productDef = *document.getProductDef(i);
        for (std::uint32_t graph = 0; graph < productDef.getInstanceGraphCount(); ++graph) {
            for (const auto& reference : productDef.getInstanceGraph(graph)->getRootRefs()) {
                if (auto* instance = document.findInstance(reference))
                    followInstance(document, *instance);
                else if (auto* part = document.findPart(reference))
                    followPart(document, *part);
            }
        }
        followOccurrences(document, productDef.findOccurrences({}), {});
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const InputFile file;
    file.write(data, size);
    CADDocument document;
    try {
        document.load(file.name());
    } catch (const std::exception&) {
        return 0; // a failed load is an answer
    }
    follow(document);
    return 0;
}
