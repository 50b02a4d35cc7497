#pragma once

#include "host/OSGSystem/AttachmentContainer.h"

#include <set>
#include <string>

namespace external
{

/// All that this host notes about a container beside its fields.
class Notes : public osg::Attachment
{
public:
    static osg::FieldContainerType _type;

    const osg::FieldContainerType& getType() const override { return _type; }

    std::string name;
    std::set<std::string> tags;
    std::string file;

protected:
    bool equalFields(const osg::FieldContainer& other) const override;
    osg::FieldContainerPtr copy() const override;
};

/// Null when nothing was noted.
Notes* findNotes(const osg::AttachmentContainerPtr& container);

/// Made at the first call.
Notes& notesOf(const osg::AttachmentContainerPtr& container);

} // namespace external
