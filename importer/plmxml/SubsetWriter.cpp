#include "importer/plmxml/SubsetWriter.h"

#include <QUrl>

#include <algorithm>
#include <charconv>
#include <limits>
#include <unordered_set>

namespace importer::plmxml
{

namespace
{

/// Bytes that are no UTF-8 would make the text unreadable.
std::string validText(const std::string& text)
{
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
    return isPlain ? text : QString::fromUtf8(text.c_str()).toStdString();
}

void appendEscaped(std::string& out, const std::string& text)
{
    for (const char c : validText(text)) {
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else if (c == '"')
            out += "&quot;";
        else
            out += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
}

void appendAttribute(std::string& out, const char* name, const std::string& value)
{
    out += ' ';
    out += name;
    out += "=\"";
    appendEscaped(out, value);
    out += '"';
}

/// The loader reads numbers of single precision.
void appendNumber(std::string& out, double value)
{
    constexpr double most = std::numeric_limits<float>::max();
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, static_cast<float>(std::clamp(value, -most, most))).ptr;
    out.append(text, end);
}

bool isPlainId(const std::string& id)
{
    constexpr std::size_t longest = 100;
    return !id.empty() && id.size() <= longest && std::all_of(id.begin(), id.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-' ||
               c == '.';
    });
}

class Writer
{
public:
    Writer(const Structure& structure, const FileTable& files, double lengthUnit)
        : m_structure(structure), m_files(files), m_unit(lengthUnit)
    {
        for (const StructurePlacement& placement : structure.placements)
            m_placementIds.push_back(freshId(placement.id, "zn.i", m_placementIds.size()));
        for (const StructurePart& part : structure.parts)
            m_partIds.push_back(freshId(part.id, "zn.p", m_partIds.size()));
    }

    std::string write()
    {
        m_out = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<PLMXML>\n<ProductDef>\n<InstanceGraph rootRefs=\"";
        for (const std::vector<std::uint32_t>& roots : m_structure.graphs)
            for (const std::uint32_t root : roots)
                m_out += " " + m_placementIds[root];
        m_out += "\">\n";
        for (std::size_t i = 0; i < m_structure.placements.size(); ++i)
            writePlacement(i);
        for (std::size_t i = 0; i < m_structure.parts.size(); ++i)
            writePiecePlacements(i);
        m_out += "</InstanceGraph>\n";
        for (std::size_t i = 0; i < m_structure.parts.size(); ++i)
            writePart(i);
        for (std::size_t i = 0; i < m_structure.materials.size(); ++i)
            writeMaterial(i);
        writeView();
        m_out += "</ProductDef>\n</PLMXML>\n";
        return std::move(m_out);
    }

private:
    std::string freshId(const std::string& own, const char* prefix, std::size_t number)
    {
        std::string id = isPlainId(own) ? own : prefix + std::to_string(number);
        while (!m_ids.insert(prefix + id).second)
            id = prefix + std::to_string(number) + "." + std::to_string(m_ids.size());
        return id;
    }

    void writeTransform(const Matrix4& matrix)
    {
        m_out += "<Transform>";
        for (std::size_t i = 0; i < matrix.size(); ++i) {
            m_out += i > 0 ? " " : "";
            appendNumber(m_out, i >= 12 && i < 15 ? matrix[i] * m_unit : matrix[i]);
        }
        m_out += "</Transform>";
    }

    void writePlacement(std::size_t index)
    {
        const StructurePlacement& placement = m_structure.placements[index];
        m_out += "<ProductInstance";
        appendAttribute(m_out, "id", m_placementIds[index]);
        appendAttribute(m_out, "name", placement.name);
        if (placement.part != Nothing)
            m_out += " partRef=\"#" + m_partIds[placement.part] + '"';
        if (placement.material != Nothing)
            m_out += " materialRef=\"" + materialId(placement.material) + '"';
        m_out += '>';
        writeTransform(placement.placed);
        m_out += "</ProductInstance>\n";
    }

    /// Whether the files of a part stand in parts of their own.
    static bool isSplit(const StructurePart& part)
    {
        return !part.pieces.empty() &&
               (part.pieces.size() > 1 || part.pieces.front().isMoved || !part.placements.empty());
    }

