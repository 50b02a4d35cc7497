#pragma once

#include "files/ImageFiles.h"
#include "files/obj/MtlReader.h"

#include <set>

namespace files::obj
{

/// Makes looks of the materials that an OBJ file uses: only their pictures are taken.
class MtlSurfaces
{
public:
    explicit MtlSurfaces(ReadTask& task) : m_task(task) {}

    MaterialLook lookOf(const MtlMaterial& material);
    /// Warns, for each library, of what the looks so far have not taken in.
    void tellWhatIsMissing();

private:
    /// Of one library.
    struct LeftOut {
        std::uint64_t textures = 0;
        std::set<QString> statements; ///< of the textures
        std::uint64_t changed = 0;    ///< textures with options that have no counterpart
        std::set<QString> options;
    };

    osg::EncodedImagePtr imageOf(const MtlMaterial& material, const MtlMap& map);
    bool take(const MtlMaterial& material, const char* statement, osg::TextureSlot slot, osg::PhysicalSurface& surface);
    void leaveOut(const MtlMaterial& material, const char* statement);
    void takeColors(const MtlMaterial& material, MaterialLook& look, osg::PhysicalSurface& surface);
    void takeOpacity(const MtlMaterial& material, osg::PhysicalSurface& surface);
    void takeNormals(const MtlMaterial& material, osg::PhysicalSurface& surface);
    void takeMetal(const MtlMaterial& material, MaterialLook& look, osg::PhysicalSurface& surface);
    void takeCoats(const MtlMaterial& material, osg::PhysicalSurface& surface);
    void leaveOthersOut(const MtlMaterial& material);

    ReadTask& m_task;
    std::map<QString, ImageFiles> m_images; ///< by library
    std::map<QString, LeftOut> m_leftOut;   ///< by library
};

} // namespace files::obj
