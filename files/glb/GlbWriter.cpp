#include "files/glb/GlbWriter.h"

#include "files/Failure.h"
#include "files/GlbLayout.h"
#include "files/OutputSet.h"
#include "files/Text.h"
#include "files/glb/GlbNodes.h"
#include "files/glb/gathering/Gathering.h"
#include "files/glb/levels/Levels.h"
#include "files/glb/packing/EqualArrays.h"
#include "files/glb/packing/Packing.h"
#include "files/glb/packing/PositionGrid.h"

#include <QtEndian>

#include <deque>
#include <limits>
#include <new>
#include <utility>

namespace files::glb
{

namespace
{

using namespace glblayout;

/// The members of the document as pieces of text, the large ones of which stay where they were made. Lists without
/// entries are not allowed.
class DocumentText
{
public:
    void add(const char* member, const std::string& json)
    {
        begin(member);
        addOwn(json);
    }
    void add(const char* member, const JsonList& list)
    {
        if (list.size() == 0)
            return;
        begin(member);
        addOwn("[");
        addPiece(list.entries());
        addOwn("]");
    }
    /// The entries of both lists in one; those of `more` are copied.
    void addJoined(const char* member, const JsonList& list, const JsonList& more)
    {
        if (list.size() + more.size() == 0)
            return;
        begin(member);
        addOwn("[");
        addPiece(list.entries());
        addOwn((list.size() > 0 && more.size() > 0 ? "," : "") + more.entries() + "]");
    }
    void add(const char* member, const GlbAttributes& attributes)
    {
        begin(member);
        addOwn("{\"products\":[");
        bool isFirst = true;
        for (const std::string_view piece : attributes.products())
            addPiece(piece.substr(std::exchange(isFirst, false) ? 1 : 0));
        addOwn("]}");
    }
    /// Fills it up to a multiple of four.
    void finish()
    {
        addOwn("}");
        addOwn(std::string((4 - m_size % 4) % 4, ' '));
    }

    std::uint64_t size() const { return m_size; }
    void write(files::OutputFile& output) const
    {
        for (const std::string_view piece : m_pieces)
            output.write(piece.data(), piece.size());
    }

private:
    void begin(const char* member) { addOwn(std::string(m_size == 0 ? "{" : ",") + '"' + member + "\":"); }
    void addOwn(std::string text) { addPiece(m_own.emplace_back(std::move(text))); }
    void addPiece(std::string_view piece)
    {
        m_pieces.push_back(piece);
        m_size += piece.size();
    }

    std::deque<std::string> m_own;
    std::vector<std::string_view> m_pieces;
    std::uint64_t m_size = 0;
};

/// What makes the file: the document's lists and the bytes, or what packing made of them.
struct Content {
    explicit Content(const GlbNodes& from) : nodes(from) {}

    const GlbTextures& textures() const { return nodes.meshes().materials().textures(); }
    std::uint64_t arraySize() const { return packed ? file.binary.size() : nodes.meshes().arrays().size(); }
    std::uint64_t binarySize() const { return arraySize() + textures().size(); }
    void writeBinary(files::OutputFile& output) const
    {
        if (packed)
            output.write(file.binary.data(), file.binary.size());
        else
            nodes.meshes().arrays().write(output);
        textures().write(output);
    }

