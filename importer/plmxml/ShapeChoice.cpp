#include "importer/plmxml/ShapeChoice.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <limits>
#include <unordered_map>
#include <unordered_set>

namespace importer::plmxml
{

namespace
{

using Pieces = std::vector<ShapePiece>;
using Nodes = std::vector<pugi::xml_node>;

/// One of several shapes of a part.
struct Alternative {
    Pieces pieces;
    bool isDesign = true;          ///< neither simplified nor unfolded
    bool isOfReferenceSet = false; ///< of the placement's, as the representation says
};

/// Representations stand in one another no deeper than this.
constexpr int MaxDepth = 100;

int rankOf(const Reading& reading, const Pieces& pieces)
{
    int rank = std::numeric_limits<int>::min();
    for (const ShapePiece& piece : pieces)
        rank = std::max(rank, reading.files[piece.file].rank);
    return rank;
}

/// Pieces that stand for one another, together: `equivalentRef` leads from each to the next.
std::vector<Nodes> ringsOf(const Nodes& pieces)
{
    std::unordered_map<std::string_view, std::size_t> byId;
    for (std::size_t i = 0; i < pieces.size(); ++i)
        byId.emplace(pieces[i].attribute("id").value(), i);
    const auto next = [&](std::size_t piece) {
        const auto found = byId.find(ownIdOf(pieces[piece].attribute("equivalentRef").value()));
        return found == byId.end() || found->first.empty() ? pieces.size() : found->second;
    };
    std::vector<std::size_t> rings(pieces.size(), pieces.size());
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        std::size_t end = i;
        for (; end < pieces.size() && rings[end] == pieces.size(); end = next(end))
            rings[end] = i;
        const std::size_t ring = end < pieces.size() ? rings[end] : i;
        for (std::size_t at = i; at < pieces.size() && rings[at] == i && ring != i; at = next(at))
            rings[at] = ring;
    }
    std::vector<Nodes> found(pieces.size());
    for (std::size_t i = 0; i < pieces.size(); ++i)
        found[rings[i]].push_back(pieces[i]);
    return found;
}

class Chooser
{
public:
    Chooser(const Reading& reading, const ShapeSource& source) : m_reading(reading), m_source(source) {}

    Pieces choose()
    {
        Pieces first;
        for (const auto add :
             {&Chooser::addOwn, &Chooser::addRepresentations, &Chooser::addDataSets, &Chooser::addAttachments}) {
            m_alternatives.clear();
            (this->*add)();
            Pieces pieces = bestOf(m_alternatives);
            if (isReadable(m_reading, pieces))
                return pieces;
            if (first.empty())
                first = std::move(pieces);
        }
        return first;
    }

private:
    void addOwn() { addRepresentationsOf(m_source.own); }
    void addRepresentations() { addRepresentationsOf(m_source.view); }

    void addRepresentationsOf(const pugi::xml_node& owner)
    {
        for (const pugi::xml_node& representation : representationsOf(m_reading, owner))
            addRepresentation(representation);
    }

    void addDataSets()
    {
        eachChild(m_reading.document, m_source.revision, "AssociatedDataSet",
                  [this](const pugi::xml_node& link) { addDataSet(otherOf(m_reading, link, "dataSetRef")); });
    }

    void addRepresentation(const pugi::xml_node& representation)
    {
        Pieces pieces;
        addPieces(representation, Identity4, false, 0, pieces);
        const std::string_view type = representation.attribute("type").value();
        const bool isOfSet = type == "user" && !m_source.referenceSet.empty() &&
                             representation.attribute("name").value() == m_source.referenceSet;
        if (!pieces.empty())
            m_alternatives.push_back({std::move(pieces), type != "simplified" && type != "flat", isOfSet});
    }

    /// The transforms of compound representations move what is in them.
    void addPieces(const pugi::xml_node& shape, const Matrix4& outer, bool isMoved, int depth, Pieces& pieces)
    {
        const std::optional<Matrix4> own = transformOf(m_reading, shape);
        const Matrix4 placed = own ? *own * outer : outer;
        Nodes compounds;
        eachChild(m_reading.document, shape, "CompoundRep",
                  [&compounds](const pugi::xml_node& piece) { compounds.push_back(piece); });
        for (const Nodes& ring : depth < MaxDepth ? ringsOf(compounds) : std::vector<Nodes>())
            addBestOf(ring, placed, isMoved || own, depth + 1, pieces);
        if (!compounds.empty())
            return;
        const std::uint32_t file =
            m_reading.files.add(shape, shape.attribute("location").value(), shape.attribute("format").value());
        if (file == FileTable::None)
            return;
        const std::string name = nameOf(m_reading, shape);
        pieces.push_back({name.empty() ? m_source.name : name, placed, isMoved || own, file, shape.hash_value()});
    }

