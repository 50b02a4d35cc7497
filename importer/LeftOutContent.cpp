#include "importer/LeftOutContent.h"

#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/TreeFunctions.h"

#include <QCoreApplication>

#include <algorithm>
#include <set>
#include <string>

namespace zn
{

namespace
{

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(zn::LeftOutContent)
};

void add(const osg::scenefile::converted::LeftOut& content, std::vector<LeftOutContent>& sums)
{
    const QString what = QString::fromStdString(content.what);
    auto sum = std::find_if(sums.begin(), sums.end(), [&](const LeftOutContent& known) { return known.what == what; });
    if (sum == sums.end())
        sum = sums.insert(sums.end(), {what, 0, 0});
    sum->count += content.count;
    ++sum->files;
}

} // namespace

std::vector<LeftOutContent> leftOutContent(const osg::NodePtr& root)
{
    std::vector<LeftOutContent> sums;
    std::set<std::string> known;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        for (const std::string& tag : osg::tagsOf(node))
            if (const auto content = osg::scenefile::converted::leftOut(tag); content && known.insert(tag).second)
                add(*content, sums);
        return osg::Action::Continue;
    });
    return sums;
}

QString describe(const QString& file, const LeftOutContent& content)
{
    const QString count = QString::number(content.count);
    const QString text =
        content.files < 2
            ? Texts::tr("%1 are left out: %2").arg(content.what, count)
            : Texts::tr("%1 are left out: %2, in %3 files").arg(content.what, count, QString::number(content.files));
    return file + QStringLiteral(": ") + text;
}

} // namespace zn
