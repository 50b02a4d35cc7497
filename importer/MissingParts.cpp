#include "importer/MissingParts.h"

#include "host/OSGSystem/TreeFunctions.h"
#include "standalone/scenefile/ConvertedTree.h"

#include <set>

std::vector<znMissingPart> partsLeftOut(const osg::NodePtr& root)
{
    std::vector<znMissingPart> parts;
    std::set<std::string> seen;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        for (const std::string& tag : osg::tagsOf(node)) {
            const auto part = osg::converted::missingPart(tag);
            if (part && seen.insert(tag).second)
                parts.push_back({QString::fromStdString(part->file), QString::fromStdString(part->reason)});
        }
        return osg::Action::Continue;
    });
    return parts;
}
