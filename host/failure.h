// Failure: the reason why something could not be checked at all. It ends in exit code 2, with its text on standard
// error.
#pragma once

#include <stdexcept>

namespace edicheck {

class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace edicheck
