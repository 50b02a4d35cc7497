#include "tests/import/ForeignValue.h"

namespace
{

struct Twin {
    int number;
};

} // namespace

boost::any foreignTwin(int number)
{
    return Twin{number};
}
