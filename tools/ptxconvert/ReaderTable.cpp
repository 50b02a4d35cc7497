#include "tools/ptxconvert/ReaderTable.h"

#include "protocol/Formats.h"
#include "ptx/readers/brep/recognition/BrepFormat.h"
#include "ptx/readers/iges/recognition/IgesFormat.h"
#include "ptx/readers/jt/JtReader.h"
#include "ptx/readers/step/recognition/StepFormat.h"
#include "ptx/readers/stl/StlReader.h"
#include "tools/ptxconvert/ReaderModules.h"

#include <algorithm>
#include <array>

namespace ptxconvert
{

namespace
{

constexpr const char* Step = "ptxstep";
constexpr const char* Iges = "ptxiges";
constexpr const char* Brep = "ptxbrep";

template <const char* const& Library>
ptx::core::Outcome<ptx::model::Model> readWith(const ptx::model::Job& job)
{
    const ptx::core::Outcome<const ptx::readers::Module*> reader = loadReader(Library);
    if (!reader)
        return reader.failure();
    job.log.info("CAD kernel " + std::string(reader.value()->kernel));
    return reader.value()->read(job);
}

template <const char* const& Library>
ptx::readers::Format readBy(ptx::readers::Format format)
{
    format.read = readWith<Library>;
    return format;
}

} // namespace

ptx::readers::Formats formats()
{
    static const std::array<ptx::readers::Format, 5> rows = {
        readBy<Step>(ptx::step::recognition::format()), readBy<Iges>(ptx::iges::recognition::format()),
        ptx::jt::format(), ptx::stl::format(), readBy<Brep>(ptx::brep::recognition::format())};
    return rows;
}

bool needsModule(const std::string& file)
{
    const std::string extension = protocol::extensionOf(file);
    const auto isOf = [&extension](const protocol::ReadFormat& format) {
        return std::find(format.extensions.begin(), format.extensions.end(), extension) != format.extensions.end();
    };
    return isOf(protocol::format::Step) || isOf(protocol::format::Iges) || isOf(protocol::format::Brep);
}

std::string readerVersions()
{
    std::string text;
    for (const auto& [library, format] : {std::pair(Step, ptx::step::recognition::format().name),
                                          std::pair(Iges, ptx::iges::recognition::format().name),
                                          std::pair(Brep, ptx::brep::recognition::format().name)}) {
        const ptx::core::Outcome<const ptx::readers::Module*> reader = loadReader(library);
        text += std::string(format) + ": " +
                (reader ? "Open CASCADE " + std::string(reader.value()->kernel) : reader.failure().message) + '\n';
    }
    return text;
}

void prepareReaders()
{
    for (const char* library : {Step, Iges, Brep})
        (void)loadReader(library, Binding::AtOnce);
}

void prepareReadersForHosts()
{
    (void)loadMeshReader(Binding::AtOnce);
    (void)loadDocumentReader(Binding::AtOnce);
}

} // namespace ptxconvert