    void addBestOf(const Nodes& ring, const Matrix4& outer, bool isMoved, int depth, Pieces& pieces)
    {
        std::vector<Alternative> same;
        for (const pugi::xml_node& shape : ring) {
            Alternative& one = same.emplace_back();
            addPieces(shape, outer, isMoved, depth, one.pieces);
            if (one.pieces.empty())
                same.pop_back();
        }
        const Pieces best = bestOf(same);
        pieces.insert(pieces.end(), best.begin(), best.end());
    }

    void addDataSet(const pugi::xml_node& dataSet)
    {
        if (m_reading.document.nameOf(dataSet) != "DataSet")
            return;
        for (const pugi::xml_node& member :
             m_reading.references.followList(dataSet, "memberRefs", ElementKind::Other)) {
            const std::uint32_t file = m_reading.files.add(member, member.attribute("locationRef").value(),
                                                           member.attribute("format").value());
            if (file != FileTable::None)
                m_alternatives.push_back({{{m_source.name, Identity4, false, file, member.hash_value()}}});
        }
    }

    /// Attachments may have attachments.
    void addAttachments()
    {
        std::vector<pugi::xml_node> todo =
            m_reading.references.followList(m_source.attachedTo, "associatedAttachmentRefs", ElementKind::Other);
        std::unordered_set<std::size_t> seen;
        for (std::size_t i = 0; i < todo.size(); ++i) {
            if (!seen.insert(todo[i].hash_value()).second)
                continue;
            addDataSet(otherOf(m_reading, todo[i], "attachmentRef"));
            for (const pugi::xml_node& child :
                 m_reading.references.followList(todo[i], "childRefs", ElementKind::Other))
                todo.push_back(child);
        }
    }

    /// "SOLID$_XML2.jt" and "SOLID.jt" are the files of the set "SOLID".
    bool isOfReferenceSet(const Pieces& pieces) const
    {
        if (m_source.referenceSet.empty() || pieces.size() != 1)
            return false;
        const QString name = QFileInfo(m_reading.files[pieces.front().file].path).completeBaseName();
        const QString set = QString::fromStdString(m_source.referenceSet);
        const QString rest = name.mid(set.size());
        return name.startsWith(set, Qt::CaseInsensitive) &&
               (rest.isEmpty() || rest.startsWith(QLatin1Char('$')) || rest.startsWith(QLatin1String("_XML")));
    }

    /// Smaller is better; equal ones keep the order of the document.
    std::array<int, 4> worthOf(const Alternative& one) const
    {
        const bool isOfSet = one.isOfReferenceSet || isOfReferenceSet(one.pieces);
        return {isReadable(m_reading, one.pieces) ? 0 : 1, one.isDesign ? 0 : 1, rankOf(m_reading, one.pieces),
                isOfSet ? 0 : 1};
    }

    Pieces bestOf(const std::vector<Alternative>& same) const
    {
        const auto found =
            std::min_element(same.begin(), same.end(),
                             [this](const Alternative& a, const Alternative& b) { return worthOf(a) < worthOf(b); });
        return found == same.end() ? Pieces() : found->pieces;
    }

    const Reading& m_reading;
    const ShapeSource& m_source;
    std::vector<Alternative> m_alternatives;
};

} // namespace

std::vector<pugi::xml_node> representationsOf(const Reading& reading, const pugi::xml_node& view)
{
    std::vector<pugi::xml_node> found;
    std::unordered_set<std::size_t> seen;
    const auto add = [&](const pugi::xml_node& representation) {
        if (seen.insert(representation.hash_value()).second)
            found.push_back(representation);
    };
    for (const pugi::xml_node& target :
         reading.references.followList(view, "representationRefs", ElementKind::Representation))
        add(target);
    eachChild(reading.document, view, "Representation", add);
    return found;
}

bool isReadable(const Reading& reading, const std::vector<ShapePiece>& pieces)
{
    return rankOf(reading, pieces) < FileFormats::OtherConverter &&
           std::any_of(pieces.begin(), pieces.end(),
                       [&reading](const ShapePiece& piece) { return reading.files[piece.file].isThere(); });
}

std::vector<ShapePiece> chooseShape(const Reading& reading, const ShapeSource& source)
{
    return Chooser(reading, source).choose();
}

} // namespace importer::plmxml
