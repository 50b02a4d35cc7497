// Any bytes as a JT file that names part files, all the way to a scene: a failure with its reason or a sound model,
// within memory and time that the size of the file allows. In the folder of the file lies "part.jt", the same once
// more.
//
// ptx_jt_reader_fuzz <a folder for findings> <this folder>/corpus <a folder with real files>
//
// Each input is written to a file: with TMPDIR on a memory disk no slow disk is taken for a slow reader.

#include "ptx/readers/jt/JtReader.h"
#include "ptx/scene/SceneBuilder.h"
#include "scene/ContainerRegistry.h"
#include "tests/fuzz/jt/UnpackedFile.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace
{

constexpr double MostNodes = 20000;

void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// The file in work and its part file, gone when the program ends.
class Folder
{
public:
    Folder() : m_path(std::filesystem::temp_directory_path() / ("jtfuzz" + std::to_string(::getpid())))
    {
        std::filesystem::create_directory(m_path);
        std::ofstream(input()).flush();
        std::filesystem::create_hard_link(input(), m_path / "part.jt");
    }

    ~Folder()
    {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }

    std::string input() const { return (m_path / "input.jt").string(); }

    void write(const std::uint8_t* data, std::size_t size) const
    {
        std::ofstream file(input(), std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        require(static_cast<bool>(file.flush()));
    }

private:
    std::filesystem::path m_path;
};

const Folder& folder()
{
    static const Folder one;
    return one;
}

void checkMesh(const osg::Mesh& mesh)
{
    const auto isVertex = [&](std::uint32_t index) { return index < mesh.positions.size(); };
    require(std::all_of(mesh.triangles.begin(), mesh.triangles.end(), isVertex));
    require(std::all_of(mesh.lines.begin(), mesh.lines.end(), isVertex));
    require(std::all_of(mesh.points.begin(), mesh.points.end(), isVertex));
    require(mesh.triangles.size() % 3 == 0 && mesh.lines.size() % 2 == 0);
    require(mesh.normals.empty() || mesh.normals.size() == mesh.positions.size());
    require(mesh.texCoords.empty() || mesh.texCoords.size() == mesh.positions.size());
    require(mesh.colors.empty() || mesh.colors.size() == mesh.positions.size());
}

void checkModel(const ptx::model::Model& model)
{
    const auto isAppearance = [&](int number) { return number >= -1 && number < model.appearances.size(); };
    const auto checkOccurrence = [&](const ptx::model::Occurrence& occurrence) {
        require(occurrence.product < model.products.size() && isAppearance(occurrence.appearance));
    };
    std::for_each(model.roots.begin(), model.roots.end(), checkOccurrence);
    for (const ptx::model::Product& product : model.products) {
        require(isAppearance(product.appearance));
        require(product.body == ptx::model::NoBody || product.body < model.bodies.size());
        std::for_each(product.children.begin(), product.children.end(), checkOccurrence);
    }
    for (const ptx::model::Body& body : model.bodies)
        for (const ptx::model::Piece& piece : body.pieces) {
            require(isAppearance(piece.appearance));
            checkMesh(*piece.mesh);
        }
    for (const ptx::model::Reference& reference : model.references)
        require(reference.product < model.products.size());
}

void readAll(std::uint64_t size, bool externalParts, const ptx::core::Settings& settings)
{
    const std::string path = folder().input();
    ptx::core::Limits limits(settings, size);
    ptx::core::Progress progress;
    ptx::core::Log log("/dev/null");
    ptx::core::Rescue rescue(path + ".parts", 0);
    const ptx::model::Job job{path, size, externalParts, settings, limits, progress, log, rescue};
    const ptx::core::Outcome<ptx::model::Model> model = ptx::jt::format().read(job);
    if (!model)
        return require(!model.failure().message.empty());
    checkModel(model.value());
    const ptx::core::Outcome<ptx::scene::Scene> scene = ptx::scene::buildScene(model.value(), path, MostNodes);
    require(scene ? static_cast<bool>(scene.value().root) : !scene.failure().message.empty());
}

/// Mutates the bytes at `place` alone, whose number stays.
void mutateWithin(std::uint8_t* data, const ptx::jt::container::Place& place)
{
    std::vector<std::uint8_t> part(data + place.offset, data + place.offset + place.size);
    LLVMFuzzerMutate(part.data(), part.size(), part.size());
    std::copy(part.begin(), part.end(), data + place.offset);
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed)
{
    const ptx::jt::container::Place graph =
        seed % 2 ? ptx::jt::container::plainSceneGraph({data, size}) : ptx::jt::container::Place();
    if (graph.size > 0) {
        mutateWithin(data, graph);
        return size;
    }
    if (seed % 4 == 1) {
        const std::vector<std::uint8_t> plain = ptx::jt::container::unpackedFile({data, size});
        if (!plain.empty() && plain.size() <= maxSize) {
            std::copy(plain.begin(), plain.end(), data);
            return plain.size();
        }
    }
    return LLVMFuzzerMutate(data, size, maxSize);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view head(reinterpret_cast<const char*>(data), size);
    if (ptx::jt::format().probe(head, size) == ptx::readers::Match::No)
        return 0;
    folder().write(data, size);
    ptx::core::Settings settings;
    require(!settings.assign("limit.nodes=" + ptx::core::numberText(MostNodes)));
    require(!settings.assign("mesh.level=" + std::to_string(data[size - 1] % 3)));
    require(!settings.assign("threads=" + std::to_string(1 + data[size - 1] / 4 % 2)));
    readAll(size, false, settings);
    if (ptx::jt::format().refersToParts(folder().input()))
        readAll(size, true, settings);
    require(osg::livingContainerCount() == 0);
    osg::sweepContainers();
    return 0;
}