    std::string pieceId(std::size_t part, std::size_t piece) const
    {
        return "zn.s" + std::to_string(part) + "." + std::to_string(piece);
    }

    void writePiecePlacements(std::size_t index)
    {
        const StructurePart& part = m_structure.parts[index];
        for (std::size_t i = 0; isSplit(part) && i < part.pieces.size(); ++i) {
            m_out += "<ProductInstance id=\"" + pieceId(index, i) + '"';
            appendAttribute(m_out, "name", part.pieces[i].name);
            m_out += " partRef=\"#" + pieceId(index, i) + "\">";
            writeTransform(part.pieces[i].placed);
            m_out += "</ProductInstance>\n";
        }
    }

    void writePart(std::size_t index)
    {
        const StructurePart& part = m_structure.parts[index];
        const bool isSplitUp = isSplit(part);
        if (!isSplitUp && !part.pieces.empty())
            return writeShape(m_partIds[index], part.name, part.pieces.front());
        m_out += "<ProductRevisionView id=\"" + m_partIds[index] + '"';
        appendAttribute(m_out, "name", part.name);
        m_out += " type=\"assembly\" instanceRefs=\"";
        for (const std::uint32_t placement : part.placements)
            m_out += " " + m_placementIds[placement];
        for (std::size_t i = 0; isSplitUp && i < part.pieces.size(); ++i)
            m_out += " " + pieceId(index, i);
        m_out += "\"/>\n";
        for (std::size_t i = 0; isSplitUp && i < part.pieces.size(); ++i)
            writeShape(pieceId(index, i), part.pieces[i].name, part.pieces[i]);
    }

    void writeShape(const std::string& id, const std::string& name, const ShapePiece& piece)
    {
        const ShapeFile& file = m_files[piece.file];
        m_out += "<ProductRevisionView id=\"" + id + '"';
        appendAttribute(m_out, "name", name);
        m_out += " type=\"solid\"><Representation";
        appendAttribute(m_out, "format", formatNameOf(file.format).toUpper().toStdString());
        appendAttribute(m_out, "location", QUrl::toPercentEncoding(file.toRead(), "/").toStdString());
        m_out += "/></ProductRevisionView>\n";
    }

    std::string materialId(std::uint32_t index) const { return "zn.m" + std::to_string(index); }

    void writeMaterial(std::size_t index)
    {
        m_out += "<Material id=\"" + materialId(static_cast<std::uint32_t>(index)) + '"';
        const StructureMaterial& material = m_structure.materials[index];
        if (!material.name.empty())
            appendAttribute(m_out, "name", material.name);
        for (const auto& [attribute, numbers] : material.numbers) {
            m_out += std::string(" ") + attribute + "=\"";
            for (std::size_t i = 0; i < numbers.size(); ++i) {
                m_out += i > 0 ? " " : "";
                appendNumber(m_out, numbers[i]);
            }
            m_out += '"';
        }
        m_out += "/>\n";
    }

    void writeView()
    {
        m_out += "<ProductView state=\"active\">\n";
        for (const StructureOverride& each : m_structure.overrides) {
            if (!each.isMoved && each.material == Nothing)
                continue;
            m_out += "<Occurrence instanceRefs=\"";
            for (const std::uint32_t placement : each.path)
                m_out += " " + m_placementIds[placement];
            m_out += '"';
            if (each.material != Nothing)
                m_out += " materialRef=\"" + materialId(each.material) + '"';
            m_out += '>';
            if (each.isMoved)
                writeTransform(each.placed);
            m_out += "</Occurrence>\n";
        }
        m_out += "</ProductView>\n";
    }

    const Structure& m_structure;
    const FileTable& m_files;
    double m_unit;
    std::string m_out;
    std::vector<std::string> m_placementIds;
    std::vector<std::string> m_partIds;
    std::unordered_set<std::string> m_ids;
};

} // namespace

std::string writeSubset(const Structure& structure, const FileTable& files, double lengthUnit)
{
    return Writer(structure, files, lengthUnit).write();
}

} // namespace importer::plmxml
