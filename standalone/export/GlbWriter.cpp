#include "standalone/export/GlbWriter.h"

#include "standalone/export/GlbFailure.h"
#include "standalone/export/GlbNodes.h"

#include <limits>
#include <new>

namespace glb
{

namespace
{

constexpr std::uint32_t magic = 0x46546C67;
constexpr std::uint32_t version = 2;
constexpr std::uint32_t jsonChunk = 0x4E4F534A;
constexpr std::uint32_t binaryChunk = 0x004E4942;
constexpr std::uint64_t headerSize = 12;
constexpr std::uint64_t chunkHeaderSize = 8;

/// The members of the document, put together as text. Lists without entries are not allowed.
class DocumentText
{
public:
    void add(const char* member, const std::string& json)
    {
        m_text += m_text.empty() ? "{" : ",";
        m_text.append("\"").append(member).append("\":").append(json);
    }
    void add(const char* member, const JsonList& list)
    {
        if (list.size() > 0)
            add(member, list.text());
    }
    /// Filled up to a multiple of four.
    std::string take()
    {
        m_text += '}';
        m_text.append((4 - m_text.size() % 4) % 4, ' ');
        return std::move(m_text);
    }

private:
    std::string m_text;
};

void addExtensions(const GlbNodes& nodes, DocumentText& text)
{
    Json used = Json::array();
    if (nodes.meshes().hasVariants()) {
        used.push_back("KHR_materials_variants");
        text.add("extensions", textOf({{"KHR_materials_variants", nodes.variants().extension()}}));
    }
    if (nodes.hasHidden())
        used.push_back("KHR_node_visibility");
    if (!used.empty())
        text.add("extensionsUsed", textOf(used));
}

Json assetOf(const WriteOptions& options)
{
    const WriteOptions standard;
    Json asset = {{"version", "2.0"}, {"generator", "znCADImport " ZN_VERSION}};
    if (options.millimetresPerUnit != standard.millimetresPerUnit)
        asset["extras"]["metresPerUnit"] = options.millimetresPerUnit / 1000;
    if (options.upAxis != standard.upAxis)
        asset["extras"]["upAxis"] = "Z";
    return asset;
}

std::string documentOf(const GlbNodes& nodes, const WriteOptions& options)
{
    const GlbMeshes& meshes = nodes.meshes();
    DocumentText text;
    addExtensions(nodes, text);
    text.add("asset", textOf(assetOf(options)));
    text.add("scene", "0");
    text.add("scenes", R"([{"nodes":[0]}])");
    text.add("nodes", nodes.list());
    text.add("meshes", meshes.list());
    text.add("cameras", nodes.cameras().list());
    text.add("materials", meshes.materials().list());
    text.add("accessors", meshes.arrays().accessors());
    text.add("bufferViews", meshes.arrays().views());
    if (meshes.arrays().size() > 0)
        text.add("buffers", textOf(Json::array({{{"byteLength", meshes.arrays().size()}}})));
    return text.take();
}

std::uint64_t fileSize(const std::string& document, std::uint64_t binarySize)
{
    const std::uint64_t size =
        headerSize + chunkHeaderSize + document.size() + (binarySize > 0 ? chunkHeaderSize + binarySize : 0);
    if (size > std::numeric_limits<std::uint32_t>::max())
        throw WriteFailure(WriteErrorCode::TooLarge,
                           tr("the file would have %1 bytes; a binary glTF file can have 4294967295")
                               .arg(static_cast<qulonglong>(size)));
    return size;
}

void writeChunk(GlbOutput& output, std::uint32_t type, std::uint64_t size)
{
    output.writeNumber(static_cast<std::uint32_t>(size));
    output.writeNumber(type);
}

std::uint64_t writeFile(const std::string& document, const GlbArrays& arrays, const QString& path)
{
    const std::uint64_t size = fileSize(document, arrays.size());
    GlbOutput output(path);
    output.writeNumber(magic);
    output.writeNumber(version);
    output.writeNumber(static_cast<std::uint32_t>(size));
    writeChunk(output, jsonChunk, document.size());
    output.write(document.data(), document.size());
    if (arrays.size() > 0) {
        writeChunk(output, binaryChunk, arrays.size());
        arrays.write(output);
    }
    output.commit();
    return size;
}

WriteResult written(const osg::NodePtr& root, const QString& path, const WriteOptions& options)
{
    if (!root)
        throw WriteFailure(WriteErrorCode::NothingToWrite, tr("there is no tree to write"));
    const GlbNodes nodes(root, options);
    WriteResult result;
    result.bytes = writeFile(documentOf(nodes, options), nodes.meshes().arrays(), path);
    result.warnings = nodes.warnings();
    result.nodes = nodes.list().size();
    result.meshes = nodes.meshes().list().size();
    return result;
}

WriteResult failed(WriteError error, const QString& path)
{
    error.file = path;
    WriteResult result;
    result.error = std::move(error);
    return result;
}

} // namespace

const char* writeErrorName(WriteErrorCode code)
{
    switch (code) {
    case WriteErrorCode::NothingToWrite:
        return "NothingToWrite";
    case WriteErrorCode::InvalidMesh:
        return "InvalidMesh";
    case WriteErrorCode::TooLarge:
        return "TooLarge";
    case WriteErrorCode::CannotCreate:
        return "CannotCreate";
    case WriteErrorCode::WriteFailed:
        return "WriteFailed";
    case WriteErrorCode::OutOfMemory:
        return "OutOfMemory";
    }
    return "Unknown";
}

QString WriteError::toString() const
{
    return tr("%1: %2").arg(file, message);
}

WriteResult write(const osg::NodePtr& root, const QString& path, const WriteOptions& options)
{
    try {
        return written(root, path, options);
    } catch (const WriteFailure& failure) {
        return failed(failure.error(), path);
    } catch (const std::bad_alloc&) {
        return failed({WriteErrorCode::OutOfMemory, tr("there is not enough memory to write the file"), {}}, path);
    }
}

} // namespace glb
