#pragma once

#include "host/OSGSystem/Node.h"
#include "tools/znimport/CommandLine.h"

#include <QStringList>

#include <atomic>
#include <functional>
#include <optional>

namespace zn
{
class StandaloneSession;
} // namespace zn

namespace znimport
{

/// The sentence that says what is wrong with the wishes of the command line for pictures; nothing when they can be
/// tried.
std::optional<QString> pictureComplaint(const CommandLine& line);

/// The pictures of a run, and how that went.
struct DrawnPictures {
    std::optional<QString> error; ///< names the file, or the view that is not there
    QStringList warnings;
    QStringList files; ///< that were written
};

/// Draws what the command line asks for: a picture of `scene`, and one of each variant set of `session`, from where the
/// session looks unless the command line names a view. "saved:NAME" is the view of the variant set of that name, and
/// the picture of the scene shows what that set shows. Sets are taken back once they are drawn. `progress` is told the
/// percent of a picture; `cancel` ends it.
DrawnPictures drawPictures(const CommandLine& line, zn::StandaloneSession& session, const osg::NodePtr& scene,
                           const std::function<void(unsigned)>& progress, const std::atomic<bool>& cancel);

} // namespace znimport
