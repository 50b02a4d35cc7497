#pragma once

#include <boost/any.hpp>

/// A value of a type that has the name of the `Twin` in the test, but a record of its own, as a type has it in another
/// module.
boost::any foreignTwin(int number);
