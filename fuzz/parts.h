// One input of several texts: a fuzzer that changes one of them leaves the others whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

/// What stands between two texts of an input.
inline constexpr char separator[] = "\n%%\n";

/// The first `number` texts of an input; those that it lacks are empty.
std::vector<std::string> partsOf(std::uint8_t const* data, std::size_t size, std::size_t number);

}  // namespace fuzz
