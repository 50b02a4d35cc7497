#include "files/vrml/VrmlReader.h"

#include "files/vrml/VrmlTree.h"

namespace files::vrml
{

namespace
{

/// VRML's own unit and axis, where the options ask for them.
ReadOptions placeOptions(ReadOptions options)
{
    if (options.vrmlInMetres) {
        options.millimetresPerUnit = 1000;
        options.upAxis = UpAxis::Y;
    }
    return options;
}

} // namespace

osg::NodePtr readVrml(ReadTask& task)
{
    vrml::Files files(task);
    const vrml::File& file = files.open(task.path());
    FreshTree tree(makeGroup({}));
    vrml::Tree content(files, task);
    content.build(file, placeForContent(tree.root(), placeOptions(task.options())));
    if (!content.hasGeometry())
        task.fail(ErrorCode::Empty, tr("there is nothing to draw in it"));
    return tree.take();
}

} // namespace files::vrml
