#include "files/gltf/GltfDocument.h"

#include "files/ImageFiles.h"
#include "files/gltf/GltfFrame.h"
#include "files/gltf/GltfJson.h"
#include "files/gltf/GltfSurfaces.h"
#include "files/gltf/packing/Unpacking.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <map>

namespace files::gltf
{

namespace
{

using Json = nlohmann::json;

/// Members of the document that the parser need not see, as they are not read or read here.
constexpr std::array<std::string_view, 7> unread = {"images", "textures", "samplers", "animations",
                                                    "skins",  "cameras",  "buffers"};

/// Extensions that change nothing in what is read, or that are read.
constexpr std::array<std::string_view, 12> requirable = {
    "KHR_mesh_quantization", "KHR_texture_transform", "KHR_texture_basisu",      "EXT_texture_webp",
    "EXT_texture_avif",      "MSFT_texture_dds",      "KHR_xmp_json_ld",         "KHR_lights_punctual",
    "KHR_animation_pointer", "KHR_node_visibility",   "EXT_mesh_gpu_instancing", "MSFT_lod"};

QString textOf(const std::string& utf8)
{
    return QString::fromStdString(utf8);
}

void checkVersion(const Json& json, const ReadTask& task)
{
    const Json::json_pointer place("/asset/version");
    if (!json.is_object() || !json.contains(place) || !json.at(place).is_string())
        task.fail(ErrorCode::Damaged, tr("this is no glTF: it does not tell its version"),
                  QStringLiteral("/asset/version"));
    const std::string version = json.at(place).get<std::string>();
    if (!version.starts_with("2."))
        task.fail(ErrorCode::Unsupported, tr("this is glTF %1; only glTF 2 is read").arg(textOf(version)));
}

bool canRequire(const std::string& extension)
{
    return extension.starts_with("KHR_materials_") || packing::isUnpacked(extension) ||
           std::find(requirable.begin(), requirable.end(), extension) != requirable.end();
}

void checkExtensions(const Json& json, const ReadTask& task)
{
    const auto required = json.find("extensionsRequired");
    if (required == json.end())
        return;
    for (const Json& name : *required)
        if (name.is_string() && !canRequire(name.get<std::string>()))
            task.fail(ErrorCode::Unsupported,
                      tr("the file requires the extension %1, which this program does not have")
                          .arg(textOf(name.get<std::string>())),
                      QStringLiteral("/extensionsRequired"));
}

/// Finds the bytes of buffers.
class BufferSource
{
public:
    BufferSource(ReadTask& task, const FileBytes& file, std::string_view binary)
        : m_task(task), m_file(file), m_binary(binary)
    {
    }

    std::vector<GltfBuffer> all(const Json& json);

private:
    GltfBuffer at(const Json& buffer, std::size_t index);
    GltfBuffer fromUri(const std::string& uri, const QString& place);
    GltfBuffer decoded(std::string_view uri, const QString& place);
    GltfBuffer fromFile(const QString& path);

