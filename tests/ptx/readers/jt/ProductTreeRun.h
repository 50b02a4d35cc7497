#pragma once

#include "tests/ptx/readers/jt/ReadRun.h"

namespace jttest
{

/// A file in millimetres whose root, the partition 0, leads to the metadata node 1.
inline FileWriter assembly(const Ids& children)
{
    FileWriter writer;
    writer.partition(0, {1});
    writer.metadata(1, children);
    writer.property(1, "JT_PROP_MEASUREMENT_UNITS", "Millimeters");
    writer.property(1, "JT_PROP_NAME", "top.asm;3;0:");
    return writer;
}

/// The product of that node.
inline const ptx::model::Product& top(const ptx::model::Model& model)
{
    return model.products.at(model.roots.at(0).product);
}

class JtStructure : public testing::Test, protected ReadRun
{
};

} // namespace jttest
