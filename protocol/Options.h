#pragma once

namespace protocol
{

/// Names of the converter's options, with their dashes.
namespace option
{

inline constexpr char ExternalParts[] = "--external-parts";     ///< keep references to part files
inline constexpr char Set[] = "--set";                          ///< takes name=value; `ptxtessellate` has it as well
inline constexpr char Folder[] = "-o";                          ///< takes the folder for the outputs of several inputs
inline constexpr char Jobs[] = "-j";                            ///< takes how many of these are converted at a time
inline constexpr char References[] = "--references";            ///< takes parts, below or none
inline constexpr char ReferencesBelow[] = "--references-below"; ///< takes the folder that is meant by below
inline constexpr char AllowReferences[] = "--allow-references"; ///< takes a folder; may be given several times
inline constexpr char Sandbox[] = "--sandbox"; ///< takes on, off or require; `ptxtessellate` has it as well
inline constexpr char Uv[] = "--uv";           ///< takes surface or none
inline constexpr char HelpSettings[] = "--help-settings";
inline constexpr char Version[] = "--version";
inline constexpr char Help[] = "--help";
/// Takes a path; alone on the command line. The program becomes the server of `ptxlaunch` there.
inline constexpr char Serve[] = "--serve";
/// The same, for reads on behalf of a host in place of conversions.
inline constexpr char ServeReads[] = "--serve-reads";
/// Alone in front of a mesh file, the scene file to make, and words of options: reads on behalf of a host.
inline constexpr char ReadMesh[] = "--read-mesh";
/// The same in front of a product structure, the text to make in the form of its loader, and words of options.
inline constexpr char ReadDocument[] = "--read-document";

} // namespace option

/// Names of the options of `ptxtessellate`, with their dashes. Each takes a number.
namespace tessellationoption
{

inline constexpr char Deviation[] = "--deviation";           ///< mm
inline constexpr char Angle[] = "--angle";                   ///< degrees
inline constexpr char MaxEdgeLength[] = "--max-edge-length"; ///< mm; 0 for any length
inline constexpr char Stitch[] = "--stitch";                 ///< mm; 0 stitches nothing

} // namespace tessellationoption

/// Names of the settings that `--set` takes. The converter's own table tells units, ranges and defaults.
namespace setting
{

inline constexpr char Threads[] = "threads";
inline constexpr char TimeLimit[] = "limit.time";
inline constexpr char TimeLimitPerMegabyte[] = "limit.time-per-mb";
inline constexpr char StallLimit[] = "limit.stall";
inline constexpr char WorkLimit[] = "limit.work";
inline constexpr char WorkLimitPerMegabyte[] = "limit.work-per-mb";
inline constexpr char MemoryLimit[] = "limit.memory";
inline constexpr char MemoryLimitPerMegabyte[] = "limit.memory-per-mb";
inline constexpr char NodeLimit[] = "limit.nodes";
inline constexpr char Deviation[] = "tessellation.deviation";
inline constexpr char RelativeDeviation[] = "tessellation.relative-deviation";
inline constexpr char Angle[] = "tessellation.angle";
inline constexpr char MaxEdgeLength[] = "tessellation.max-edge-length";
inline constexpr char MostTriangles[] = "tessellation.max-triangles";
inline constexpr char Heal[] = "heal";
inline constexpr char Stitch[] = "stitch";
inline constexpr char StitchTolerance[] = "stitch.tolerance";
inline constexpr char StitchRelativeTolerance[] = "stitch.relative-tolerance";
inline constexpr char StitchTime[] = "stitch.time";
inline constexpr char MeshUnit[] = "mesh.unit";
inline constexpr char MeshLevel[] = "mesh.level";
inline constexpr char Pmi[] = "convert.pmi";
inline constexpr char AutomaticViews[] = "convert.automatic-views";
inline constexpr char SurfaceUv[] = "convert.uv";
inline constexpr char KeepBrep[] = "keep-brep";
inline constexpr char ExactMeasures[] = "exact-measures";

} // namespace setting

} // namespace protocol
