#include "ptx/readers/stl/StlReader.h"

#include "protocol/Formats.h"
#include "ptx/readers/FileContent.h"
#include "ptx/readers/stl/StlBinary.h"
#include "ptx/readers/stl/StlMesh.h"
#include "ptx/readers/stl/StlText.h"

#include <filesystem>

namespace ptx::stl
{

namespace
{

// Three vertices a triangle at most have to be countable.
constexpr std::size_t MostFacets = 0xFFFFFFFFu / 3;

bool isText(std::string_view head)
{
    constexpr std::string_view Word = "solid";
    const std::size_t start = head.find_first_not_of(" \t\r\n");
    if (start == std::string_view::npos || head.size() - start < Word.size())
        return false;
    for (std::size_t i = 0; i < Word.size(); ++i)
        if ((head[start + i] | 0x20) != Word[i])
            return false;
    return head.find('\0', start) == std::string_view::npos;
}

// Binary files may begin with "solid" as well: the count of triangles decides.
bool isBinary(std::string_view head, std::uint64_t size)
{
    return binarySize(head) == size;
}

// Some programs add bytes of their own behind the triangles.
readers::Match probe(std::string_view head, std::uint64_t size)
{
    if (isBinary(head, size))
        return readers::Match::Certain;
    if (isText(head))
        return head.find("facet") != std::string_view::npos || head.find("FACET") != std::string_view::npos
                   ? readers::Match::Certain
                   : readers::Match::Possible;
    return binarySize(head) > 0 ? readers::Match::Possible : readers::Match::No;
}

void addSolid(model::Model& model, const Solid& solid, const model::Job& job, bool isOnly)
{
    const std::string file = std::filesystem::path(job.input).stem().string();
    model::Product product;
    product.name = !solid.name.empty() ? solid.name
                   : isOnly            ? file
                                       : file + " " + std::to_string(model.products.size() + 1);
    product.body = model.bodies.size();
    const auto unit = static_cast<float>(job.settings.number(core::Setting::MeshUnit));
    model.bodies.push_back({{{model::NoAppearance, meshOf(solid, unit)}}});
    model::Occurrence occurrence;
    occurrence.product = model.products.size();
    model.products.push_back(std::move(product));
    model.roots.push_back(std::move(occurrence));
}

core::Outcome<model::Model> modelOf(const std::vector<Solid>& solids, const model::Job& job)
{
    model::Model model;
    std::size_t facets = 0;
    for (const Solid& solid : solids) {
        facets += solid.facets.size();
        if (solid.facets.size() > MostFacets)
            return core::Failure{core::ExitCode::MemoryLimit, "a solid has more triangles than a mesh can hold"};
        if (solid.facets.empty())
            job.log.warning("solid \"" + solid.name + "\" has no triangles");
        else
            addSolid(model, solid, job, solids.size() == 1);
    }
    if (facets == 0)
        return core::Failure{core::ExitCode::NothingToImport, "the file is an STL file without triangles"};
    job.log.info(std::to_string(solids.size()) + " solids, " + std::to_string(facets) + " triangles");
    return model;
}

core::Outcome<model::Model> readSolids(std::string_view content, const model::Job& job)
{
    if (isBinary(content, content.size()) || !isText(content)) {
        core::Outcome<Solid> solid = readBinary(content, job.progress);
        return solid ? modelOf({std::move(solid.value())}, job) : core::Outcome<model::Model>(solid.failure());
    }
    core::Outcome<TextResult> text = readText(content, job.progress);
    if (!text)
        return text.failure();
    if (text.value().isCutOff)
        job.log.warning("the STL text is cut off: it ends within its last solid");
    return modelOf(text.value().solids, job);
}

core::Outcome<model::Model> readStl(const model::Job& job)
{
    job.progress.begin(core::Stage::ReadAndProcess);
    const core::Outcome<std::string> content = readers::readContent(job.input);
    if (!content)
        return content.failure();
    return readSolids(content.value(), job);
}

constexpr readers::Format Row = {protocol::format::Stl.name, protocol::format::Stl.extensions, probe, readStl};

} // namespace

const readers::Format& format()
{
    return Row;
}

} // namespace ptx::stl
