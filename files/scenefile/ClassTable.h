#pragma once

#include "files/scenefile/ClassWarnings.h"
#include "files/scenefile/SceneCodecs.h"

#include <algorithm>

namespace osg::scenefile
{

/// The codecs for the classes that a file names, each the one of the class itself or of its nearest known base.
template <class Codec>
class ClassTable
{
public:
    ClassTable(const fb::Scene& scene, std::span<const Codec> codecs)
    {
        if (!scene.classes())
            return;
        for (const fb::ClassName* record : *scene.classes())
            m_rows.push_back({record->names()->Get(0)->str(), firstKnown(*record, codecs)});
    }

    /// Null when nothing can be made of the class; warns unless the class itself is known.
    const Codec* codec(std::uint16_t classIndex, ClassWarnings& warnings) const
    {
        const Row& row = m_rows[classIndex];
        const char* used = row.codec ? row.codec->type.getName() : "";
        if (!row.codec || row.name != used)
            warnings.add(row.name, used);
        return row.codec;
    }

private:
    struct Row {
        std::string name;
        const Codec* codec;
    };

    static const Codec* firstKnown(const fb::ClassName& record, std::span<const Codec> codecs)
    {
        for (const flatbuffers::String* name : *record.names())
            for (const Codec& codec : codecs)
                if (codec.type.getName() == name->string_view())
                    return &codec;
        return nullptr;
    }

    std::vector<Row> m_rows;
};

} // namespace osg::scenefile
