#pragma once

#include "files/OutputFile.h"
#include "files/glb/GlbJson.h"
#include "files/glb/GlbNames.h"
#include "files/glb/GlbWriter.h"
#include "files/glb/images/FittedImage.h"
#include "host/OSGSystem/PhysicalSurface.h"

#include <QStringList>

#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <vector>

namespace files::glb
{

/// The textures of a file: each image once, in the bytes behind the arrays or in a file beside it, each sampler once.
class GlbTextures
{
public:
    GlbTextures(const WriteOptions& options, const QString& path);

    /// What a material says of `texture`; nothing where textures are not written, or where its image cannot be, which a
    /// warning tells. `strength` is that of the slots that have one.
    std::optional<Json> info(const osg::Texture& texture);

    bool areWritten() const { return m_options.textures != Textures::None; }
    const JsonList& textures() const { return m_textures; }
    const JsonList& samplers() const { return m_samplers; }
    /// The extensions without which nobody can show the images.
    const std::set<std::string>& required() const { return m_required; }
    bool hasTransforms() const { return m_hasTransforms; }
    const QStringList& warnings() const { return m_warnings; }

    /// The list of images, whose views in the file begin with the view `firstView`.
    JsonList images(std::size_t firstView) const;
    /// The views of embedded images, whose bytes begin at the byte `firstByte` of the first buffer, a multiple of four.
    JsonList views(std::uint64_t firstByte) const;
    /// The bytes of the embedded images, each filled up to a multiple of four.
    std::uint64_t size() const { return m_size; }
    void write(files::OutputFile& output) const;
    /// Writes the images that stand beside the file. On failure those that are new are taken away again.
    files::Expected<void> writeFiles() const;

private:
    struct Image {
        osg::EncodedImagePtr from;
        images::FittedImage fitted;
        std::string fileName; ///< empty when it is embedded
    };
    using TextureKey = std::tuple<std::size_t, int>; ///< image and sampler, -1 for none

    std::optional<std::size_t> image(const osg::EncodedImagePtr& image);
    int sampler(const osg::TextureSampler& sampler);
    std::string fileNameFor(const Image& image);

    WriteOptions m_options;
    QString m_path;
    std::vector<Image> m_images;
    std::map<osg::EncodedImagePtr, std::optional<std::size_t>> m_imageNumbers;
    std::map<TextureKey, std::size_t> m_textureNumbers;
    std::map<std::string, int> m_samplerNumbers; ///< by their text
    UniqueNames m_fileNames;
    JsonList m_textures;
    JsonList m_samplers;
    std::set<std::string> m_required;
    QStringList m_warnings;
    std::uint64_t m_size = 0;
    bool m_hasTransforms = false;
};

} // namespace files::glb
