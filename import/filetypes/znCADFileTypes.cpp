#include "import/filetypes/znCADFileTypes.h"

#include <array>

namespace znCADFileTypes
{

namespace
{

constexpr std::array<const char*, 33> nameTexts = {
    "Cinema4D",   "Cosmo",   "WebDraft", "XFB",  "Animara",   "Obj",         "OpenSG",   "PLMXML",   "Python",
    "3DStage",    "Quillon", "VRML",     "ACIS", "Stylar",    "DraftKit",    "Catia V4", "Catia V5", "DGN",
    "Mechanor",   "JT",      "NX",       "Iges", "Parasolid", "ProEngineer", "Rhino",    "SketchUp", "SolidEdge",
    "SolidWorks", "Step",    "STL",      "BCAD", "Undefined", "Unsupported"};

const ExtensionTable rows = {
    {Cinema4D, {{"c4d"}, false}},
    {Cosmo, {{"csb"}, false}},
    {WebDraft, {{"wdf"}, false}},
    {XFB, {{"xfb", "abc"}, false}},
    {Animara, {{"nm", "nb"}, false}},
    {Obj, {{"obj"}, false}},
    {OpenSG, {{"osb"}, false}},
    {PLMXML, {{"plmxml"}, false}},
    {ThreeDStage, {{"3dg"}, false}},
    {Python, {{"py"}, false}},
    {Quillon, {{"qlb", "qle"}, false}},
    {VRML, {{"vrml", "wrl"}, false}},
    {DraftKit, {{"dkd", "dkx"}, true}},
    {CatiaV4, {{"model", "mdl", "session", "exp", "dlv", "dlv3", "dlv4"}, true}},
    {CatiaV5, {{"catpart", "catproduct", "cgr"}, true}},
    {DGN, {{"dgn"}, true}},
    {Mechanor, {{"mca", "mcp"}, true}},
    {NX, {{"prt"}, true}},
    {ProEngineer, {{"g", "prt", "asm", "neu"}, true}},
    {Rhino, {{"3dm"}, true}},
    {SketchUp, {{"skp", "skb", "style"}, true}},
    {SolidWorks, {{"sldprt", "sldasm"}, true}},
    {SolidEdge, {{"asm", "par", "pwd", "psm"}, true}},
    {ACIS, {{"sat", "smt"}, true}},
    {Stylar, {{"styl"}, true}},
    {Iges, {{"iges", "igs"}, true}},
    {JT, {{"jt"}, true}},
    {Parasolid, {{"x_t", "x_b"}, true}},
    {Step, {{"stp", "step"}, true}},
    {STL, {{"stl", "stla", "stlb"}, true}},
};

const std::unordered_set<std::string> assemblies = {"catproduct", "model", "mdl", "session", "asm", "sldasm",
                                                    "dgn",        "jt",    "stp", "step",    "g"};

const std::unordered_set<FileType> mixedAssemblies = {SketchUp, Parasolid};

} // namespace

const char* fileTypeName(FileType type)
{
    const auto index = static_cast<std::uint32_t>(type);
    return index < nameTexts.size() ? nameTexts[index] : "undefined";
}

const ExtensionTable& extensionTable()
{
    return rows;
}

const FileTypeRow* findRow(FileType type)
{
    const auto row = rows.find(type);
    return row == rows.end() ? nullptr : &row->second;
}

const std::unordered_set<std::string>& assemblyExtensions()
{
    return assemblies;
}

const std::unordered_set<FileType>& mixedAssemblyTypes()
{
    return mixedAssemblies;
}

} // namespace znCADFileTypes
