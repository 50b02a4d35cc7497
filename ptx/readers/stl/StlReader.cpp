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
Match probe(std::string_view head, std::uint64_t size)
{
    if (isBinary(head, size))
        return Match::Certain;
    if (isText(head))
        return head.find("facet") != std::string_view::npos || head.find("FACET") != std::string_view::npos
                   ? Match::Certain
                   : Match::Possible;
    return binarySize(head) > 0 ? Match::Possible : Match::No;
}

void addSolid(Model& model, const Solid& solid, const Job& job, bool isOnly)
{
    const std::string file = std::filesystem::path(job.input).stem().string();
    Product product;
    product.name = !solid.name.empty() ? solid.name
                   : isOnly            ? file
                                       : file + " " + std::to_string(model.products.size() + 1);
    product.body = model.bodies.size();
    const auto unit = static_cast<float>(job.settings.number(Setting::MeshUnit));
    model.bodies.push_back({{{NoAppearance, meshOf(solid, unit)}}});
    Occurrence occurrence;
    occurrence.product = model.products.size();
    model.products.push_back(std::move(product));
    model.roots.push_back(std::move(occurrence));
}

Outcome<Model> modelOf(const std::vector<Solid>& solids, const Job& job)
{
    Model model;
    std::size_t facets = 0;
    for (const Solid& solid : solids) {
        facets += solid.facets.size();
        if (solid.facets.size() > MostFacets)
            return Failure{ExitCode::MemoryLimit, "a solid has more triangles than a mesh can hold"};
        if (solid.facets.empty())
            job.log.warning("solid \"" + solid.name + "\" has no triangles");
        else
            addSolid(model, solid, job, solids.size() == 1);
    }
    if (facets == 0)
        return Failure{ExitCode::NothingToImport, "the file is an STL file without triangles"};
    job.log.info(std::to_string(solids.size()) + " solids, " + std::to_string(facets) + " triangles");
    return model;
}

Outcome<Model> readSolids(std::string_view content, const Job& job)
{
    if (isBinary(content, content.size()) || !isText(content)) {
        Outcome<Solid> solid = readBinary(content, job.progress);
        return solid ? modelOf({std::move(solid.value())}, job) : Outcome<Model>(solid.failure());
    }
    Outcome<TextResult> text = readText(content, job.progress);
    if (!text)
        return text.failure();
    if (text.value().isCutOff)
        job.log.warning("the STL text is cut off: it ends within its last solid");
    return modelOf(text.value().solids, job);
}

Outcome<Model> readStl(const Job& job)
{
    job.progress.begin(Stage::ReadAndProcess);
    const Outcome<std::string> content = readContent(job.input);
    if (!content)
        return content.failure();
    return readSolids(content.value(), job);
}

constexpr Format Row = {protocol::format::Stl.name, protocol::format::Stl.extensions, probe, readStl};

} // namespace

const Format& format()
{
    return Row;
}

} // namespace ptx::stl
