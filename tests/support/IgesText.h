#pragma once

#include "tests/support/StepText.h"

#include <string>
#include <vector>

namespace ptxtest
{

/// Writes IGES text by hand: flat patches, each a surface of its own as many systems write them.
class IgesText
{
public:
    /// The four-cornered patch whose corners are a, b (along u), c (along v) and d (opposite to a). The colour numbers
    /// are those of the format: 2 red, 3 green, 4 blue; 0 none. A label has eight bytes at most.
    void patch(Triple a, Triple b, Triple c, Triple d, int color = 0, const std::string& label = {});

    /// A reference to a whole other file (type 416, form 1), to which nothing refers.
    void externalFile(const std::string& name);

    /// The whole file; the unit is millimetre, or inch.
    std::string text(bool inInches = false) const;

private:
    struct Entity {
        int type;
        int form;
        std::string parameters;
        int color;
        std::string label;
    };

    std::vector<Entity> m_entities;
};

} // namespace ptxtest
