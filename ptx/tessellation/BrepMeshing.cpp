#include "ptx/tessellation/BrepMeshing.h"

#include "ptx/model/EdgeSplitter.h"
#include "ptx/model/MeshBuilder.h"
#include "ptx/occt/OcctGuard.h"
#include "ptx/occt/meshing/FaceMesh.h"
#include "ptx/occt/meshing/Meshing.h"
#include "ptx/occt/meshing/Sewing.h"
#include "ptx/occt/meshing/ShapeQueries.h"
#include "scene/BrepPack.h"

#include <BRep_Builder.hxx>
#include <BinTools.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <Precision.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Face.hxx>

#include <algorithm>
#include <istream>
#include <numbers>
#include <streambuf>

namespace ptx::tessellation
{

namespace
{

/// Reads from memory, with the positions that OCCT asks for.
class MemoryInput : public std::streambuf
{
public:
    explicit MemoryInput(const osg::Buffer<std::byte>& bytes)
    {
        char* first = const_cast<char*>(reinterpret_cast<const char*>(bytes.data()));
        setg(first, first, first + bytes.size());
    }

private:
    pos_type seekoff(off_type offset, std::ios::seekdir from, std::ios::openmode) override
    {
        const off_type start = from == std::ios::beg ? 0 : from == std::ios::cur ? gptr() - eback() : egptr() - eback();
        return seekpos(start + offset, std::ios::in);
    }
    pos_type seekpos(pos_type position, std::ios::openmode) override
    {
        if (position < 0 || off_type(position) > egptr() - eback())
            return pos_type(off_type(-1));
        setg(eback(), eback() + off_type(position), egptr());
        return position;
    }
};

class BrepMesher
{
public:
    BrepMesher(const TessellationOptions& options, bool inParallel) : m_options(options), m_inParallel(inParallel) {}

    core::Trouble read(const osg::Buffer<std::byte>& brep)
    {
        const auto members = osg::unpackBreps(brep);
        if (!members)
            return core::Failure{core::ExitCode::Damaged, "the exact surface is damaged"};
        TopoDS_Compound all;
        BRep_Builder builder;
        builder.MakeCompound(all);
        for (const osg::Buffer<std::byte>& member : *members) {
            MemoryInput bytes(member);
            std::istream stream(&bytes);
            TopoDS_Shape shape;
            BinTools::Read(shape, stream);
            if (shape.IsNull() || stream.bad())
                return core::Failure{core::ExitCode::Damaged, "the exact surface is damaged"};
            builder.Add(all, shape);
        }
        m_body.shape = all;
        numberFaces();
        return std::nullopt;
    }

    void stitch()
    {
        if (m_options.stitchTolerance > 0 && occt::meshing::freeEdgeCount(m_body.shape) > 0)
            occt::meshing::sew(m_body, std::max(m_options.stitchTolerance, Precision::Confusion()), 0);
    }

    core::Outcome<std::shared_ptr<const osg::Mesh>> mesh()
    {
        occt::meshing::tessellate(m_body.shape, {m_options.deviation, m_options.angle * std::numbers::pi / 180},
                                  m_inParallel);
        model::MeshBuilder builder;
        std::size_t empty = 0;
        for (const TopoDS_Face& face : facesInOrder())
            empty += !occt::meshing::appendFaceMesh(face, builder);
        if (empty > 0 || builder.isEmpty())
            return core::Failure{core::ExitCode::Damaged, std::to_string(empty) + " of " + std::to_string(m_faces) +
                                                              " faces of the exact surface got no mesh"};
        return split(builder.take());
    }

private:
    /// Numbers in place of appearances: sewing takes marks along.
    void numberFaces()
    {
        for (TopExp_Explorer face(m_body.shape, TopAbs_FACE); face.More(); face.Next())
            m_body.marks.Bind(face.Current(), {m_faces++});
    }

    std::vector<TopoDS_Face> facesInOrder() const
    {
        std::vector<std::pair<int, TopoDS_Face>> faces;
        for (TopExp_Explorer face(m_body.shape, TopAbs_FACE); face.More(); face.Next()) {
            const occt::meshing::Mark* mark = m_body.marks.Seek(face.Current());
            faces.emplace_back(mark ? mark->appearance : m_faces, TopoDS::Face(face.Current()));
        }
        std::stable_sort(faces.begin(), faces.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        std::vector<TopoDS_Face> result;
        result.reserve(faces.size());
        for (const auto& [number, face] : faces)
            result.push_back(face);
        return result;
    }

    core::Outcome<std::shared_ptr<const osg::Mesh>> split(std::shared_ptr<const osg::Mesh> mesh) const
    {
        const auto longest = static_cast<float>(m_options.longestEdge);
        if (longest <= 0)
            return mesh;
        const double most = m_options.settings.number(core::Setting::MostTriangles);
        if (most > 0 && model::splitEstimate(*mesh, longest) > most)
            return core::Failure{core::ExitCode::MemoryLimit, "edges this short need too many triangles"};
        return model::splitEdges(*mesh, longest);
    }

    const TessellationOptions& m_options;
    bool m_inParallel;
    occt::meshing::ShapeBody m_body;
    int m_faces = 0;
};

} // namespace

void silenceOcct()
{
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
}

core::Outcome<std::shared_ptr<const osg::Mesh>> meshBrep(const osg::Buffer<std::byte>& brep,
                                                         const TessellationOptions& options, bool inParallel)
{
    core::Outcome<std::shared_ptr<const osg::Mesh>> result = core::Failure{};
    BrepMesher mesher(options, inParallel);
    core::Trouble trouble = occt::guarded("reading the exact surface", [&] { return mesher.read(brep); });
    if (!trouble)
        trouble = occt::guarded("meshing the exact surface", [&]() -> core::Trouble {
            mesher.stitch();
            result = mesher.mesh();
            return std::nullopt;
        });
    return trouble ? *trouble : result;
}

} // namespace ptx::tessellation