    const GlbNodes& nodes;
    packing::PackedFile file; ///< empty unless it is packed
    std::optional<packing::Packed> packed;
    levels::Levels levels;
};

/// The longest side that merged parts may have together, in the unit of the file.
double largestMerged(const WriteOptions& options)
{
    return options.packing.quantize ? packing::largestMerged(options.packing.error / options.millimetresPerUnit)
                                    : std::numeric_limits<double>::infinity();
}

/// Refers to `nodes`.
Content contentOf(const GlbNodes& nodes, const WriteOptions& options)
{
    Content content(nodes);
    const GlbArrays& arrays = nodes.meshes().arrays();
    if (!(options.packing.isOn() || options.gathering.isOn() || options.levels.isOn()) || arrays.size() == 0)
        return content;
    const auto parsed = [](const JsonList& list) { return packing::Json::parse(list.text()); };
    content.file = {packing::Json::parse(nodes.scene()),
                    parsed(nodes.list()),
                    parsed(nodes.meshes().list()),
                    parsed(nodes.meshes().materials().list()),
                    parsed(arrays.accessors()),
                    parsed(arrays.views()),
                    arrays.bytes()};
    packing::shareEqualArrays(content.file);
    gathering::gather(content.file, options.gathering, largestMerged(options));
    content.levels = levels::makeLevels(content.file, options.levels, options.millimetresPerUnit);
    return content;
}

/// Takes the steps that `options` ask for. Fewer triangles leave vertices over, which are dropped with equal ones.
void pack(Content& content, const WriteOptions& options)
{
    if (content.file.meshes.empty())
        return;
    PackOptions packing = options.packing;
    packing.weld = packing.weld || options.levels.simplify > 0 || options.levels.asFiles;
    content.packed = packing::pack(content.file, packing, options.millimetresPerUnit);
}

std::string packedText(const packing::Json& json)
{
    return json.dump(-1, ' ', false, packing::Json::error_handler_t::replace);
}

void addExtensions(const Content& content, DocumentText& text)
{
    const GlbNodes& nodes = content.nodes;
    const GlbMaterials& materials = nodes.meshes().materials();
    Json used = Json::array();
    if (content.packed)
        used = content.packed->extensions;
    for (const std::string& extension : materials.textures().required())
        used.push_back(extension);
    if (!used.empty())
        text.add("extensionsRequired", textOf(used));
    for (const std::string& extension : materials.extensions())
        used.push_back(extension);
    if (materials.textures().hasTransforms())
        used.push_back("KHR_texture_transform");
    if (nodes.meshes().hasVariants()) {
        used.push_back("KHR_materials_variants");
        text.add("extensions", textOf({{"KHR_materials_variants", nodes.variants().extension()}}));
    }
    if (nodes.hasHidden())
        used.push_back("KHR_node_visibility");
    if (content.levels.hasNodes)
        used.push_back("MSFT_lod");
    if (!used.empty())
        text.add("extensionsUsed", textOf(used));
}

/// The sets stand here because programs that rewrite files keep the extras of the asset, and drop those of nodes.
Json assetOf(const GlbVariants& variants, const WriteOptions& options)
{
    const WriteOptions standard;
    Json asset = {{"version", "2.0"}, {"generator", "znCADImport " ZN_VERSION}};
    if (options.millimetresPerUnit != standard.millimetresPerUnit)
        asset["extras"]["metresPerUnit"] = options.millimetresPerUnit / 1000;
    if (options.upAxis != standard.upAxis)
        asset["extras"]["upAxis"] = "Z";
    if (Json sets = variants.sets(); !sets.empty())
        asset["extras"]["variantSets"] = std::move(sets);
    return asset;
}

/// The lists that packing changes, and the buffers, of which the first one has the pictures behind the arrays.
void addArrays(const Content& content, DocumentText& text)
{
    const GlbArrays& arrays = content.nodes.meshes().arrays();
    const JsonList pictures = content.textures().views(content.arraySize());
    if (content.packed) {
        packing::Json views = content.file.bufferViews;
        for (packing::Json& picture : packing::Json::parse(pictures.text()))
            views.push_back(std::move(picture));
        packing::Json buffers = content.packed->buffers;
        buffers[0]["byteLength"] = content.binarySize();
        text.add("nodes", packedText(content.file.nodes));
        text.add("meshes", packedText(content.file.meshes));
        text.add("accessors", packedText(content.file.accessors));
        text.add("bufferViews", packedText(views));
        text.add("buffers", packedText(buffers));
        return;
    }
    text.add("nodes", content.nodes.list());
    text.add("meshes", content.nodes.meshes().list());
    text.add("accessors", arrays.accessors());
    text.addJoined("bufferViews", arrays.views(), pictures);
    if (content.binarySize() > 0)
        text.add("buffers", textOf(Json::array({{{"byteLength", content.binarySize()}}})));
}

void addTextures(const Content& content, DocumentText& text)
{
    const GlbTextures& textures = content.textures();
    const std::size_t views =
        content.packed ? content.file.bufferViews.size() : content.nodes.meshes().arrays().views().size();
    const JsonList images = textures.images(views);
    if (images.size() > 0)
        text.add("images", images.text());
    text.add("samplers", textures.samplers());
    text.add("textures", textures.textures());
}

/// Refers to `content`.
DocumentText documentOf(const Content& content, const WriteOptions& options)
{
    const GlbNodes& nodes = content.nodes;
    DocumentText text;
    addExtensions(content, text);
    text.add("asset", textOf(assetOf(nodes.variants(), options)));
    if (nodes.attributes().hasProducts())
        text.add("extras", nodes.attributes());
    text.add("scene", "0");
    text.add("scenes", '[' + (content.packed ? packedText(content.file.scene) : nodes.scene()) + ']');
    addArrays(content, text);
    text.add("cameras", nodes.cameras().list());
    if (content.packed)
        text.add("materials", packedText(content.file.materials));
    else
        text.add("materials", nodes.meshes().materials().list());
    addTextures(content, text);
    text.finish();
    return text;
}

std::uint64_t fileSize(const DocumentText& document, std::uint64_t binarySize)
{
    return headerSize + chunkHeaderSize + document.size() + (binarySize > 0 ? chunkHeaderSize + binarySize : 0);
}

void writeNumber(files::OutputFile& output, std::uint32_t number)
{
    const std::uint32_t bytes = qToLittleEndian(number);
    output.write(&bytes, sizeof(bytes));
}

void writeChunkHeader(files::OutputFile& output, std::uint32_t type, std::uint64_t size)
{
    writeNumber(output, static_cast<std::uint32_t>(size));
    writeNumber(output, type);
}

files::Error errorOf(files::ErrorCode code, const QString& message)
{
    return {{message, {}, {}}, code};
}

/// The size of the file.
files::Expected<std::uint64_t> writeFile(const Content& content, const WriteOptions& options, files::OutputFile& output)
{
    const DocumentText document = documentOf(content, options);
    const std::uint64_t size = fileSize(document, content.binarySize());
    if (size > std::numeric_limits<std::uint32_t>::max())
        return errorOf(files::ErrorCode::TooLarge,
                       files::tr("the file would have %1 bytes; a binary glTF file can have 4294967295")
                           .arg(static_cast<qulonglong>(size)));
    writeNumber(output, magic);
    writeNumber(output, version);
    writeNumber(output, static_cast<std::uint32_t>(size));
    writeChunkHeader(output, jsonChunk, document.size());
    document.write(output);
    if (content.binarySize() > 0) {
        writeChunkHeader(output, binaryChunk, content.binarySize());
        content.writeBinary(output);
    }
    if (const files::Expected<void> complete = output.complete(); !complete)
        return complete.error();
    return size;
}

/// The file of each level, from a copy of `content` before it is packed.
files::Expected<void> writeLevels(const Content& content, const WriteOptions& options, const QString& path,
                                  files::OutputSet& outputs)
{
    for (std::size_t level = 0; level < content.levels.meshes.size(); ++level) {
        Content file(content.nodes);
        file.file = content.file;
        file.file.meshes = content.levels.meshes[level];
        pack(file, options);
        if (const auto size = writeFile(file, options, outputs.add(levelPath(path, level + 1))); !size)
            return size.error();
    }
    return {};
}

std::vector<WrittenLevel> levelsOf(const levels::Levels& levels, const QString& path)
{
    std::vector<WrittenLevel> result;
    for (const levels::LevelNumbers& numbers : levels.numbers) {
        const bool isFile = !result.empty() && !levels.meshes.empty();
        result.push_back({isFile ? levelPath(path, result.size()) : path, numbers.triangles, numbers.error});
    }
    return result;
}

Written numbersOf(const Content& content, const WriteOptions& options, const QString& path, std::uint64_t bytes)
{
    Written numbers;
    numbers.bytes = bytes;
    numbers.nodes = content.nodes.list().size();
    numbers.meshes = content.nodes.meshes().list().size();
    if (!content.packed)
        return numbers;
    numbers.nodes = content.file.nodes.size();
    numbers.meshes = content.file.meshes.size();
    numbers.error = content.packed->error * options.millimetresPerUnit;
    numbers.levels = levelsOf(content.levels, path);
    numbers.trianglesBefore = content.levels.trianglesBefore;
    numbers.levelsLeftOut = content.levels.leftOut;
    return numbers;
}

std::vector<files::Note> notesOf(const QStringList& texts, const QString& path)
{
    std::vector<files::Note> notes;
    for (const QString& text : texts)
        notes.push_back({text, path, {}});
    return notes;
}

files::Result<Written> written(const osg::NodePtr& root, const QString& path, const WriteOptions& options)
{
    if (!root)
        return errorOf(files::ErrorCode::NothingToWrite, files::tr("there is no tree to write"));
    const GlbNodes nodes(root, options, path);
    Content content = contentOf(nodes, options);
    files::OutputSet outputs;
    files::OutputFile& output = outputs.add(path);
    if (const files::Expected<void> levels = writeLevels(content, options, path, outputs); !levels)
        return levels.error();
    pack(content, options);
    const files::Expected<std::uint64_t> bytes = writeFile(content, options, output);
    if (!bytes)
        return bytes.error();
    if (const files::Expected<void> pictures = content.textures().writeFiles(); !pictures)
        return pictures.error();
    if (const files::Expected<void> complete = outputs.commit(); !complete)
        return complete.error();
    return {numbersOf(content, options, path, bytes.value()), notesOf(nodes.warnings(), path)};
}

files::Result<Written> writtenOrError(const osg::NodePtr& root, const QString& path, const WriteOptions& options)
{
    try {
        return written(root, path, options);
    } catch (const files::Failure& failure) {
        return failure.error();
    } catch (const std::bad_alloc&) {
        return errorOf(files::ErrorCode::OutOfMemory, files::tr("there is not enough memory to write the file"));
    }
}

} // namespace

files::Result<Written> write(const osg::NodePtr& root, const QString& path, const WriteOptions& options)
{
    files::Result<Written> result = writtenOrError(root, path, options);
    if (!result)
        result.error().file = path;
    return result;
}

} // namespace files::glb