    ReadTask& m_task;
    const FileBytes& m_file;
    std::string_view m_binary;
    std::map<QString, FileBytes> m_files;
};

std::vector<GltfBuffer> BufferSource::all(const Json& json)
{
    std::vector<GltfBuffer> buffers;
    const auto list = json.find("buffers");
    for (std::size_t i = 0; list != json.end() && i < list->size(); ++i)
        buffers.push_back(at((*list)[i], i));
    return buffers;
}

GltfBuffer BufferSource::at(const Json& buffer, std::size_t index)
{
    const QString place = QStringLiteral("/buffers/%1").arg(static_cast<qulonglong>(index));
    const bool isSound =
        buffer.is_object() && buffer.contains("byteLength") && buffer["byteLength"].is_number_unsigned();
    if (!isSound)
        m_task.fail(ErrorCode::Damaged, tr("a buffer does not tell its length"), place);
    if (packing::isPlaceholder(buffer))
        return {};
    GltfBuffer result;
    if (buffer.contains("uri") && buffer["uri"].is_string())
        result = fromUri(buffer["uri"].get_ref<const std::string&>(), place);
    else if (index == 0)
        result = {m_file.owner, reinterpret_cast<const std::byte*>(m_binary.data()), m_binary.size()};
    const auto length = buffer["byteLength"].get<std::uint64_t>();
    if (length > result.size)
        m_task.fail(ErrorCode::Damaged,
                    tr("a buffer of %1 bytes has only %2")
                        .arg(static_cast<qulonglong>(length))
                        .arg(static_cast<qulonglong>(result.size)),
                    place);
    result.size = static_cast<std::size_t>(length);
    return result;
}

GltfBuffer BufferSource::fromUri(const std::string& uri, const QString& place)
{
    if (uri.starts_with("data:"))
        return decoded(uri, place);
    if (uri.find("://") != std::string::npos)
        m_task.fail(ErrorCode::Unsupported, tr("a buffer is not on this computer: %1").arg(textOf(uri)), place);
    const QString relative = QUrl::fromPercentEncoding(QByteArray::fromStdString(uri));
    const QString path = QDir::cleanPath(QFileInfo(m_task.path()).dir().absoluteFilePath(relative));
    if (const auto refusal = m_task.refusal(references::Use::Bytes, path, m_task.path()))
        m_task.failIn(path, ErrorCode::Refused, files::textOf(*refusal), place);
    return fromFile(path);
}

GltfBuffer BufferSource::decoded(std::string_view uri, const QString& place)
{
    const std::optional<DataAddress> data = decodedAddress(uri, m_task, place);
    if (!data)
        m_task.fail(ErrorCode::Damaged, tr("the data of a buffer are not in base 64"), place);
    return {data->bytes.owner, data->bytes.owner.get(), data->bytes.size};
}

GltfBuffer BufferSource::fromFile(const QString& path)
{
    auto known = m_files.find(path);
    if (known == m_files.end())
        known = m_files.emplace(path, readFile(m_task, path)).first;
    const FileBytes& bytes = known->second;
    return {bytes.owner, bytes.owner.get(), bytes.size};
}

void warnOfUnread(const Json& json, ReadTask& task)
{
    for (const char* member : {"animations", "skins"})
        if (const auto list = json.find(member); list != json.end() && !list->empty())
            task.warn(tr("%1 %2 were left out").arg(static_cast<qulonglong>(list->size())).arg(QLatin1String(member)));
}

/// What the model is made of, without the members that are not read. A text that is not UTF-8 is mended.
std::string reducedText(Json json)
{
    for (const std::string_view member : unread)
        json.erase(std::string(member));
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

tinygltf::Model parseModel(const std::string& text, const ReadTask& task)
{
    tinygltf::Model model;
    tinygltf::TinyGLTF parser;
    std::string error;
    std::string warning;
    const bool isSound =
        parser.LoadASCIIFromString(&model, &error, &warning, text.data(), static_cast<unsigned>(text.size()), {});
    if (!isSound || !error.empty())
        task.fail(ErrorCode::Damaged, textOf(error).simplified());
    return model;
}

} // namespace

GltfDocument openGltf(ReadTask& task)
{
    const FileBytes file = readFile(task, task.path());
    const GltfFrame frame = splitGltf(file, task);
    std::size_t extrasLeftOut = 0;
    Json json = parseJson(frame.json, task, memberFilter(extrasLeftOut));
    checkVersion(json, task);
    checkExtensions(json, task);
    GltfDocument document;
    document.buffers = BufferSource(task, file, frame.binary).all(json);
    packing::unpack(json, document.buffers, task);
    warnOfUnread(json, task);
    document.cameras = readCameras(json, task);
    GltfTextures textures(json, document.buffers, task);
    document.surfaces = readSurfaces(json, textures, task);
    document.extras = GltfExtras(json, extrasLeftOut, task);
    document.model = parseModel(reducedText(std::move(json)), task);
    return document;
}

} // namespace files::gltf
